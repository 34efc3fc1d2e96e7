#pragma once
// A heightfield of the older model file: four corner vertices and a height scale.

#include "model/VMPrimitive.h"

class VMHeightfield : public VMPrimitive {
public:
    static constexpr int CornerVertexCount = 4;

    VMHeightfield()
        : VMPrimitive(VMPrimitiveKind::Heightfield)
    {
        Corners.assign(CornerVertexCount, nullptr);
    }
    ~VMHeightfield() { LeaveOwners(); }

    float HeightScale = 1.0f;
};
