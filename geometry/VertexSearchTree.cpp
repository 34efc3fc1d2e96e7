#include "geometry/VertexSearchTree.h"

#include "model/VMVertex.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <new>

namespace {

struct Range {
    size_t Start;
    size_t Count;
    int Axis;
};

// NaN coordinates sort after every number so that the ordering stays strict and weak.
bool CoordinateLess(float a, float b)
{
    if (std::isnan(a))
        return false;
    return std::isnan(b) || a < b;
}

void BuildRange(std::vector<VMVertex*>& nodes, size_t start, size_t count, int axis)
{
    while (count > 1) {
        const size_t half = count / 2;
        const auto first = nodes.begin() + static_cast<std::ptrdiff_t>(start);
        std::nth_element(first, first + static_cast<std::ptrdiff_t>(half), first + static_cast<std::ptrdiff_t>(count),
                         [axis](const VMVertex* a, const VMVertex* b) {
                             return CoordinateLess(a->Position[axis], b->Position[axis]);
                         });
        const int childAxis = (axis + 1) % 3;
        BuildRange(nodes, start, half, childAxis);
        start += half + 1;
        count = (count - 1) / 2;
        axis = childAxis;
    }
}

bool InsideBox(const float position[3], const float point[3], float radius)
{
    return std::fabs(position[0] - point[0]) <= radius && std::fabs(position[1] - point[1]) <= radius &&
           std::fabs(position[2] - point[2]) <= radius;
}

}

int VertexSearchTree::Build(int count, const VMOwnedList<VMVertex>& vertices)
{
    Destroy();
    const int usable = std::min(std::max(count, 0), vertices.Count());
    try {
        m_nodes.reserve(static_cast<size_t>(usable));
        for (int i = 0; i < usable; ++i) {
            if (VMVertex* vertex = vertices.Get(i))
                m_nodes.push_back(vertex);
        }
    } catch (const std::bad_alloc&) {
        Destroy();
        return -301;
    }
    BuildRange(m_nodes, 0, m_nodes.size(), 0);
    return 0;
}

const std::vector<VMVertex*>& VertexSearchTree::Query(const float point[3], float radius)
{
    m_result.clear();
    if (m_nodes.empty() || !(radius >= 0.0f))
        return m_result;

    // One pending sibling per level at most; a tree of 2^64 entries has 64 levels.
    std::array<Range, 2 * 64 + 2> pending;
    size_t top = 0;
    pending[top++] = {0, m_nodes.size(), 0};
    while (top > 0) {
        const Range range = pending[--top];
        const size_t half = range.Count / 2;
        VMVertex* node = m_nodes[range.Start + half];
        if (InsideBox(node->Position, point, radius))
            m_result.push_back(node);

        const float split = node->Position[range.Axis];
        const float probe = point[range.Axis];
        // A node whose coordinate is NaN (or was moved to one) no longer separates its children.
        const bool unordered = std::isnan(split);
        const int childAxis = (range.Axis + 1) % 3;
        const size_t upperCount = (range.Count - 1) / 2;
        // Pushed lower first so that the upper child is searched first.
        if (half > 0 && (unordered || split >= probe - radius))
            pending[top++] = {range.Start, half, childAxis};
        if (upperCount > 0 && (unordered || probe + radius >= split))
            pending[top++] = {range.Start + half + 1, upperCount, childAxis};
    }
    return m_result;
}

void VertexSearchTree::Destroy()
{
    m_nodes.clear();
    m_nodes.shrink_to_fit();
    m_result.clear();
    m_result.shrink_to_fit();
}
