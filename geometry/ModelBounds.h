#pragma once
// The bounds written with a model: the model's box and visibility radius, and each bone's box in
// its own space.

class VMModel;
struct VMSkeleton;

// The model's box grows from empty over every vertex position; the visibility radius is the
// largest distance from the origin among the box's eight corners (0 for a model without
// vertices, whose box stays empty).
void ComputeModelBounds(VMModel& model);

// Each bone's box grows from minimum 1e9 and maximum -1e9 over the bone-space positions its
// attached vertices hold in the slot that names it; a bone without vertices gets a zero box.
// Every box transform becomes the identity.
void ComputeBoneBounds(VMSkeleton& skeleton);
