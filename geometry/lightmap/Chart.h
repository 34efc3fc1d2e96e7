#pragma once
// One chart of an atlas: faces of the mesh, the points they share, its border and where each
// point lies in the plane.

#include "geometry/lightmap/Vec.h"

#include <cstdint>
#include <utility>
#include <vector>

struct AtlasMesh;

struct Chart {
    // Faces of the mesh.
    std::vector<int> Faces;
    // Per chart point: the lowest mesh vertex at its position. Vertices that share a position
    // are one point of a chart, so that base-UV and normal seams stay closed in the flattening,
    // unless a join of two charts (MergeCharts) has cut the chart there.
    std::vector<uint32_t> Points;
    // Three per face: chart points, in the face's corner order.
    std::vector<uint32_t> Corners;
    // The edges (pairs of chart points, in the order their face runs them) across which no face
    // of the chart lies: the outline of the chart and of its holes.
    std::vector<std::pair<uint32_t, uint32_t>> Border;
    // Per chart point.
    std::vector<Vec2> UV;
};

// Fills the chart's points, corners and border from its faces. pointOf (one entry per mesh
// vertex, all -1) and inChart (one per mesh face, all 0) are scratch and are left so.
void NumberChartPoints(const AtlasMesh& mesh, Chart& chart, std::vector<int>& pointOf, std::vector<int>& inChart);
