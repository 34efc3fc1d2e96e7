#pragma once
// A batch of triangles: the corners (in the primitive base) read in threes. A strip is stored
// as its expanded triangles, so the writer can emit it as a list or as a strip.

#include "model/VMPrimitive.h"

#include <cstdint>

enum class VMTriListKind : uint32_t {
    List = 0,
    StripOddStart = 1,
    StripEvenStart = 2,
};

class VMTriList : public VMPrimitive {
public:
    VMTriList() : VMPrimitive(VMPrimitiveKind::TriList) {}
    ~VMTriList() { LeaveOwners(); }

    VMTriListKind ListKind = VMTriListKind::List;
    // The group attribute of the first triangle, given back when the batch is cut up again.
    uint32_t Group = NoGroup;

    int TriangleCount() const { return CornerCount() / 3; }
    bool IsStrip() const { return ListKind != VMTriListKind::List; }
};
