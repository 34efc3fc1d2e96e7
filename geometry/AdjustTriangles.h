#pragma once
// Turns harvested static geometry (one vertex per corner, with seams, near-duplicates and
// slivers) into a clean indexed mesh.

class VMWorld;

// In this order: tri-lists back to triangles; default material for primitives without one;
// with optimizeMesh off only the material links of the polygon corners are set and nothing
// else changes. Otherwise: vertices strictly closer than epsVert are welded (see WeldVertices);
// degenerate polygons are removed (see RemoveDegeneratePolygons); vertices equal in position,
// tangent and colour and within epsUV in their UVs and 0.002 in their normals are folded into
// one record (see FoldExactDuplicates) and the corners repointed; patch control vertices and
// heightfield corners are shared with an already used vertex within epsVert; unreferenced
// vertices are destroyed (the list compacted once, order kept); ID links are rebuilt
// (FixID with radius epsVert); polygons of more than 32 corners are split into triangles
// appended at the end of the list; the world is enumerated.
//
// Afterwards every vertex is referenced by a polygon, patch or heightfield and carries its
// primitive's material as material link, every polygon has 3 to 32 corners, at least 3 of
// them distinct. Answers 0; -1 when the world has primitives but no vertices, or no usable
// first material; -301 when memory runs out. On failure the world is left as far as it got.
int AdjustTriangles(VMWorld& world, float epsVert, float epsUV, bool optimizeMesh);
