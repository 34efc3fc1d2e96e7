#include "geometry/visibility/VBBoxTree.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr int32_t LeafSize = 4;

} // namespace

void VBBoxTree::Build(const std::vector<VBBox>& boxes)
{
    m_boxes = boxes;
    m_nodes.clear();
    m_items.resize(boxes.size());
    std::iota(m_items.begin(), m_items.end(), 0);
    m_leafOfItem.assign(boxes.size(), -1);
    if (boxes.empty())
        return;
    // Centres order the items; a NaN among them would break the ordering, so those sort as 0.
    std::vector<VBVector> centres(boxes.size());
    for (size_t i = 0; i < boxes.size(); ++i) {
        centres[i] = boxes[i].Centre();
        for (int axis = 0; axis < 3; ++axis)
            if (!std::isfinite(centres[i][axis]))
                centres[i][axis] = 0.0;
    }
    m_nodes.emplace_back();
    BuildNode(0, 0, static_cast<int32_t>(boxes.size()), centres);
}

void VBBoxTree::BuildNode(int32_t index, int32_t first, int32_t count, const std::vector<VBVector>& centres)
{
    VBBox box;
    VBBox centreBox;
    for (int32_t k = first; k < first + count; ++k) {
        const auto item = static_cast<size_t>(m_items[static_cast<size_t>(k)]);
        box.Grow(m_boxes[item]);
        centreBox.Grow(centres[item]);
    }
    m_nodes[static_cast<size_t>(index)].Box = box;
    if (count <= LeafSize) {
        m_nodes[static_cast<size_t>(index)].First = first;
        m_nodes[static_cast<size_t>(index)].Count = count;
        for (int32_t k = first; k < first + count; ++k)
            m_leafOfItem[static_cast<size_t>(m_items[static_cast<size_t>(k)])] = index;
        return;
    }
    int axis = 0;
    for (int candidate = 1; candidate < 3; ++candidate)
        if (centreBox.Max[candidate] - centreBox.Min[candidate] > centreBox.Max[axis] - centreBox.Min[axis])
            axis = candidate;
    const int32_t half = count / 2;
    const auto begin = m_items.begin() + first;
    std::nth_element(begin, begin + half, begin + count, [&](int32_t a, int32_t b) {
        const double ca = centres[static_cast<size_t>(a)][axis];
        const double cb = centres[static_cast<size_t>(b)][axis];
        return ca < cb || (ca == cb && a < b);
    });
    // The children sit side by side, so that an inner node names both with one number.
    const auto children = static_cast<int32_t>(m_nodes.size());
    m_nodes[static_cast<size_t>(index)].First = children;
    m_nodes.emplace_back().Parent = index;
    m_nodes.emplace_back().Parent = index;
    BuildNode(children, first, half, centres);
    BuildNode(children + 1, first + half, count - half, centres);
}

void VBBoxTree::Mark(int32_t item, int channel, uint64_t bits)
{
    for (int32_t node = m_leafOfItem[static_cast<size_t>(item)]; node >= 0;) {
        uint64_t& mask = m_nodes[static_cast<size_t>(node)].Masks[channel];
        if ((mask | bits) == mask)
            return;
        mask |= bits;
        node = m_nodes[static_cast<size_t>(node)].Parent;
    }
}
