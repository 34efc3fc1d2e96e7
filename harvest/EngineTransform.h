#pragma once
// Maya matrices in the engine's axes: a Maya direction (x, y, z) is the engine's (x, -z, y).

#include "model/VMTransform.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>

// The same transform, acting on engine coordinates.
VMTransform ToEngineTransform(const MMatrix& mayaMatrix);

// A node's frame with its own axes kept: column r is Maya row r (its local x, y, z axis, then
// its position) in engine coordinates. Unlike ToEngineTransform this is no change of basis, so
// a joint's local x stays the bone's local x.
VMTransform FrameInEngineAxes(const MMatrix& mayaMatrix);

// Makes the three axis columns orthonormal in column order (Gram-Schmidt): each is normalised
// unless shorter than 1.1920929e-7, then freed of its parts along the earlier ones. The
// translation is left alone.
void OrthonormaliseAxes(VMTransform& transform);

// The placement a node defines for an export: its world matrix in engine axes, orthonormalised,
// then inverted, so that applying it brings the node to the origin unrotated.
VMTransform PlacementFromNode(const MDagPath& path);
