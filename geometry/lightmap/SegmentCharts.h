#pragma once
// Splits a mesh into charts: connected groups of faces that lie close enough to one plane to
// be flattened with little stretch, with borders that run straight rather than fray.

#include <vector>

struct AtlasMesh;

// Normals are first smoothed over each face and the faces across its edges that turn from it by
// less than maxNormalAngle. Then charts grow one
// at a time from the first face not yet taken, over the faces that meet along an edge, a step at
// a time; a face joins when its normal lies within maxNormalAngle (radians) of the chart's
// area-weighted mean normal, and a face without area joins any chart that reaches it. Then,
// twice, the charts are grown again all at once from the face nearest each one's centre, a step
// across an edge at a time, every face going to the chart that reaches it first and no chart
// taking a face outside the cone around its mean normal; flat charts keep their faces, and charts
// far smaller than most are not seeded again. Faces that no chart reaches join a chart they touch if they lie within its cone
// widened to twice the angle (but below a right angle), and faces that no chart takes are grown into charts as at first. Last, a face with two neighbours in another
// chart joins it if that chart's cone allows. Answers each face's chart number, from 0 in the
// order of the charts' first faces; chartCount receives the number of charts.
std::vector<int> SegmentCharts(const AtlasMesh& mesh, double maxNormalAngle, int& chartCount);
