#pragma once
// Flattens a chart so that angles are kept as well as a piecewise-linear map allows.

#include <vector>

struct AtlasMesh;
struct Chart;

// Replaces chart.UV, which must hold a flattening that keeps the faces' orientation (their
// projection onto the chart's mean plane), by the least-squares conformal map that holds the
// two points farthest apart in it where they are. Faces without area take no part; a point
// that only such faces use stays where it was. Answers false, leaving chart.UV as it was, when
// the system cannot be solved.
bool ConformalMap(const AtlasMesh& mesh, Chart& chart);
