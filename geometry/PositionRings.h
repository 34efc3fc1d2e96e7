#pragma once
// Vertices of one list grouped by exactly equal position, each group a ring with no order, so
// that two groups join in constant time when the vertices of one move onto the other.

#include <cstddef>
#include <utility>
#include <vector>

class PositionRings {
public:
    // next[i]: the member after vertex i in its group's ring, i itself when alone, -1 for a
    // vertex in no group.
    explicit PositionRings(std::vector<int> next)
        : m_next(std::move(next))
    {
    }

    int Next(int index) const { return m_next[static_cast<size_t>(index)]; }

    // Makes one ring of the groups of a and b, which must be two different groups.
    void Join(int a, int b) { std::swap(m_next[static_cast<size_t>(a)], m_next[static_cast<size_t>(b)]); }

private:
    std::vector<int> m_next;
};
