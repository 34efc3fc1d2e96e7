#pragma once
// Moving, centring, scaling and turning a whole skinned model: its vertices, its skeleton and its
// bounding boxes. Sampled animation frames are not carried along.

class VMModel;
struct VMTransform;

// Subtracts offset from every vertex position, from the translation of every bone's global
// transform and of every root bone's local transform, and from the model's box and collision box.
void MoveModel(VMModel& model, const float offset[3]);

// Moves the model by -p (MoveModel), p found from the box of all vertex positions: method 1 its
// centre, 2 the mean vertex position, 3 its floor point (centre x, centre y, minimum z), 4 the
// translation of the root bone's global transform (VMSkeleton::GetRootBone). Method 0, a model
// without vertices and method 4 without a root bone leave the model where it is.
void CenterModel(VMModel& model, int method);

// Multiplies every vertex position and the translations of every bone's global and local
// transforms by factor.
void ScaleModel(VMModel& model, float factor);

// Vertex positions become transform applied to them as points, normals and tangents its rotation
// part applied to them; every bone's global transform and every root bone's local transform
// become transform * themselves; the model's box and collision box become the boxes around their
// eight transformed corners (an empty box stays empty).
void TransformModel(VMModel& model, const VMTransform& transform);
