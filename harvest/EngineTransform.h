#pragma once
// Maya matrices in the engine's axes: a Maya direction (x, y, z) is the engine's (x, -z, y).

#include "model/VMTransform.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>

// The same transform, acting on engine coordinates.
VMTransform ToEngineTransform(const MMatrix& mayaMatrix);

// The placement a node defines for an export: its world matrix in engine axes, orthonormalised,
// then inverted, so that applying it brings the node to the origin unrotated.
VMTransform PlacementFromNode(const MDagPath& path);
