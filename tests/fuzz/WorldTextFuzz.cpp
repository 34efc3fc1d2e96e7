// Feeds arbitrary text to the older world text reader: it must answer success or one of its
// codes with a reason, and whatever it read must be a world whose polygons name its own vertices.

#include "formats/LoadV3DWorld.h"
#include "model/VMWorld.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    VMWorld world;
    std::string error;
    const int32_t code = ReadV3DWorld(text, world, error);
    if (code != 0 && code != V3DOldVersion && code != V3DBadRecord && code != V3DOutOfMemory)
        Fail("an answer that is neither success nor one of the reader's codes");
    if (code != 0 && error.empty())
        Fail("a failure without a reason");
    for (const VMPolygon* polygon : world.Polygons) {
        if (polygon->CornerCount() < 3)
            Fail("a polygon of fewer than three corners");
        for (const VMVertex* corner : polygon->Corners)
            if (std::find(world.Vertices.begin(), world.Vertices.end(), corner) == world.Vertices.end())
                Fail("a corner that is none of the world's vertices");
    }
    return 0;
}
