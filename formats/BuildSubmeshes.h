#pragma once
// The draw batches of the static mesh file, rebuilt in the world's submesh list from its final
// geometry.
//
// First one submesh per tri-list (its material, group and first owner area), then one per batch
// of polygons: a polygon joins the first batch with its material, its group and the same owner
// areas, else it starts a new one. Polygons of material kind 80 are left out. A primitive's
// triangles (a polygon is fanned from its first corner) enter the render list when it is
// visible and the shadow list when it casts shadows, each shadow corner replaced by the vertex
// it was welded into. Every new submesh is also listed by the areas of its primitives.

class VMWorld;
struct VMSubmesh;
struct VMVertex;

// Polygons of this material kind are not drawn.
inline constexpr unsigned HiddenMaterialKind = 80;

// Sets every vertex's index to its list position (its final number), then rebuilds the
// submeshes with their vertex ranges and boxes, numbered with running first indices. Answers
// 0, or -1 when a primitive refers to a vertex that is not in the world's vertex list (the
// submesh list is then left empty).
int BuildSubmeshes(VMWorld& world);

// Submesh numbers and running first indices from the list order and the index counts.
void NumberSubmeshes(VMWorld& world);

// The smallest and largest final vertex numbers of each list (0 and -1 for an empty one).
void UpdateVertexRanges(VMSubmesh& submesh);

// The end of the vertex's chain of merge links: the vertex it was welded into.
const VMVertex* WeldTarget(const VMVertex* vertex);
