#pragma once
// Lays one chart flat, or says that it cannot be laid flat well enough.

#include <vector>

struct AtlasMesh;
struct Chart;

// Numbers the chart's points (see NumberChartPoints; pointOf and inChart are its scratch) and
// flattens it: a chart without area becomes a point; a flat chart (whose projection onto its mean plane has a stretch of at most 0.001
// and maxStretch) keeps that projection; any other of at most 16384 faces is given its
// least-squares conformal map, or its projection where only that passes, and a larger one fails. A flattening passes when no face
// folds, no part overlaps another and the stretch (see ChartShape) is at most maxStretch; a
// chart of one face always passes. On success the UVs are scaled so that the chart's flat area
// equals its surface area, stretch receives the chart's stretch and the answer is true; on
// failure the UVs are undefined.
bool FlattenChart(const AtlasMesh& mesh, Chart& chart, double maxStretch, double& stretch, std::vector<int>& pointOf,
                  std::vector<int>& inChart);
