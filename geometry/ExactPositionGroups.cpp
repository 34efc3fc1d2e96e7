#include "geometry/ExactPositionGroups.h"

#include "model/VMVertex.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

struct Key {
    uint32_t Bits[3];
    bool operator==(const Key&) const = default;
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

// One slot per group, keyed by position, holding the group's highest member so far. Sized for a
// group per three vertices and grown when that was too few: harvested meshes share each position
// between several corners, and fresh memory is most of what grouping a million vertices costs.
class GroupTable {
public:
    explicit GroupTable(size_t vertexCount)
    {
        size_t size = 16;
        while (size < vertexCount / 3)
            size *= 2;
        m_slots.assign(size, Slot{{}, -1});
    }

    // Asks the memory for the key's slot ahead of its use: the slots are met in random order.
    void Prefetch(const Key& key) const { __builtin_prefetch(&m_slots[Hash(key) & (m_slots.size() - 1)]); }

    // The slot of the key's group; a fresh one has Highest -1.
    int& HighestOf(const Key& key)
    {
        Slot& slot = m_slots[Find(key)];
        if (slot.Highest < 0) {
            if (4 * (m_used + 1) > 3 * m_slots.size()) {
                Grow();
                return HighestOf(key);
            }
            slot.Position = key;
            ++m_used;
        }
        return slot.Highest;
    }

private:
    struct Slot {
        Key Position;
        int Highest;
    };

    size_t Find(const Key& key) const
    {
        const size_t mask = m_slots.size() - 1;
        size_t index = Hash(key) & mask;
        while (m_slots[index].Highest >= 0 && !(m_slots[index].Position == key))
            index = (index + 1) & mask;
        return index;
    }

    void Grow()
    {
        std::vector<Slot> old(m_slots.size() * 2, Slot{{}, -1});
        old.swap(m_slots);
        for (const Slot& slot : old) {
            if (slot.Highest >= 0)
                m_slots[Find(slot.Position)] = slot;
        }
    }

    std::vector<Slot> m_slots;
    size_t m_used = 0;
};

}

ExactPositionGroups::ExactPositionGroups(const VMOwnedList<VMVertex>& vertices)
{
    const size_t count = static_cast<size_t>(vertices.Count());
    m_next.assign(count, -1);
    GroupTable table(count);
    const auto groupable = [&](size_t i) -> const VMVertex* {
        const VMVertex* vertex = vertices.Get(static_cast<int>(i));
        return vertex != nullptr && IsFinite(vertex->Position) ? vertex : nullptr;
    };
    constexpr size_t PrefetchDistance = 16;
    for (size_t i = 0; i < count; ++i) {
        if (i + PrefetchDistance < count) {
            if (const VMVertex* ahead = groupable(i + PrefetchDistance))
                table.Prefetch(KeyOf(ahead->Position));
        }
        const VMVertex* vertex = groupable(i);
        if (vertex == nullptr)
            continue;
        int& highest = table.HighestOf(KeyOf(vertex->Position));
        const int index = static_cast<int>(i);
        if (highest < 0) {
            m_next[i] = index;
        } else {
            // The new highest member closes the ring back to the lowest.
            m_next[i] = m_next[static_cast<size_t>(highest)];
            m_next[static_cast<size_t>(highest)] = index;
        }
        highest = index;
    }
}
