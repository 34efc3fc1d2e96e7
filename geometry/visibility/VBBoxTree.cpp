#include "geometry/visibility/VBBoxTree.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int32_t LeafSize = 4;

} // namespace

void VBBoxTree::Build(const std::vector<VBBox>& boxes)
{
    m_boxes = boxes;
    m_nodes.clear();
    m_items.resize(boxes.size());
    m_leafOfItem.assign(boxes.size(), -1);
    if (boxes.empty())
        return;
    // The centres travel with their items, so that the median searches read them in order
    // rather than fetching each from afar. A NaN would break the ordering, so it sorts as 0.
    std::vector<Centre> centres(boxes.size());
    VBBox centreBox;
    for (size_t i = 0; i < boxes.size(); ++i) {
        VBVector centre = boxes[i].Centre();
        for (int axis = 0; axis < 3; ++axis)
            if (!std::isfinite(centre[axis]))
                centre[axis] = 0.0;
        centres[i] = Centre {{centre.X, centre.Y, centre.Z}, static_cast<int32_t>(i)};
        centreBox.Grow(centre);
    }
    m_nodes.reserve(boxes.size() / 2 + 2);
    m_nodes.emplace_back();
    BuildNode(0, 0, static_cast<int32_t>(boxes.size()), centreBox, centres);
}

// Splits at the median centre along the longer side of a box that holds the centres: the
// parent's centre box cut at the median, which is no tighter than it need be but spares a pass
// over the items at every level. Node boxes are grown from the children afterwards.
void VBBoxTree::BuildNode(int32_t index, int32_t first, int32_t count, const VBBox& centreBox,
                          std::vector<Centre>& centres)
{
    if (count <= LeafSize) {
        VBBox box;
        for (int32_t k = first; k < first + count; ++k) {
            const int32_t item = centres[static_cast<size_t>(k)].Item;
            m_items[static_cast<size_t>(k)] = item;
            box.Grow(m_boxes[static_cast<size_t>(item)]);
            m_leafOfItem[static_cast<size_t>(item)] = index;
        }
        Node& node = m_nodes[static_cast<size_t>(index)];
        node.Box = box;
        node.First = first;
        node.Count = count;
        return;
    }
    int axis = 0;
    for (int candidate = 1; candidate < 3; ++candidate)
        if (centreBox.Max[candidate] - centreBox.Min[candidate] > centreBox.Max[axis] - centreBox.Min[axis])
            axis = candidate;
    const int32_t half = count / 2;
    const auto begin = centres.begin() + first;
    std::nth_element(begin, begin + half, begin + count, [axis](const Centre& a, const Centre& b) {
        return a.Position[axis] < b.Position[axis] || (a.Position[axis] == b.Position[axis] && a.Item < b.Item);
    });
    const double median = (begin + half)->Position[axis];
    VBBox lowerCentres = centreBox;
    VBBox upperCentres = centreBox;
    lowerCentres.Max[axis] = median;
    upperCentres.Min[axis] = median;
    // The children sit side by side, so that an inner node names both with one number.
    const auto children = static_cast<int32_t>(m_nodes.size());
    m_nodes[static_cast<size_t>(index)].First = children;
    m_nodes.emplace_back().Parent = index;
    m_nodes.emplace_back().Parent = index;
    BuildNode(children, first, half, lowerCentres, centres);
    BuildNode(children + 1, first + half, count - half, upperCentres, centres);
    VBBox box = m_nodes[static_cast<size_t>(children)].Box;
    box.Grow(m_nodes[static_cast<size_t>(children + 1)].Box);
    m_nodes[static_cast<size_t>(index)].Box = box;
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
