#pragma once
// Joins charts that cost the atlas more in gutter than they hold, such as the thin sides of a
// wall, to a neighbour.

#include "geometry/lightmap/Chart.h"

#include <vector>

struct AtlasMesh;

// Charts flattened without stretch that share a border are joined where that saves atlas
// room: the smaller is turned about the border they share into the larger's plane, as a box's
// side unfolds from its top, and the two become one where their shared points then meet, the
// joined chart neither folds nor overlaps itself, and its smallest rectangle grown by the
// gutter is no larger than the two charts' were, the gutter taken as long as it is on the
// surface when an atlas of that size is about two thirds full. Pairs that share the longest border are tried first, and a joined chart is
// offered to its neighbours again, so a box can end as one chart. The join has no stretch
// either. Charts keep their order, a joined chart taking the
// larger one's place.
void MergeCharts(const AtlasMesh& mesh, std::vector<Chart>& charts, int atlasSize, int gutter);
