#include "geometry/visibility/PortalContact.h"
#include "geometry/visibility/VBGeometry.h"
#include "geometry/visibility/VBStages.h"

namespace {

// Every addition for one polygon happens before the next polygon's, so a repeat can only be
// the list's last entry.
void AddOnce(std::vector<int32_t>& touching, int32_t polygon)
{
    if (touching.empty() || touching.back() != polygon)
        touching.push_back(polygon);
}

void AddToSide(VBPortalState& portal, int32_t polygon, uint32_t flags)
{
    if ((flags & VBFlagFront) != 0)
        AddOnce(portal.FrontTouching, polygon);
    else if ((flags & VBFlagBack) != 0)
        AddOnce(portal.BackTouching, polygon);
}

} // namespace

void AssignTouchingPolygons(VBContext& context)
{
    VBState& state = context.State;
    for (VBPortalState& portal : state.Portals) {
        portal.FrontTouching.clear();
        portal.BackTouching.clear();
    }
    for (const int32_t number : state.List) {
        const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
        if (polygon.Portal < 0)
            continue;
        AddToSide(state.Portals[static_cast<size_t>(polygon.Portal)], number, polygon.Flags);
        // A piece also touches the portals that its sources touched, where it still meets them.
        const VBVector* corners = state.CornersOf(polygon);
        const VBBox box = BoxOfCorners(corners, polygon.CornerCount);
        for (int32_t source = polygon.Source; source >= 0; source = state.Polygons[static_cast<size_t>(source)].Source) {
            const int32_t portalNumber = state.Polygons[static_cast<size_t>(source)].Portal;
            if (portalNumber < 0)
                continue;
            VBPortalState& portal = state.Portals[static_cast<size_t>(portalNumber)];
            VBContact contact = ClassifyAgainstPortal(corners, polygon.CornerCount, box, portal);
            if (contact == VBContact::None)
                continue;
            if (!context.Portals[static_cast<size_t>(portalNumber)]->CutGeometry)
                contact = VBContact::Front;
            if (contact == VBContact::Front)
                AddOnce(portal.FrontTouching, number);
            else if (contact == VBContact::Back)
                AddOnce(portal.BackTouching, number);
        }
    }
    for (size_t p = 0; p < state.Portals.size(); ++p) {
        VBPortalState& portal = state.Portals[p];
        if (portal.FrontTouching.empty() && portal.BackTouching.empty()) {
            portal.Bad = true;
            state.UntouchedPortals.push_back(context.Portals[p]->Name);
        }
    }
}
