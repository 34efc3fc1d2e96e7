#pragma once
// ID vertices: vertices that share a position are linked to the first of them, so that the
// writers can tell the engine which corners are one point of the surface.

#include "geometry/PositionRings.h"

class VMWorld;

// Rebuilds every vertex's merge link: a vertex whose position equals exactly (float equality,
// so never for NaN) that of a lower-indexed vertex in the box of half-width radius is linked to
// the lowest-indexed such vertex that is no patch control vertex or heightfield corner; that
// first vertex keeps a null link. Index fields are set to list positions; state words end at
// 0, or 2 for patch control vertices and 3 for heightfield corners. A negative or NaN radius
// links nothing. Answers the number of links made (0 without vertices), or -301 when memory
// runs out.
int FixID(VMWorld& world, float radius);

// The same links from groups already at hand: rings must group the world's vertices by their
// present positions, in any order within a ring, as AdjustTriangles keeps them from its weld.
int FixID(VMWorld& world, float radius, const PositionRings& rings);
