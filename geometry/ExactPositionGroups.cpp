#include "geometry/ExactPositionGroups.h"

#include "model/VMVertex.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

struct Key {
    uint32_t Bits[3];
};

bool IsFinite(const float position[3])
{
    return std::isfinite(position[0]) && std::isfinite(position[1]) && std::isfinite(position[2]);
}

// Equal floats must give equal bits: -0 is folded onto +0.
Key KeyOf(const float position[3])
{
    Key key{};
    for (int axis = 0; axis < 3; ++axis)
        key.Bits[axis] = std::bit_cast<uint32_t>(position[axis] == 0.0f ? 0.0f : position[axis]);
    return key;
}

uint64_t Hash(const Key& key)
{
    uint64_t h = (static_cast<uint64_t>(key.Bits[0]) << 32 | key.Bits[1]) * 0x9E3779B97F4A7C15ull;
    h ^= key.Bits[2] * 0xC2B2AE3D27D4EB4Full;
    h ^= h >> 29;
    h *= 0xBF58476D1CE4E5B9ull;
    h ^= h >> 32;
    return h;
}

bool SameKey(const Key& a, const Key& b)
{
    return a.Bits[0] == b.Bits[0] && a.Bits[1] == b.Bits[1] && a.Bits[2] == b.Bits[2];
}

}

ExactPositionGroups::ExactPositionGroups(const VMOwnedList<VMVertex>& vertices)
{
    const size_t count = static_cast<size_t>(vertices.Count());
    m_first.assign(count, -1);
    m_next.assign(count, -1);

    // Open addressing at a load of at most two thirds; each slot keeps its group's key, first
    // and last member, so that one pass in list order links every group in ascending order.
    struct Slot {
        Key Position;
        int First;
        int Last;
    };
    const uint64_t tableSize = count + count / 2 + 16;
    std::vector<Slot> slots(tableSize, Slot{{}, -1, -1});
    for (size_t i = 0; i < count; ++i) {
        const VMVertex* vertex = vertices.Get(static_cast<int>(i));
        if (vertex == nullptr || !IsFinite(vertex->Position))
            continue;
        const Key key = KeyOf(vertex->Position);
        uint64_t slot = ((Hash(key) >> 32) * tableSize) >> 32;
        while (slots[slot].First >= 0 && !SameKey(slots[slot].Position, key)) {
            if (++slot == tableSize)
                slot = 0;
        }
        Slot& group = slots[slot];
        const int index = static_cast<int>(i);
        if (group.First < 0) {
            group = {key, index, index};
        } else {
            m_next[static_cast<size_t>(group.Last)] = index;
            group.Last = index;
        }
        m_first[i] = group.First;
    }
}
