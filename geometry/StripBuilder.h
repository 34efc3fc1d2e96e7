#pragma once
// The strip builder of one batch of triangles (methods 1 to 3 of the stripper).
//
// Each step picks a start triangle among those not yet used and an edge to leave it by, and
// grows a strip from there. Method 2 starts at the free triangle with the fewest free
// neighbours (the first on ties) and takes its best edge; methods 1 and 3 take the best
// (triangle, edge) pair of all free triangles, triangles in batch order and edges 0, 1, 2, a
// later pair winning only with a strictly higher score.
//
// The score of a start edge is a look-ahead: 1 when no free neighbour lies across it; 2 when the
// neighbour N1 has no free neighbour across the edge that follows, in N1's corner order, the edge
// it shares with the start; otherwise the length of the walk that turns alternately to the edge
// before and the edge after the shared one until it meets no neighbour, a used triangle or one
// already on the walk.
//
// A start triangle without free neighbours, or whose best score is below minStripLength - 1,
// is a segment of one triangle (a list run). Otherwise its corners are rotated so that the strip
// leaves across the chosen edge, and the strip grows: each further triangle starts with the
// previous triangle's last two corners in the alternating order of an odd-start strip, and the
// strip leaves it across the edge before the shared one, then after, alternately, until no free
// neighbour lies there. Its segment has the strip's length and type 1, 3 or 5 for edge 0, 1, 2.
//
// Neighbours come from the connectivity of the batch; a strip and the look-ahead only cross an
// edge that the two triangles run in opposite directions, so that no triangle changes its
// winding in a strip.

#include "geometry/StripSegments.h"

#include <vector>

class VMPolygon;

// The batch's triangles must have three corners each. Answers 0, or -301 when memory runs out.
int BuildStrips(const std::vector<VMPolygon*>& batch, int method, int minStripLength, int vertexListCount,
                StripBatchOutput& output);
