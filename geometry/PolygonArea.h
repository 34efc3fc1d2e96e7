#pragma once
// Area of a polygon given as a corner sequence, summed over the fan from the first corner.

struct VMVertex;

// 0 for fewer than 3 corners. Each fan triangle (corner 0, corner k-1, corner k) contributes
// half the length of its cross product, formed in single precision; the sum is kept in double
// precision. A fan triangle with an exactly zero cross product contributes 0, so the area of a
// non-convex or self-overlapping sequence is the sum of the unsigned fan triangles.
double PolygonArea(const VMVertex* const* corners, int count);

// Half the cross-product length of one fan triangle, as PolygonArea sums it.
double FanTriangleArea(const VMVertex& origin, const VMVertex& previous, const VMVertex& current);
