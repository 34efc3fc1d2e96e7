#include "geometry/LocalBoneTransforms.h"

#include "model/VMSkeleton.h"

void FindRootBone(VMSkeleton& skeleton, std::string_view rootName)
{
    skeleton.Root = nullptr;
    for (VMBone* bone : skeleton.Bones) {
        if (bone != nullptr && bone->Name == rootName) {
            skeleton.Root = bone;
            return;
        }
    }
}

void ComputeLocalTransforms(VMSkeleton& skeleton)
{
    for (VMBone* bone : skeleton.Bones) {
        if (bone == nullptr)
            continue;
        VMTransform parentInverse;
        if (bone->Parent != nullptr && Invert(bone->Parent->GlobalTransform, parentInverse))
            bone->LocalTransform = parentInverse * bone->GlobalTransform;
        else
            bone->LocalTransform = bone->GlobalTransform;
    }
}
