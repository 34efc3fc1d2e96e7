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

// One slot per group: its highest member so far and a fingerprint of its position. A matching
// fingerprint is confirmed on that member's record, which the list met moments ago. Eight bytes a
// slot, because fresh memory is most of what grouping a million vertices costs.
class GroupTable {
public:
    GroupTable(const VMOwnedList<VMVertex>& vertices, size_t expectedGroups)
        : m_vertices(vertices)
    {
        size_t size = 16;
        while (3 * size < 4 * expectedGroups)
            size *= 2;
        m_slots.assign(size, Slot{0, -1});
    }

    // Asks the memory for the key's slot ahead of its use: the slots are met in random order.
    void Prefetch(const Key& key) const { __builtin_prefetch(&m_slots[SlotIndex(Hash(key))]); }

    // The highest member of the key's group; -1 for a group not met before.
    int& HighestOf(const Key& key)
    {
        if (4 * (m_used + 1) > 3 * m_slots.size())
            Grow();
        const uint64_t hash = Hash(key);
        Slot& slot = m_slots[Find(hash, key)];
        if (slot.Highest < 0) {
            slot.Fingerprint = static_cast<uint32_t>(hash);
            ++m_used;
        }
        return slot.Highest;
    }

private:
    struct Slot {
        uint32_t Fingerprint;
        int Highest;
    };

    size_t SlotIndex(uint64_t hash) const { return static_cast<size_t>(hash >> 32) & (m_slots.size() - 1); }

    Key KeyOfMember(int index) const { return KeyOf(m_vertices.Get(index)->Position); }

    size_t Find(uint64_t hash, const Key& key) const
    {
        const size_t mask = m_slots.size() - 1;
        size_t index = SlotIndex(hash);
        for (;; index = (index + 1) & mask) {
            const Slot& slot = m_slots[index];
            if (slot.Highest < 0 ||
                (slot.Fingerprint == static_cast<uint32_t>(hash) && KeyOfMember(slot.Highest) == key))
                return index;
        }
    }

    void Grow()
    {
        std::vector<Slot> old(m_slots.size() * 2, Slot{0, -1});
        old.swap(m_slots);
        const size_t mask = m_slots.size() - 1;
        for (const Slot& slot : old) {
            if (slot.Highest < 0)
                continue;
            size_t index = SlotIndex(Hash(KeyOfMember(slot.Highest)));
            while (m_slots[index].Highest >= 0)
                index = (index + 1) & mask;
            m_slots[index] = slot;
        }
    }

    const VMOwnedList<VMVertex>& m_vertices;
    std::vector<Slot> m_slots;
    size_t m_used = 0;
};

}

ExactPositionGroups::ExactPositionGroups(const VMOwnedList<VMVertex>& vertices, size_t expectedGroups)
{
    const size_t count = static_cast<size_t>(vertices.Count());
    m_next.assign(count, -1);
    GroupTable table(vertices, expectedGroups);
    const auto groupable = [&](size_t i) -> const VMVertex* {
        const VMVertex* vertex = vertices.Get(static_cast<int>(i));
        return vertex != nullptr && IsFinite(vertex->Position) ? vertex : nullptr;
    };
    constexpr size_t PrefetchDistance = 16;
    for (size_t i = 0; i < count; ++i) {
        // The records first, then the slots their positions lead to.
        if (i + 2 * PrefetchDistance < count)
            __builtin_prefetch(vertices.Get(static_cast<int>(i + 2 * PrefetchDistance)));
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
