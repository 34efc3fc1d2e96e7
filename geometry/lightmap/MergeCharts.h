#pragma once
// Joins charts that cost the atlas more in gutter than they hold, such as the thin sides of a
// wall, to a neighbour.

#include "geometry/lightmap/Chart.h"

#include <vector>

struct AtlasMesh;

// Every chart that is flattened without stretch and is smaller than the area-weighted median
// chart is offered to the neighbours with which it shares the most border (up to three, in that
// order) that are flattened without stretch too, the charts with the longest shared border
// first: the chart is turned about the border they share into the neighbour's plane, as a
// box's side unfolds from its top, and joins the first neighbour where their shared points then
// meet and the joined chart neither folds nor overlaps itself. The join has no stretch either.
// Charts keep their order, a joined chart taking the neighbour's place.
void MergeCharts(const AtlasMesh& mesh, std::vector<Chart>& charts);
