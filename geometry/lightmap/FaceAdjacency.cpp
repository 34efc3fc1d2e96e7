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

// A directed edge between two shared positions.
struct EdgeKey {
    uint32_t From;
    uint32_t To;
    bool operator==(const EdgeKey&) const = default;
};

struct EdgeKeyOf {
    std::span<const uint32_t> Shared;
    std::span<const uint32_t> Indices;
    EdgeKey operator()(int edge) const
    {
        const size_t corner = static_cast<size_t>(edge);
        const size_t next = corner % 3 == 2 ? corner - 2 : corner + 1;
        return EdgeKey{Shared[Indices[corner]], Shared[Indices[next]]};
    }
};

struct EdgeHash {
    uint64_t operator()(const EdgeKey& key) const { return HashWords(key.From, key.To, 0x5bd1e995u); }
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
    const size_t edgeCount = indices.size() / 3 * 3;
    const EdgeKeyOf keyOf{sharedPositions, indices};
    // Each directed edge's slot holds the lowest edge running it; the others follow in ascending
    // order through sameWay, so that pairing goes in triangle order.
    MemberTable<EdgeKey, EdgeKeyOf, EdgeHash> table(edgeCount, keyOf, EdgeHash{});
    std::vector<int> sameWay(edgeCount, -1);
    for (size_t edge = edgeCount; edge-- > 0;) {
        const EdgeKey key = keyOf(static_cast<int>(edge));
        if (key.From == key.To)
            continue;
        int& lowest = table.Member(key);
        sameWay[edge] = lowest;
        lowest = static_cast<int>(edge);
    }

    std::vector<int> across(edgeCount, -1);
    std::vector<int> twinOf(edgeCount, -1);
    for (size_t edge = 0; edge < edgeCount; ++edge) {
        const EdgeKey key = keyOf(static_cast<int>(edge));
        if (key.From == key.To || twinOf[edge] >= 0)
            continue;
        for (int twin = table.Find(EdgeKey{key.To, key.From}); twin >= 0; twin = sameWay[static_cast<size_t>(twin)]) {
            const size_t other = static_cast<size_t>(twin);
            if (twinOf[other] >= 0 || other / 3 == edge / 3)
                continue;
            twinOf[edge] = twin;
            twinOf[other] = static_cast<int>(edge);
            across[edge] = static_cast<int>(other / 3);
            across[other] = static_cast<int>(edge / 3);
            break;
        }
    }
    return across;
}
