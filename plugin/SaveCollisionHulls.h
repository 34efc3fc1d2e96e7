#pragma once
// The "Convex hull" collision mesh: the collision file of SaveCollisionMesh with every collision
// object (the primitives of one Maya node) replaced by its convex hull. An object without volume
// keeps its triangles and is named in the issue "Collision object without volume".

#include "formats/SaveParams.h"

#include <string>

class MeshNodeTable;
class VMWorld;

// nodes names the objects by their source node numbers. Answers as SaveCollisionMesh does;
// running out of memory raises "Could not mallocate" and answers false.
bool SaveCollisionHulls(const VMWorld& world, const MeshNodeTable& nodes, const std::string& path,
                        const VSaveParams& params);
