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

    std::vector<Key> keys(count);
    for (size_t i = 0; i < count; ++i) {
        if (const VMVertex* vertex = vertices.Get(static_cast<int>(i)); vertex && IsFinite(vertex->Position))
            keys[i] = KeyOf(vertex->Position);
        else
            m_first[i] = -2;
    }

    size_t tableSize = 16;
    while (tableSize < 2 * count)
        tableSize *= 2;
    const size_t mask = tableSize - 1;
    // Each slot holds the lowest position of its group seen so far; walking the list downwards
    // and prepending leaves every group linked in ascending order.
    std::vector<int> slots(tableSize, -1);
    for (size_t i = count; i-- > 0;) {
        if (m_first[i] == -2)
            continue;
        size_t slot = Hash(keys[i]) & mask;
        while (slots[slot] >= 0 && !SameKey(keys[static_cast<size_t>(slots[slot])], keys[i]))
            slot = (slot + 1) & mask;
        m_next[i] = slots[slot];
        slots[slot] = static_cast<int>(i);
    }
    for (int head : slots) {
        for (int member = head; member >= 0; member = m_next[static_cast<size_t>(member)])
            m_first[static_cast<size_t>(member)] = head;
    }
    for (int& first : m_first) {
        if (first == -2)
            first = -1;
    }
}
