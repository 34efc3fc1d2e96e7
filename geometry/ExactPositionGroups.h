#pragma once
// Vertices of one list grouped by exactly equal position, for the passes whose search box only
// ever matches equal positions (duplicate folding, ID links): a hash instead of a search tree,
// with the same answers in linear time.

#include "model/VMOwnedList.h"

#include <vector>

struct VMVertex;

class ExactPositionGroups {
public:
    // Groups the list's vertices by their current positions. Equality is that of float
    // comparison: -0 equals +0; a vertex with a NaN or infinite coordinate is in no group, as
    // a box query around it (|p - q| <= r) matches nothing. Empty slots are left out.
    // Throws std::bad_alloc when memory runs out.
    explicit ExactPositionGroups(const VMOwnedList<VMVertex>& vertices);

    // The lowest list position in the group of the vertex at this position, or -1 when the
    // vertex is in no group.
    int First(int index) const { return m_first[static_cast<size_t>(index)]; }
    // The next higher list position in the same group, or -1 after the last.
    int Next(int index) const { return m_next[static_cast<size_t>(index)]; }

private:
    std::vector<int> m_first;
    std::vector<int> m_next;
};
