#pragma once
// The skeleton's root and each bone's transform relative to its parent, computed once the
// bones and their global transforms are harvested.

#include <string_view>

struct VMSkeleton;

// The root becomes the first bone, in list order, whose name equals rootName byte for byte;
// null when none does (VMSkeleton::GetRootBone then falls back to the first bone).
void FindRootBone(VMSkeleton& skeleton, std::string_view rootName);

// Every bone's local transform: inverse(parent's global) * global, so that the parent's global
// transform applied after the local one gives the bone's global transform; a bone without parent
// (or whose parent's transform cannot be inverted) takes its global transform.
void ComputeLocalTransforms(VMSkeleton& skeleton);
