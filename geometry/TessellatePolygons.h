#pragma once
// Triangulation of a whole world.

class VMWorld;

// Replaces every polygon of more than 3 corners by the triangles of SplitPolygon (corner limit
// 3): the triangles go to the end of the polygon list and into the source's vis areas, the
// source is destroyed; the order of the other polygons is kept. Answers 0, or -301 when memory
// runs out.
int TessellatePolygons(VMWorld& world);
