#pragma once
// A bounding-volume tree over a fixed set of boxes (split at the median of the longer axis),
// answering which boxes overlap a query box and, through a caller's distance, which item lies
// nearest to a point. Each node can carry bit masks that the caller sets on items (they are
// or'ed up the tree), so that a nearest search skips whole subtrees holding no item of
// interest; the masks only make searches faster, never different.

#include "geometry/visibility/VBGeometry.h"

#include <cstdint>
#include <vector>

class VBBoxTree {
public:
    static constexpr int MaskChannels = 2;

    // Item i is boxes[i].
    void Build(const std::vector<VBBox>& boxes);

    // Calls visit(item) for every item whose box overlaps box (closed), in no particular order.
    template <class Visit>
    void ForEachOverlapping(const VBBox& box, Visit visit) const
    {
        if (m_nodes.empty())
            return;
        std::vector<int32_t>& stack = m_stack;
        stack.assign(1, 0);
        while (!stack.empty()) {
            const Node& node = m_nodes[static_cast<size_t>(stack.back())];
            stack.pop_back();
            if (!node.Box.Overlaps(box))
                continue;
            if (node.Count > 0) {
                for (int32_t k = node.First; k < node.First + node.Count; ++k)
                    if (m_boxes[static_cast<size_t>(m_items[static_cast<size_t>(k)])].Overlaps(box))
                        visit(m_items[static_cast<size_t>(k)]);
            } else {
                stack.push_back(node.First);
                stack.push_back(node.First + 1);
            }
        }
    }

    // Or's bits into the item's mask of the channel and into those of the nodes above it.
    void Mark(int32_t item, int channel, uint64_t bits);

    // Offers consider(item) every item that might lie nearer to point than bestDistance()
    // answers at the time, nearer subtrees first, skipping subtrees whose channel mask has no
    // bit of wanted. The caller's distance to an item must never be below the distance from
    // point to the item's box; an item as far as the best so far is still offered, so that the
    // caller can prefer it on a tie.
    template <class Consider, class Best>
    void SearchNearest(const VBVector& point, int channel, uint64_t wanted, Consider consider, Best bestDistance) const
    {
        if (!m_nodes.empty())
            SearchNode(0, point, channel, wanted, consider, bestDistance);
    }

    int32_t Count() const { return static_cast<int32_t>(m_boxes.size()); }

private:
    struct Node {
        VBBox Box;
        // A leaf holds items m_items[First, First + Count); an inner node has Count 0 and its
        // children at First and First + 1.
        int32_t First = 0;
        int32_t Count = 0;
        int32_t Parent = -1;
        uint64_t Masks[MaskChannels] = {0, 0};
    };

    struct Centre {
        double Position[3];
        int32_t Item;
    };

    void BuildNode(int32_t index, int32_t first, int32_t count, const VBBox& centreBox, std::vector<Centre>& centres);

    // Distances within this relative margin of the best are not pruned: rounding in the two
    // computations must not hide a tie.
    static bool BeyondBest(double boundDistance, double best) { return boundDistance - 1e-9 * (1.0 + boundDistance) > best; }

    template <class Consider, class Best>
    void SearchNode(int32_t index, const VBVector& point, int channel, uint64_t wanted, Consider& consider,
                    Best& bestDistance) const;

    std::vector<VBBox> m_boxes;
    std::vector<Node> m_nodes;
    std::vector<int32_t> m_items;
    std::vector<int32_t> m_leafOfItem;
    mutable std::vector<int32_t> m_stack;
};

template <class Consider, class Best>
void VBBoxTree::SearchNode(int32_t index, const VBVector& point, int channel, uint64_t wanted, Consider& consider,
                           Best& bestDistance) const
{
    const Node& node = m_nodes[static_cast<size_t>(index)];
    if ((node.Masks[channel] & wanted) == 0 || BeyondBest(DistanceToBox(node.Box, point), bestDistance()))
        return;
    if (node.Count > 0) {
        for (int32_t k = node.First; k < node.First + node.Count; ++k) {
            const int32_t item = m_items[static_cast<size_t>(k)];
            if (!BeyondBest(DistanceToBox(m_boxes[static_cast<size_t>(item)], point), bestDistance()))
                consider(item);
        }
        return;
    }
    const double left = DistanceToBox(m_nodes[static_cast<size_t>(node.First)].Box, point);
    const double right = DistanceToBox(m_nodes[static_cast<size_t>(node.First + 1)].Box, point);
    const int32_t nearer = left <= right ? node.First : node.First + 1;
    SearchNode(nearer, point, channel, wanted, consider, bestDistance);
    SearchNode(nearer == node.First ? node.First + 1 : node.First, point, channel, wanted, consider, bestDistance);
}
