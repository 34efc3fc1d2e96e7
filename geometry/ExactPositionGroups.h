#pragma once
// Vertices of one list grouped by exactly equal position, for the passes whose search box only
// ever matches equal positions (duplicate folding, ID links): a hash instead of a search tree,
// with the same answers in linear time.

#include "geometry/PositionRings.h"
#include "model/VMOwnedList.h"

#include <cstddef>
#include <utility>
#include <vector>

struct VMSkinVertex;
struct VMVertex;

class ExactPositionGroups {
public:
    // Groups the list's vertices by their current positions. Equality is that of float
    // comparison: -0 equals +0; a vertex with a NaN or infinite coordinate is in no group, as
    // a box query around it (|p - q| <= r) matches nothing. Empty slots are left out.
    // expectedGroups sizes the table (it grows when the guess is short). Throws std::bad_alloc
    // when memory runs out. For the vertices of a world (VMVertex) or of a model (VMSkinVertex).
    template <class Vertex>
    ExactPositionGroups(const VMOwnedList<Vertex>& vertices, size_t expectedGroups);

    // Each group is a ring in ascending list order: the next higher position in the group of the
    // vertex at this position, the group's lowest after its highest, the vertex itself when it is
    // alone. -1 for a vertex in no group.
    int Next(int index) const { return m_next[static_cast<size_t>(index)]; }
    // Whether the vertex at this position is the highest of its group, whose next is the lowest.
    bool IsHighest(int index) const
    {
        const int next = Next(index);
        return next >= 0 && next <= index;
    }

    // The same groups, given up to a pass that joins them and needs no order.
    PositionRings Rings() && { return PositionRings(std::move(m_next)); }

private:
    std::vector<int> m_next;
};
