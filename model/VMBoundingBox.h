#pragma once
// An axis-aligned box that starts inverted (minimum 1e8, maximum -1e8 per axis) so that the
// first point grown into it becomes both corners.

#include <algorithm>

struct VMBoundingBox {
    static constexpr float InitialExtent = 1e8f;

    float Min[3] = {InitialExtent, InitialExtent, InitialExtent};
    float Max[3] = {-InitialExtent, -InitialExtent, -InitialExtent};

    void Reset() { *this = VMBoundingBox(); }

    void Grow(const float point[3])
    {
        for (int axis = 0; axis < 3; ++axis) {
            Min[axis] = std::min(Min[axis], point[axis]);
            Max[axis] = std::max(Max[axis], point[axis]);
        }
    }

    bool IsEmpty() const { return Min[0] > Max[0] || Min[1] > Max[1] || Min[2] > Max[2]; }
};
