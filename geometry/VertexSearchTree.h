#pragma once
// Three-dimensional search tree (a k-d tree split at the median) over the positions of one
// vertex list, answering which vertices lie inside a closed axis-aligned box.
//
// The tree keeps the vertex list it was built over, not a copy of the positions: a pass that
// moves vertices after the build sees the moved positions in later queries, while the shape of
// the tree still follows the positions at build time. The welding passes size their boxes so
// that moves smaller than their tolerance never hide a vertex they look for.

#include "model/VMOwnedList.h"

#include <vector>

struct VMVertex;

class VertexSearchTree {
public:
    VertexSearchTree() = default;
    VertexSearchTree(const VertexSearchTree&) = delete;
    VertexSearchTree& operator=(const VertexSearchTree&) = delete;

    // Builds over the first count entries of the list (a count beyond the list is clamped, empty
    // slots are left out). Answers 0, or -301 when memory runs out; the tree is then empty.
    // The list must outlive the tree or the next Build/Destroy.
    int Build(int count, const VMOwnedList<VMVertex>& vertices);

    // The vertices whose position p satisfies |p - point| <= radius on x, y and z (inclusive).
    // Order: a node's own vertex, then the query in its upper child, then in its lower child;
    // the patch pass of AdjustTriangles takes the first match, so this order is part of the
    // result. The answer is reused (emptied) by the next query. A vertex with a NaN coordinate
    // is never found; a negative or NaN radius finds nothing.
    const std::vector<VMVertex*>& Query(const float point[3], float radius);

    void Destroy();

    int Count() const { return static_cast<int>(m_nodes.size()); }

private:
    // The vertices in tree order: the node of the range [s, s + n) is entry s + n / 2, its lower
    // child covers [s, s + n / 2) and its upper child the (n - 1) / 2 entries after it; the
    // root covers everything and splits on x, each level on the next axis.
    std::vector<VMVertex*> m_nodes;
    std::vector<VMVertex*> m_result;
};
