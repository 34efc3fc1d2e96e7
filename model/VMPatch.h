#pragma once
// A curved patch of the older model file: 16 control vertices, or 10 for the triangular kind.

#include "model/VMPrimitive.h"

class VMPatch : public VMPrimitive {
public:
    static constexpr int QuadControlCount = 16;
    static constexpr int TriangularControlCount = 10;

    explicit VMPatch(bool triangular = false)
        : VMPrimitive(VMPrimitiveKind::Patch)
    {
        Corners.assign(triangular ? TriangularControlCount : QuadControlCount, nullptr);
    }
    ~VMPatch() { LeaveOwners(); }

    bool IsTriangular() const { return CornerCount() == TriangularControlCount; }
};
