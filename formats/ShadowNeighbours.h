#pragma once
// The edge neighbours of the shadow mesh's triangles.
//
// For each triangle (A, B, C) and its edges A-B, B-C, C-A in turn, the neighbour is the first
// triangle (in triangle order, among those using the edge's first vertex) that holds the same
// edge reversed, else -1. The table is then made symmetric: an entry whose neighbour has no
// entry pointing back is cleared, pass after pass until a pass changes nothing; so an edge
// shared by three triangles links only the pair that chose each other.

#include <cstdint>
#include <vector>

// indices: three vertex numbers per triangle, each in [0, vertexCount); answers three entries
// per triangle. An index outside that range takes part in no edge.
std::vector<int32_t> ComputeShadowNeighbours(const std::vector<int32_t>& indices, int32_t vertexCount);
