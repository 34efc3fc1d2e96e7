#pragma once
// Lays one chart flat, or says that it cannot be laid flat well enough.

#include <vector>

struct AtlasMesh;
struct Chart;

// Numbers the chart's points (see NumberChartPoints; pointOf and inChart are its scratch) and
// flattens it: a flat chart is projected onto its plane; any other is given its least-squares
// conformal map, or its projection where only that passes. A flattening passes when no face
// folds, no part overlaps another and the stretch (see ChartShape) is at most maxStretch; a
// chart of one face always passes. On success the UVs are scaled so that the chart's flat area
// equals its surface area, stretch receives the chart's stretch and the answer is true; on
// failure the UVs are undefined.
bool FlattenChart(const AtlasMesh& mesh, Chart& chart, double maxStretch, double& stretch, std::vector<int>& pointOf,
                  std::vector<int>& inChart);
