#include "geometry/lightmap/FaceAdjacency.h"

#include "geometry/MemberTable.h"

#include <bit>
#include <cmath>
#include <cstddef>

namespace {

struct PositionKey {
    uint32_t Bits[3];
    bool operator==(const PositionKey&) const = default;
};

struct PositionKeyOf {
    std::span<const float> Positions;
    PositionKey operator()(int vertex) const
    {
        PositionKey key{};
        for (size_t axis = 0; axis < 3; ++axis) {
            const float value = Positions[3 * static_cast<size_t>(vertex) + axis];
            // Equal floats must give equal bits: -0 is folded onto +0.
            key.Bits[axis] = std::bit_cast<uint32_t>(value == 0.0f ? 0.0f : value);
        }
        return key;
    }
};

struct PositionHash {
    uint64_t operator()(const PositionKey& key) const { return HashWords(key.Bits[0], key.Bits[1], key.Bits[2]); }
};

} // namespace

std::vector<uint32_t> SharedPositions(std::span<const float> positions)
{
    const size_t count = positions.size() / 3;
    std::vector<uint32_t> shared(count);
    const PositionKeyOf keyOf{positions};
    MemberTable<PositionKey, PositionKeyOf, PositionHash> table(count, keyOf, PositionHash{});
    for (size_t vertex = 0; vertex < count; ++vertex) {
        shared[vertex] = static_cast<uint32_t>(vertex);
        const float* p = &positions[3 * vertex];
        if (!std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2]))
            continue;
        int& first = table.Member(keyOf(static_cast<int>(vertex)));
        if (first < 0)
            first = static_cast<int>(vertex);
        shared[vertex] = static_cast<uint32_t>(first);
    }
    return shared;
}

std::vector<int> BuildFaceAdjacency(std::span<const uint32_t> sharedPositions, std::span<const uint32_t> indices)
{
    const size_t cornerCount = indices.size() / 3 * 3;
    const auto positionOf = [&](size_t corner) { return sharedPositions[indices[corner]]; };
    const auto nextCorner = [](size_t corner) { return corner % 3 == 2 ? corner - 2 : corner + 1; };

    // The corners at each shared position, in ascending order: the edges that start there. A
    // triangle's neighbours lie among the few corners at its own corners' positions, which keeps
    // the search local where a table of all edges would be touched at random.
    std::vector<uint32_t> first(sharedPositions.size() + 1, 0);
    for (size_t corner = 0; corner < cornerCount; ++corner)
        ++first[positionOf(corner) + 1];
    for (size_t position = 0; position + 1 < first.size(); ++position)
        first[position + 1] += first[position];
    std::vector<uint32_t> cornersAt(cornerCount);
    {
        std::vector<uint32_t> fill(first.begin(), first.end() - 1);
        for (size_t corner = 0; corner < cornerCount; ++corner)
            cornersAt[fill[positionOf(corner)]++] = static_cast<uint32_t>(corner);
    }

    std::vector<int> across(cornerCount, -1);
    std::vector<uint8_t> paired(cornerCount, 0);
    for (size_t edge = 0; edge < cornerCount; ++edge) {
        const uint32_t from = positionOf(edge);
        const uint32_t to = positionOf(nextCorner(edge));
        if (from == to || paired[edge])
            continue;
        // The lowest unpaired edge of another triangle that runs from `to` back to `from`.
        for (uint32_t k = first[to]; k < first[to + 1]; ++k) {
            const size_t twin = cornersAt[k];
            if (paired[twin] || twin / 3 == edge / 3 || positionOf(nextCorner(twin)) != from)
                continue;
            paired[edge] = paired[twin] = 1;
            across[edge] = static_cast<int>(twin / 3);
            across[twin] = static_cast<int>(edge / 3);
            break;
        }
    }
    return across;
}
