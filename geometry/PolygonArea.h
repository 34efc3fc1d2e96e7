#pragma once
// Area of a polygon given as a corner sequence, summed over the fan from the first corner.

#include "model/VMVertexData.h"

// Half the cross-product length of one fan triangle, as PolygonArea sums it.
double FanTriangleArea(const VMVertexData& origin, const VMVertexData& previous, const VMVertexData& current);

// 0 for fewer than 3 corners. Each fan triangle (corner 0, corner k-1, corner k) contributes
// half the length of its cross product, formed in single precision; the sum is kept in double
// precision. A fan triangle with an exactly zero cross product contributes 0, so the area of a
// non-convex or self-overlapping sequence is the sum of the unsigned fan triangles.
// Corners of any vertex type of the model (VMVertex, VMSkinVertex).
template <class Vertex>
double PolygonArea(const Vertex* const* corners, int count)
{
    double area = 0.0;
    for (int k = 2; k < count; ++k)
        area += FanTriangleArea(*corners[0], *corners[k - 1], *corners[k]);
    return area;
}
