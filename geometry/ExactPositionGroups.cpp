#include "geometry/ExactPositionGroups.h"

#include "geometry/MemberTable.h"
#include "model/VMSkinVertex.h"
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

template <class Vertex>
struct KeyOfMember {
    const VMOwnedList<Vertex>* Vertices;
    Key operator()(int member) const { return KeyOf(Vertices->Get(member)->Position); }
};

struct KeyHash {
    uint64_t operator()(const Key& key) const { return HashWords(key.Bits[0], key.Bits[1], key.Bits[2]); }
};

}

template <class Vertex>
ExactPositionGroups::ExactPositionGroups(const VMOwnedList<Vertex>& vertices, size_t expectedGroups)
{
    const size_t count = static_cast<size_t>(vertices.Count());
    m_next.assign(count, -1);
    // Each group's slot holds its highest member so far, whose record the list met moments ago.
    MemberTable<Key, KeyOfMember<Vertex>, KeyHash> table(expectedGroups, KeyOfMember<Vertex>{&vertices}, KeyHash{});
    const auto groupable = [&](size_t i) -> const Vertex* {
        const Vertex* vertex = vertices.Get(static_cast<int>(i));
        return vertex != nullptr && IsFinite(vertex->Position) ? vertex : nullptr;
    };
    constexpr size_t PrefetchDistance = 16;
    for (size_t i = 0; i < count; ++i) {
        // The records first, then the slots their positions lead to.
        if (i + 2 * PrefetchDistance < count)
            __builtin_prefetch(vertices.Get(static_cast<int>(i + 2 * PrefetchDistance)));
        if (i + PrefetchDistance < count) {
            if (const Vertex* ahead = groupable(i + PrefetchDistance))
                table.Prefetch(KeyOf(ahead->Position));
        }
        const Vertex* vertex = groupable(i);
        if (vertex == nullptr)
            continue;
        int& highest = table.Member(KeyOf(vertex->Position));
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

template ExactPositionGroups::ExactPositionGroups(const VMOwnedList<VMVertex>&, size_t);
template ExactPositionGroups::ExactPositionGroups(const VMOwnedList<VMSkinVertex>&, size_t);
