#pragma once
// An open-addressing hash table for grouping a list's items by a key that each item's own data
// names (an exact position, a grid cell). A slot holds one member of the key's group and a
// fingerprint of the key's hash; the member's data confirms a matching fingerprint, so no keys
// are stored. Eight bytes a slot, because fresh memory is most of what grouping millions of
// items costs. A key's home slot comes from the top bits of its hash, which the fingerprint keeps,
// so the table grows without looking at any member again.

#include <cstddef>
#include <cstdint>
#include <vector>

// A well-mixed hash of three words, for keys of three coordinates.
inline uint64_t HashWords(uint64_t x, uint64_t y, uint64_t z)
{
    uint64_t h = x * 0x9E3779B97F4A7C15ull;
    h ^= y * 0xC2B2AE3D27D4EB4Full;
    h ^= z * 0x165667B19E3779F9ull;
    h ^= h >> 29;
    h *= 0xBF58476D1CE4E5B9ull;
    h ^= h >> 32;
    return h;
}

// keyOf(member) gives the key a member's data names; hash(key) a 64-bit hash of it.
template <class Key, class KeyOf, class Hash>
class MemberTable {
public:
    // Sized for expectedKeys at three quarters full; it grows when the guess is short.
    MemberTable(size_t expectedKeys, KeyOf keyOf, Hash hash)
        : m_keyOf(keyOf)
        , m_hash(hash)
    {
        while (3 * (size_t{1} << m_bits) < 4 * expectedKeys && m_bits < 32)
            ++m_bits;
        m_slots.assign(size_t{1} << m_bits, Slot{0, -1});
    }

    // Asks the memory for the key's slot ahead of its use: keys are met in random order.
    void Prefetch(const Key& key) const { __builtin_prefetch(&m_slots[Home(m_hash(key))]); }

    // The key's member, -1 for a key not in the table.
    int Find(const Key& key) const { return m_slots[SlotOf(key, m_hash(key))].Member; }

    // The key's member, for the caller to set; -1 for a key not met before, which now has a slot.
    int& Member(const Key& key)
    {
        if (4 * (m_used + 1) > 3 * m_slots.size() && m_bits < 32)
            Grow();
        const uint64_t hash = m_hash(key);
        Slot& slot = m_slots[SlotOf(key, hash)];
        if (slot.Member < 0) {
            slot.Fingerprint = Fingerprint(hash);
            ++m_used;
        }
        return slot.Member;
    }

private:
    struct Slot {
        uint32_t Fingerprint;
        int Member;
    };

    static uint32_t Fingerprint(uint64_t hash) { return static_cast<uint32_t>(hash >> 32); }

    size_t Home(uint64_t hash) const { return static_cast<size_t>(hash >> (64 - m_bits)); }

    size_t SlotOf(const Key& key, uint64_t hash) const
    {
        const size_t mask = m_slots.size() - 1;
        for (size_t index = Home(hash);; index = (index + 1) & mask) {
            const Slot& slot = m_slots[index];
            if (slot.Member < 0 || (slot.Fingerprint == Fingerprint(hash) && m_keyOf(slot.Member) == key))
                return index;
        }
    }

    void Grow()
    {
        ++m_bits;
        std::vector<Slot> old(size_t{1} << m_bits, Slot{0, -1});
        old.swap(m_slots);
        const size_t mask = m_slots.size() - 1;
        for (const Slot& slot : old) {
            if (slot.Member < 0)
                continue;
            size_t index = Home(static_cast<uint64_t>(slot.Fingerprint) << 32);
            while (m_slots[index].Member >= 0)
                index = (index + 1) & mask;
            m_slots[index] = slot;
        }
    }

    KeyOf m_keyOf;
    Hash m_hash;
    int m_bits = 4;
    std::vector<Slot> m_slots;
    size_t m_used = 0;
};
