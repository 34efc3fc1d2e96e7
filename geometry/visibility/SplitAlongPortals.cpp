// Classifying every polygon against every portal is the portal count times the polygon count;
// a box tree over the world polygons narrows each portal to the polygons near it. Pieces lie
// within the box of the world polygon they come from, so the tree built once stays a valid
// filter, and the polygon list stays grouped by world polygon: each world polygon's place in the
// list holds its pieces and copies in order.

#include "geometry/visibility/PortalContact.h"
#include "geometry/visibility/VBBoxTree.h"
#include "geometry/visibility/VBGeometry.h"
#include "geometry/visibility/VBStages.h"

#include <algorithm>
#include <unordered_map>

namespace {

int32_t AddPiece(VBState& state, const std::vector<VBVector>& corners, int32_t source, int32_t portal, uint32_t sideFlag)
{
    const VBPolygon& cut = state.Polygons[static_cast<size_t>(source)];
    VBPolygon piece;
    piece.FirstCorner = static_cast<uint32_t>(state.Corners.size());
    piece.CornerCount = static_cast<uint32_t>(corners.size());
    // A piece lies in the plane of the polygon it was cut from; its own first corners may be
    // too close together to give that plane back.
    piece.Plane = cut.Plane;
    piece.Flags = (cut.Flags & ~VBFlagSideBits) | sideFlag;
    piece.Portal = portal;
    piece.Source = source;
    piece.Copy = cut.Copy;
    piece.Primitive = cut.Primitive;
    state.Corners.insert(state.Corners.end(), corners.begin(), corners.end());
    state.Polygons.push_back(piece);
    return static_cast<int32_t>(state.Polygons.size() - 1);
}

int32_t AddCopy(VBState& state, int32_t source, int32_t portal, uint32_t sideFlag)
{
    VBPolygon copy = state.Polygons[static_cast<size_t>(source)];
    copy.Flags = (copy.Flags & ~VBFlagSideBits) | sideFlag;
    copy.Portal = portal;
    copy.Source = source;
    copy.Copy = true;
    state.Polygons.push_back(copy);
    return static_cast<int32_t>(state.Polygons.size() - 1);
}

} // namespace

void SplitAlongPortals(VBContext& context)
{
    VBState& state = context.State;
    state.Portals.clear();
    for (const auto& portal : context.Portals)
        state.Portals.push_back(PreparePortal(*portal));

    const std::vector<int32_t> worldPolygons = state.List;
    std::vector<VBBox> boxes;
    boxes.reserve(worldPolygons.size());
    for (const int32_t number : worldPolygons) {
        const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
        boxes.push_back(BoxOfCorners(state.CornersOf(polygon), polygon.CornerCount));
    }
    VBBoxTree tree;
    tree.Build(boxes);

    // The current pieces and copies of each world polygon that a portal has touched.
    std::unordered_map<int32_t, std::vector<int32_t>> replaced;
    std::vector<int32_t> near;
    std::vector<int32_t> before;
    std::vector<int32_t> after;
    std::vector<VBVector> front;
    std::vector<VBVector> back;
    int splits = 0;
    for (size_t portalIndex = 0; portalIndex < state.Portals.size(); ++portalIndex) {
        const VBPortalState& portal = state.Portals[portalIndex];
        const bool cuts = context.Portals[portalIndex]->CutGeometry;
        const auto portalNumber = static_cast<int32_t>(portalIndex);
        near.clear();
        if (portal.Plane.Valid)
            tree.ForEachOverlapping(portal.GrownBox, [&](int32_t item) { near.push_back(item); });
        std::sort(near.begin(), near.end());
        for (const int32_t item : near) {
            const auto found = replaced.find(item);
            before = found != replaced.end() ? found->second : std::vector<int32_t> {worldPolygons[static_cast<size_t>(item)]};
            after.clear();
            bool changed = false;
            for (const int32_t number : before) {
                after.push_back(number);
                const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
                const VBVector* corners = state.CornersOf(polygon);
                VBContact contact =
                    ClassifyAgainstPortal(corners, polygon.CornerCount, BoxOfCorners(corners, polygon.CornerCount), portal);
                if (contact == VBContact::None)
                    continue;
                if (contact == VBContact::Split && cuts) {
                    CutAlongPortal(corners, polygon.CornerCount, portal.Plane, front, back);
                    after.back() = AddPiece(state, front, number, portalNumber, VBFlagFront);
                    after.push_back(AddPiece(state, back, number, portalNumber, VBFlagBack));
                    ++splits;
                    changed = true;
                    continue;
                }
                // A portal that does not cut takes whatever it meets as touching its front.
                if (!cuts)
                    contact = VBContact::Front;
                const uint32_t sideFlag = contact == VBContact::Front ? VBFlagFront : VBFlagBack;
                VBPolygon& touching = state.Polygons[static_cast<size_t>(number)];
                if (touching.Portal < 0) {
                    touching.Portal = portalNumber;
                    touching.Flags = (touching.Flags & ~VBFlagSideBits) | sideFlag;
                } else {
                    after.push_back(AddCopy(state, number, portalNumber, sideFlag));
                    changed = true;
                }
            }
            if (changed)
                replaced[item] = after;
        }
        VBLog(context, "  VBVisBuilder: Total splits generated: %i;\r\n", splits);
    }

    state.List.clear();
    for (size_t item = 0; item < worldPolygons.size(); ++item) {
        const auto found = replaced.find(static_cast<int32_t>(item));
        if (found == replaced.end())
            state.List.push_back(worldPolygons[item]);
        else
            state.List.insert(state.List.end(), found->second.begin(), found->second.end());
    }
    for (VBPolygon& polygon : state.Polygons)
        polygon.ListIndex = -1;
    for (size_t position = 0; position < state.List.size(); ++position)
        state.Polygons[static_cast<size_t>(state.List[position])].ListIndex = static_cast<int32_t>(position);
}
