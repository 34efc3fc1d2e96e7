#pragma once
// The weld of AdjustTriangles: vertices strictly closer than epsVert to an earlier unclaimed
// vertex move onto it.

#include "geometry/PositionRings.h"
#include "model/VMOwnedList.h"

struct VMVertex;

// For each vertex s in list order that no earlier seed has claimed, every other unclaimed
// vertex w with |w - s| < epsVert (squared distances compared in single precision, strictly)
// and within the box of half-width 3 x epsVert takes the position of s; it also takes the base
// UV of s when both coordinates lie within epsUV of those of s (inclusive), and the normal of s
// when every component differs by at most 0.002. Both are then claimed; a vertex that finds no
// partner stays unclaimed and can still be claimed by a later seed. Second UV, tangent and
// colour are left alone.
//
// The answer is that of querying the search tree built over the positions before the weld (as
// the pass is defined), found with a hash grid over those positions: only unclaimed, hence
// unmoved, vertices are ever compared. The vertices' state words are not touched.
//
// Answers the vertices grouped by exactly equal position as the weld leaves them (also when it
// welds nothing), which the duplicate folding that follows needs. Throws std::bad_alloc when
// memory runs out.
PositionRings WeldVertices(const VMOwnedList<VMVertex>& vertices, float epsVert, float epsUV);
