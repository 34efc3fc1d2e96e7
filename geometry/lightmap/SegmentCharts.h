#pragma once
// Splits a mesh into charts: connected groups of faces that lie close enough to one plane to
// be flattened with little stretch, with borders that run straight rather than fray.

#include <vector>

struct AtlasMesh;

// First, charts grow one at a time from the first face not yet taken, over the faces that meet
// along an edge, nearest face first; a face joins when its normal lies within maxNormalAngle
// (radians) of the chart's area-weighted mean normal, and a face without area joins any chart
// that reaches it. Then, twice, the charts are grown again all at once from the face nearest
// each one's centre, every face going to the chart that reaches it cheapest, the cost being the
// distance from the chart's centre, raised as the face's normal turns away from the chart's
// mean normal, and no chart taking a face outside its cone;
// charts far smaller than most are left out of the regrowth and their faces taken by their
// neighbours, and faces that no chart reaches are grown into charts as at first. Answers each
// face's chart number, from 0; chartCount receives the number of charts.
std::vector<int> SegmentCharts(const AtlasMesh& mesh, double maxNormalAngle, int& chartCount);
