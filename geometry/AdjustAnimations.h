#pragma once
// Root-motion extraction ("Adjusting animations..."): in every bone animation whose motion-delta
// flag is set, the root bone's travel is taken out of the sampled poses into each frame's motion
// translation and motion rotation, so that the engine can move the character itself.

class VMModel;

// Adjusts the bone animations in list order; the root bone is VMSkeleton::GetRootBone and R its
// global transform.
//
// Per animation: with a compensate-rotation value, every frame's root local transform and the
// world transforms of its bones are turned by R's rotation times the inverse of frame 0's root
// rotation, and the reference point p is R's translation; without, p is frame 0's root local
// translation. On each axis whose move flag is set the frame's motion translation becomes the
// root's local offset from p, and the root is put back: to 0 (newRotationDeltas) or to p, the
// world transforms and the other parentless bones following; an axis without the flag only
// takes away frame 0's offset from p. With a rotation axis (z before y before x) the root's turn
// about it since frame 0 is summed in double precision, taken out of every frame and recorded in
// degrees with the opposite sign.
//
// 0 for a model without bone animations; -1 (nothing changed) when the first bone animation has
// no frame or there is no root bone, and -1 when some animation has no frame or its frames have
// no slot for the root; the others are still adjusted.
int AdjustAnimations(VMModel& model, bool newRotationDeltas);
