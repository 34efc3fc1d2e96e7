#include "geometry/visibility/PortalContact.h"

#include "geometry/visibility/VBGeometry.h"
#include "geometry/visibility/VBVisBuilder.h"

#include <cmath>

namespace {

enum class Side { Front, Back, OnPlane };

Side SideOf(double distance)
{
    if (std::fabs(distance) <= PortalTolerance)
        return Side::OnPlane;
    return distance > 0.0 ? Side::Front : Side::Back;
}

bool InsidePortal(const VBPortalState& portal, const VBVector& point)
{
    for (const VBPlane& edge : portal.EdgePlanes)
        if (!(Dot(edge.Normal, point) - edge.D <= 0.0))
            return false;
    return true;
}

VBVector CrossingPoint(const VBVector& a, double aDistance, const VBVector& b, double bDistance)
{
    return a + (b - a) * (aDistance / (aDistance - bDistance));
}

} // namespace

VBPortalState PreparePortal(const VBPortal& portal)
{
    VBPortalState state;
    const auto count = static_cast<uint32_t>(portal.Corners.size());
    state.Plane = PlaneThroughCorners(portal.Corners.data(), count);
    state.GrownBox = BoxOfCorners(portal.Corners.data(), count);
    state.GrownBox.Enlarge(PortalTolerance);
    if (!state.Plane.Valid)
        return state;
    for (uint32_t i = 0; i < count; ++i) {
        const VBVector& start = portal.Corners[i];
        const VBVector& end = portal.Corners[(i + 1) % count];
        const VBVector outward = Cross(end - start, state.Plane.Normal);
        const double length = Length(outward);
        // Repeated corners make no edge.
        if (!(length > 0.0))
            continue;
        VBPlane edge;
        edge.Normal = outward * (1.0 / length);
        edge.D = Dot(edge.Normal, start);
        edge.Valid = true;
        state.EdgePlanes.push_back(edge);
    }
    return state;
}

VBContact ClassifyAgainstPortal(const VBVector* corners, uint32_t count, const VBBox& box, const VBPortalState& portal)
{
    if (count == 0 || !portal.Plane.Valid || !box.Overlaps(portal.GrownBox))
        return VBContact::None;
    const VBPlane& plane = portal.Plane;
    bool anyFront = false;
    bool anyBack = false;
    bool anyOnPlane = false;
    for (uint32_t i = 0; i < count; ++i) {
        switch (SideOf(Dot(plane.Normal, corners[i]) - plane.D)) {
        case Side::Front: anyFront = true; break;
        case Side::Back: anyBack = true; break;
        case Side::OnPlane: anyOnPlane = true; break;
        }
    }
    if (!anyFront || !anyBack) {
        if (!anyOnPlane)
            return VBContact::None;
        for (uint32_t i = 0; i < count; ++i)
            if (SideOf(Dot(plane.Normal, corners[i]) - plane.D) == Side::OnPlane && InsidePortal(portal, corners[i]))
                return anyFront ? VBContact::Front : VBContact::Back;
        return VBContact::None;
    }
    for (uint32_t i = 0; i < count; ++i) {
        const VBVector& a = corners[i];
        const VBVector& b = corners[(i + 1) % count];
        const double aDistance = Dot(plane.Normal, a) - plane.D;
        const double bDistance = Dot(plane.Normal, b) - plane.D;
        if (SideOf(aDistance) == SideOf(bDistance))
            continue;
        if (InsidePortal(portal, CrossingPoint(a, aDistance, b, bDistance)))
            return VBContact::Split;
    }
    return VBContact::None;
}

void CutAlongPortal(const VBVector* corners, uint32_t count, const VBPlane& plane, std::vector<VBVector>& front,
                    std::vector<VBVector>& back)
{
    front.clear();
    back.clear();
    std::vector<double> distance(count);
    std::vector<Side> side(count);
    for (uint32_t i = 0; i < count; ++i) {
        distance[i] = Dot(plane.Normal, corners[i]) - plane.D;
        side[i] = SideOf(distance[i]);
    }
    // Which pieces each in-plane corner joins: both, unless it sits in a run of in-plane corners
    // between a front and a back corner and is not the run's corner nearest the plane.
    std::vector<uint8_t> joinsFront(count, 1);
    std::vector<uint8_t> joinsBack(count, 1);
    for (uint32_t start = 0; start < count; ++start) {
        const uint32_t before = (start + count - 1) % count;
        if (side[start] != Side::OnPlane || side[before] == Side::OnPlane)
            continue;
        uint32_t length = 0;
        while (length < count && side[(start + length) % count] == Side::OnPlane)
            ++length;
        const Side after = side[(start + length) % count];
        if (length < 2 || after == side[before])
            continue;
        uint32_t nearest = 0;
        for (uint32_t k = 1; k < length; ++k)
            if (std::fabs(distance[(start + k) % count]) < std::fabs(distance[(start + nearest) % count]))
                nearest = k;
        for (uint32_t k = 0; k < length; ++k) {
            if (k == nearest)
                continue;
            const bool bordersFront = (k < nearest) == (side[before] == Side::Front);
            const uint32_t corner = (start + k) % count;
            joinsFront[corner] = bordersFront ? 1 : 0;
            joinsBack[corner] = bordersFront ? 0 : 1;
        }
    }
    for (uint32_t i = 0; i < count; ++i) {
        const uint32_t next = (i + 1) % count;
        if (side[i] == Side::Front || (side[i] == Side::OnPlane && joinsFront[i]))
            front.push_back(corners[i]);
        if (side[i] == Side::Back || (side[i] == Side::OnPlane && joinsBack[i]))
            back.push_back(corners[i]);
        const bool crosses = (side[i] == Side::Front && side[next] == Side::Back) ||
                             (side[i] == Side::Back && side[next] == Side::Front);
        if (crosses) {
            const VBVector point = CrossingPoint(corners[i], distance[i], corners[next], distance[next]);
            front.push_back(point);
            back.push_back(point);
        }
    }
}
