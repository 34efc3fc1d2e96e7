#pragma once
// Lays every chart flat.

#include "geometry/lightmap/Chart.h"

#include <vector>

struct AtlasMesh;

// Flattens each chart of the segmentation (chartOf: each face's chart, chartCount charts) with
// FlattenChart. A chart that cannot be flattened within maxStretch is cut in two and each half
// tried again, down to single faces, which always pass. Answers the charts, in segmentation
// order with the halves of a cut chart in its place; stretchReached receives the largest
// stretch among them.
std::vector<Chart> ParameterizeCharts(const AtlasMesh& mesh, const std::vector<int>& chartOf, int chartCount,
                                      double maxStretch, double& stretchReached);
