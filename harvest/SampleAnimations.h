#pragma once
// The animation phase of a model export ("Animation()"): every entry of the animation table is
// sampled from Maya's time line into the model, a bone animation as the skeleton's pose per
// frame, a muscle animation or morph target as vertex deltas per frame. Maya's current time is
// left on the last frame sampled.

class VAnimationTable;
struct HarvestState;
class VMModel;

// Gathers the key times first unless this export has already; then, per entry in table order and
// with the time base read afresh: type 3 a bone animation, types 2 and 5 a vertex animation, any
// other type "Unknown animation type". An entry that yields no frame time (its own range is
// invalid) raises "Animation without frames", one that asks for more than 8191 "Too many
// animation frames"; a bone animation without bones raises "No bones found in animation". Those
// entries are not made, and the phase goes on with the next.
void SampleAnimations(HarvestState& state, VMModel& model, VAnimationTable& animations);
