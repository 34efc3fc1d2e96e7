#include "model/VMSkeleton.h"

void VMSkeleton::Enumerate()
{
    int index = 0;
    for (VMBone* bone : Bones) {
        if (bone != nullptr) {
            bone->Index = index;
            bone->ListPosition = static_cast<uint32_t>(index);
        }
        ++index;
    }
}
