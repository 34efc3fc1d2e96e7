#pragma once
// Which polygon lies across each edge of each polygon.
//
// Across the edge from corner k to corner k+1 (the last corner wrapping to the first) lies the
// polygon, other than the polygon itself, that uses both end vertices and comes last in list
// order; none when no other polygon uses both, or when both ends are the same vertex. With ID
// links, a vertex that has a merge link counts as its link target, so polygons on both sides
// of a seam become neighbours.

#include <vector>

class VMPolygon;
class VMWorld;

// Drops the empty slots of the polygon list, then fills the neighbour array of every polygon
// (one entry per corner), sets every vertex's use count to the number of polygon corners that
// reference it and its index to its list position, and each polygon's index to its position.
//
// Each vertex has room for its use count + 2 polygons; with ID links a link target can be asked
// to hold more, and then "connectivity: bad: overflow!" is logged for each polygon that found no
// room, every neighbour entry is left null and the result is -1. A corner that is not a vertex
// of the world's list also answers -1. -301 when memory runs out, 0 otherwise.
int BuildConnectivity(VMWorld& world, bool useIdLinks);

// The same neighbours for a batch of triangles that stands for a world of its own (its order
// is the list order), without ID links: three entries per triangle, the batch position of the
// neighbour or -1. Sets the use count of every vertex the batch references to its number of
// corners in the batch; the vertices' state words are used as scratch. The batch stands for a
// world that holds all vertexListCount vertices, which the memory lines of the log count.
// -301 when memory runs out, 0 otherwise.
int BuildBatchConnectivity(const std::vector<VMPolygon*>& triangles, int vertexListCount, std::vector<int>& neighbours);
