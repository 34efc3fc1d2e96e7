#include "geometry/visibility/VBGeometry.h"

#include <cmath>

VBPlane PlaneThroughCorners(const VBVector* corners, uint32_t count)
{
    VBPlane plane;
    if (count < 3)
        return plane;
    const VBVector cross = Cross(corners[1] - corners[0], corners[2] - corners[0]);
    const double length = Length(cross);
    const VBVector normal = cross * (1.0 / length);
    const double squared = Dot(normal, normal);
    if (!(squared > 0.95 && squared < 1.05))
        return plane;
    plane.Normal = normal;
    plane.D = Dot(normal, corners[0]);
    plane.Valid = true;
    return plane;
}

VBBox BoxOfCorners(const VBVector* corners, uint32_t count)
{
    VBBox box;
    for (uint32_t i = 0; i < count; ++i)
        box.Grow(corners[i]);
    return box;
}

double PlaneDeviation(const VBVector* corners, uint32_t count, const VBPlane& plane)
{
    double deviation = 0.0;
    if (!plane.Valid)
        return deviation;
    for (uint32_t i = 0; i < count; ++i)
        deviation = std::max(deviation, std::fabs(Dot(plane.Normal, corners[i]) - plane.D));
    return deviation;
}

bool InsidePolygon(const VBVector* corners, uint32_t count, const VBPlane& plane, const VBVector& point)
{
    if (count == 0)
        return false;
    const double nx = std::fabs(plane.Normal.X);
    const double ny = std::fabs(plane.Normal.Y);
    const double nz = std::fabs(plane.Normal.Z);
    int uAxis = 1;
    int vAxis = 0;
    if (nx >= ny && nx >= nz) {
        uAxis = 2;
        vAxis = 1;
    } else if (ny >= nz) {
        uAxis = 2;
        vAxis = 0;
    }
    const double pu = point[uAxis];
    const double pv = point[vAxis];
    bool inside = false;
    int crossings = 0;
    uint32_t previous = count - 1;
    for (uint32_t i = 0; i < count && crossings < 2; previous = i, ++i) {
        const double u1 = corners[previous][uAxis];
        const double v1 = corners[previous][vAxis];
        const double u2 = corners[i][uAxis];
        const double v2 = corners[i][vAxis];
        if ((v1 >= pv) == (v2 >= pv))
            continue;
        ++crossings;
        if (u1 >= pu && u2 >= pu)
            inside = !inside;
        else if ((u1 >= pu) != (u2 >= pu) && u1 + (pv - v1) * (u2 - u1) / (v2 - v1) >= pu)
            inside = !inside;
    }
    return inside;
}

bool EdgePierces(const VBVector* a, uint32_t aCount, const VBVector* b, uint32_t bCount, const VBPlane& bPlane)
{
    if (aCount == 0)
        return false;
    uint32_t previous = aCount - 1;
    for (uint32_t i = 0; i < aCount; previous = i, ++i) {
        const VBVector& start = a[previous];
        const VBVector edge = a[i] - start;
        const double t = -(Dot(bPlane.Normal, start) - bPlane.D) / Dot(bPlane.Normal, edge);
        if (t >= 0.0 && t <= 1.0 && InsidePolygon(b, bCount, bPlane, start + edge * t))
            return true;
    }
    return false;
}

VBVector CentreOfCorners(const VBVector* corners, uint32_t count)
{
    VBVector sum;
    for (uint32_t i = 0; i < count; ++i)
        sum = sum + corners[i];
    return count == 0 ? sum : sum * (1.0 / count);
}

double DistanceToPolygon(const VBVector* corners, uint32_t count, const VBPlane& plane, const VBBox& box,
                         const VBVector& point)
{
    if (!plane.Valid)
        return StalePlaneDistance;
    const double offset = Dot(plane.Normal, point) - plane.D;
    const VBVector projected = point - plane.Normal * offset;
    bool strictlyInside = true;
    for (int axis = 0; axis < 3; ++axis)
        strictlyInside = strictlyInside && projected[axis] > box.Min[axis] && projected[axis] < box.Max[axis];
    if (strictlyInside)
        return std::fabs(offset);
    double nearest = INFINITY;
    for (uint32_t i = 0; i < count; ++i)
        nearest = std::min(nearest, Length(corners[i] - point));
    return 2.0 * nearest;
}

double DistanceToBox(const VBBox& box, const VBVector& point)
{
    double squared = 0.0;
    for (int axis = 0; axis < 3; ++axis) {
        const double below = box.Min[axis] - point[axis];
        const double above = point[axis] - box.Max[axis];
        const double gap = std::max({below, above, 0.0});
        squared += gap * gap;
    }
    return std::sqrt(squared);
}
