// Reads arbitrary bytes as an animation file and describes what was read. A file that reads
// must hold whole key lists: as many values as its keys and widths say.

#include "formats/AnimationChunks.h"
#include "formats/AnimationFileReader.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void CheckWhole(const VAnimKeyList& keys)
{
    if (keys.Values.size() != keys.Times.size() * static_cast<size_t>(keys.Width))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    VMemoryStreamProvider files;
    files.SetFile("in.anim", std::string(reinterpret_cast<const char*>(data), size));
    VAnimationFile animations;
    if (!ReadAnimationFile("in.anim", animations, &files))
        return 0;
    for (const VAnimFileAnimation& animation : animations.Animations) {
        for (const VAnimKeyList* keys : {&animation.Boxes, &animation.Offsets, &animation.RotationDeltas,
                                         &animation.Positions, &animation.Rotations, &animation.Scales})
            CheckWhole(*keys);
        if (animation.Deltas.size() != animation.DeltaTimes.size())
            std::abort();
        if (animation.Has(ChunkVMSK) && animation.MaskWords.size() != (static_cast<size_t>(animation.MaskBits) + 31) / 32)
            std::abort();
    }
    if (DescribeAnimationFile(animations).empty())
        std::abort();
    return 0;
}
