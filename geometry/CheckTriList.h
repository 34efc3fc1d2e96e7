#pragma once
// The sanity check of a tri-list, run on every batch after stripping.
//
// The counts are tested first: -20101 when the corner count is not a multiple of 3, -20102
// above 30000 corners, -20103 below 3 corners; such a tri-list is left as it is. A list passes;
// with repair on it first drops its degenerate triangles (two equal corners), the later
// triangles moving up. A strip of more than one triangle must share, from each triangle to the
// next, the edge that its alternating order gives: with odd parity a triangle starts with the
// previous triangle's third and second corners, with even parity with its first and third; the
// parity starts at the strip kind's (1 odd, 2 even) and flips after each triangle. A strip that
// breaks answers -20100 and, with repair on, becomes a list without degenerate triangles.

class VMTriList;

constexpr int TriListBrokenStrip = -20100;
constexpr int TriListCornersNotTriples = -20101;
constexpr int TriListTooManyCorners = -20102;
constexpr int TriListTooFewCorners = -20103;

constexpr int MaxTriListCorners = 30000;

int CheckTriList(VMTriList& triList, bool repair);

// Drops the triangles with two equal corners, keeping the order of the rest.
void DropDegenerateTriangles(VMTriList& triList);
