#pragma once
// The small geometric tests of the visibility builder, in double precision.

#include "geometry/visibility/VBState.h"

// The plane through the first three corners: Normal = normalise((P1 - P0) x (P2 - P0)),
// D = Normal . P0. Valid only when the normalised normal's squared length lies strictly
// between 0.95 and 1.05, so fewer than 3 corners, collinear corners and NaN give an invalid
// plane (zero normal).
VBPlane PlaneThroughCorners(const VBVector* corners, uint32_t count);

VBBox BoxOfCorners(const VBVector* corners, uint32_t count);

// The largest distance of a corner from the plane; 0 for an invalid plane.
double PlaneDeviation(const VBVector* corners, uint32_t count, const VBPlane& plane);

// Whether point, assumed to lie in polygon's plane, lies inside the polygon. Decided in two
// dimensions, dropping the coordinate in which the normal is largest; the polygon is taken as
// convex: the walk over its edges (from the last corner to the first, then onwards) stops after
// the second edge that crosses the point's line.
bool InsidePolygon(const VBVector* corners, uint32_t count, const VBPlane& plane, const VBVector& point);

// Whether an edge of a (from the last corner to the first, then each corner to the next) meets
// b's plane at a point inside b (the meeting parameter inclusive at both ends).
bool EdgePierces(const VBVector* a, uint32_t aCount, const VBVector* b, uint32_t bCount, const VBPlane& bPlane);

// The average of the corners.
VBVector CentreOfCorners(const VBVector* corners, uint32_t count);

// Distance from point to a polygon, as the floating stage measures it: the distance to the
// plane when the point's projection onto the plane lies strictly inside box, else twice the
// distance to the nearest corner; an invalid plane counts as StalePlaneDistance. Never below
// the distance from point to box, which the nearest-polygon searches rely on.
inline constexpr double StalePlaneDistance = 1.024e9;
double DistanceToPolygon(const VBVector* corners, uint32_t count, const VBPlane& plane, const VBBox& box,
                         const VBVector& point);

// Euclidean distance from point to the closed box; 0 inside.
double DistanceToBox(const VBBox& box, const VBVector& point);
