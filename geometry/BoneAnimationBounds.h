#pragma once
// The boxes the engine culls a playing bone animation with ("Calculating bone animation
// boundaries..."): every sampled frame skins the model with its pose.

class VMModel;

// For every bone animation and every frame: each vertex is posed as the weighted sum of its
// slots' bone-space positions moved by the frame's world transforms of their bones (a bone the
// frame has no slot for stays at its global transform; a vertex without influences stays where
// it is), the frame's box grows from empty over the posed positions, and the animation's box is
// the union of its frames' boxes. Each animation is then marked as having boundaries.
void ComputeBoneAnimationBounds(VMModel& model);
