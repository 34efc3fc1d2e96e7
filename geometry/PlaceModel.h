#pragma once
// Moving, centring, scaling and turning a whole skinned model: its vertices, its skeleton, its
// bounding boxes and its sampled animations. A frame's pose is changed for the bones it holds
// (FrameBones.h); of those only the parentless ones have local transforms in model space.

class VMModel;
struct VMTransform;

// Subtracts offset from every vertex position, from the translation of every bone's global
// transform and of every root bone's local transform, from each animation frame's world
// translations, its root bones' local ones and its box, and from the model's box and collision
// box. Motion translations and vertex deltas are relative and stay.
void MoveModel(VMModel& model, const float offset[3]);

// Moves the model by -p (MoveModel), p found from the box of all vertex positions: method 1 its
// centre, 2 the mean vertex position, 3 its floor point (centre x, centre y, minimum z), 4 the
// translation of the root bone's global transform (VMSkeleton::GetRootBone). Method 0, a model
// without vertices and method 4 without a root bone leave the model where it is.
void CenterModel(VMModel& model, int method);

// Multiplies by factor every vertex position, the translations of every bone's global and local
// transforms, those of every animation frame's world and local transforms, its motion
// translation, and every vertex delta's position.
void ScaleModel(VMModel& model, float factor);

// Vertex positions become transform applied to them as points, normals and tangents its rotation
// part applied to them; every bone's global transform and every root bone's local transform
// become transform * themselves, in every animation frame too; a frame's box becomes the box
// around its eight transformed corners and, with the animation's motion-delta flag, its motion
// translation is transformed as a point; vertex deltas and their normals take the rotation part;
// the model's box and collision box become the boxes around their eight transformed corners (an
// empty box stays empty).
void TransformModel(VMModel& model, const VMTransform& transform);
