#pragma once
// Pruning the bones that move nothing: a bone without vertices, without children and without
// anchor points is dead, and so, once its children are pruned, may be its parent, up to a root.

#include "model/VMBone.h"

#include <memory>
#include <vector>

struct VMSkeleton;

// Visits the bones without parent from the last to the first in list order, each subtree's
// children from the last to the first before the bone itself, and takes every dead bone out of
// its parent's children and the skeleton's list. The pruned bones are appended to pruned in the
// order pruned, for the caller to name and then destroy. A pruned root bone clears the root.
void RemoveDeadBones(VMSkeleton& skeleton, std::vector<std::unique_ptr<VMBone>>& pruned);
