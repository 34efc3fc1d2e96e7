#pragma once
// A joint's frame for the skeleton: its local axes and its position in world space, in engine
// axes, orthonormal and right-handed.

#include "model/VMTransform.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>

// The world matrix the joint was bound with: the inverse of the "bindPreMatrix" entry of the
// first skin cluster that the joint's "worldMatrix" feeds. Reading it there rather than from the
// joint keeps the current pose out of the skeleton. A joint that binds no skin gives its
// current world matrix.
MMatrix BindMatrix(const MDagPath& joint);

// The joint's bind matrix (useBindMatrix) or current world matrix, with each axis column
// normalised and made orthogonal to the earlier ones, and the third negated when the frame is
// left-handed (a joint mirrored by a negative scale).
VMTransform BoneMatrix(const MDagPath& joint, bool useBindMatrix);
