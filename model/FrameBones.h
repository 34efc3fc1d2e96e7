#pragma once
// The bones a sampled pose frame speaks for: the first bones of the skeleton list, as many as
// the frame holds, each reaching its slots through its number. Every pass that moves or turns
// frames walks them so.

#include "model/VMAnimFrame.h"
#include "model/VMSkeleton.h"

#include <algorithm>

template <class Visit>
void ForEachFrameBone(const VMSkeleton& skeleton, VMAnimFrame& frame, Visit visit)
{
    const int count = std::min(frame.BoneCount(), skeleton.Bones.Count());
    for (int i = 0; i < count; ++i) {
        VMBone* bone = skeleton.Bones[i];
        if (bone != nullptr && bone->Index >= 0 && bone->Index < frame.Capacity())
            visit(*bone, bone->Index);
    }
}
