// Feeds arbitrary meshes to the lightmap unwrapper: positions on a coarse lattice, so that shared
// positions, slivers, folds, non-manifold edges and degenerate triangles come up often, with now
// and then a coordinate that is not finite or very large, and indices that may point anywhere.
// The unwrapper must answer, without crashing or hanging, either a failure or an atlas that
// keeps every triangle on copies of its own vertices, within [0, 1].

#include "geometry/lightmap/CreateUVAtlas.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <vector>

namespace {

float Coordinate(uint8_t byte, uint8_t special)
{
    switch (special % 32) {
    case 0: return std::numeric_limits<float>::quiet_NaN();
    case 1: return std::numeric_limits<float>::infinity();
    case 2: return 1e30f * static_cast<int8_t>(byte);
    default: return static_cast<float>(static_cast<int8_t>(byte)) / 4.0f;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 4)
        return 0;
    UVAtlasParams params;
    params.Size = 16 << (data[0] % 5);
    params.MaxStretch = (data[1] % 11) / 10.0;
    const size_t vertexCount = 1 + data[2] % 64;
    size_t at = 3;
    std::vector<float> positions;
    for (size_t v = 0; v < vertexCount && at + 3 < size; ++v, at += 4) {
        for (size_t k = 0; k < 3; ++k)
            positions.push_back(Coordinate(data[at + k], k == 0 ? data[at + 3] : 255));
    }
    const size_t present = positions.size() / 3;
    if (present == 0)
        return 0;
    std::vector<uint32_t> indices;
    for (; at + 2 < size && indices.size() < 3000; at += 3) {
        for (size_t k = 0; k < 3; ++k)
            // Now and then an index past the vertices.
            indices.push_back(data[at + k] == 255 ? static_cast<uint32_t>(present) : data[at + k] % present);
    }

    UVAtlas atlas;
    if (CreateUVAtlas(positions, indices, params, atlas) != 0)
        return 0;
    if (atlas.Indices.size() != indices.size() || atlas.UVs.size() != 2 * atlas.VertexRemap.size())
        std::abort();
    for (size_t c = 0; c < indices.size(); ++c) {
        if (atlas.Indices[c] >= atlas.VertexRemap.size() || atlas.VertexRemap[atlas.Indices[c]] != indices[c])
            std::abort();
    }
    for (float uv : atlas.UVs) {
        if (!(uv >= 0.0f && uv <= 1.0f))
            std::abort();
    }
    return 0;
}
