#pragma once
// The bones of a model, in skeleton order.

#include "model/VMBone.h"
#include "model/VMOwnedList.h"

#include <cstdint>

struct VMSkeleton {
    VMOwnedList<VMBone> Bones;
    // Null until found.
    VMBone* Root = nullptr;
    // The number written with the skeleton; the animation writer sets it to 0.
    int32_t Number = 0;

    // Numbers the bones by their list position.
    void Enumerate();

    // The root, or the first bone when none was found; null for an empty skeleton.
    VMBone* GetRootBone() const { return Root != nullptr ? Root : Bones.Get(0); }
};
