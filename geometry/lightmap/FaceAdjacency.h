#pragma once
// Which triangles of an indexed mesh meet along an edge. Corners are matched by position, not by
// index: harvesting splits a vertex wherever its base UV or normal changes, and such seams must
// not cut the surface apart.

#include <cstdint>
#include <span>
#include <vector>

// For each vertex (three floats each) the lowest vertex with exactly its position (float
// equality: -0 equals +0); a vertex with a NaN or infinite coordinate stands for itself alone.
std::vector<uint32_t> SharedPositions(std::span<const float> positions);

// Three entries per triangle: the triangle across the edge from corner k to corner k + 1 (from
// the third corner to the first), or -1 for an open edge. Two triangles meet where one runs an
// edge between two shared positions one way and the other runs it back; an edge that more than
// two triangles run is paired in triangle order and the rest stay open, as do edges whose ends
// share a position. sharedPositions comes from SharedPositions; indices holds three per
// triangle, each below the vertex count.
std::vector<int> BuildFaceAdjacency(std::span<const uint32_t> sharedPositions, std::span<const uint32_t> indices);
