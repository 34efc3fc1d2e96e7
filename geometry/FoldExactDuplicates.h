#pragma once
// The duplicate-folding pass of AdjustTriangles.

#include "geometry/PositionRings.h"

class VMWorld;

// For each polygon corner v in polygon order whose merge link is null, every other vertex w of
// the world with a null merge link becomes a duplicate of v (w's merge link := v) when their
// positions are exactly equal, their tangents and colours are exactly equal, the four base and
// second UV coordinates each differ by at most epsUV and each normal component by at most
// 0.002 (all inclusive). Nothing is linked for a negative or NaN epsVert, whose search box is
// empty. Vertex index fields must hold list positions, and rings must group the world's vertices
// by their present positions (as the weld answers them). Answers the number of links made.
int FoldExactDuplicates(VMWorld& world, const PositionRings& rings, float epsVert, float epsUV);
