#pragma once
// The double-precision point and box of the visibility builder.

#include <algorithm>
#include <cmath>

struct VBVector {
    double X = 0.0;
    double Y = 0.0;
    double Z = 0.0;

    double operator[](int axis) const { return axis == 0 ? X : axis == 1 ? Y : Z; }
    double& operator[](int axis) { return axis == 0 ? X : axis == 1 ? Y : Z; }

    friend VBVector operator+(const VBVector& a, const VBVector& b) { return {a.X + b.X, a.Y + b.Y, a.Z + b.Z}; }
    friend VBVector operator-(const VBVector& a, const VBVector& b) { return {a.X - b.X, a.Y - b.Y, a.Z - b.Z}; }
    friend VBVector operator*(const VBVector& a, double s) { return {a.X * s, a.Y * s, a.Z * s}; }
};

inline double Dot(const VBVector& a, const VBVector& b) { return a.X * b.X + a.Y * b.Y + a.Z * b.Z; }

inline VBVector Cross(const VBVector& a, const VBVector& b)
{
    return {a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X};
}

inline double Length(const VBVector& a) { return std::sqrt(Dot(a, a)); }

// Starts inverted (minimum 1e8, maximum -1e8 per axis), so the first point grown into it
// becomes both corners.
struct VBBox {
    VBVector Min {1e8, 1e8, 1e8};
    VBVector Max {-1e8, -1e8, -1e8};

    void Reset() { *this = VBBox(); }
    bool IsEmpty() const { return Min.X > Max.X || Min.Y > Max.Y || Min.Z > Max.Z; }

    void Grow(const VBVector& point)
    {
        for (int axis = 0; axis < 3; ++axis) {
            Min[axis] = std::min(Min[axis], point[axis]);
            Max[axis] = std::max(Max[axis], point[axis]);
        }
    }
    void Grow(const VBBox& box)
    {
        if (box.IsEmpty())
            return;
        Grow(box.Min);
        Grow(box.Max);
    }
    // Moves every face outwards by margin.
    void Enlarge(double margin)
    {
        for (int axis = 0; axis < 3; ++axis) {
            Min[axis] -= margin;
            Max[axis] += margin;
        }
    }

    // Closed on every face.
    bool Contains(const VBVector& point) const
    {
        for (int axis = 0; axis < 3; ++axis)
            if (point[axis] < Min[axis] || point[axis] > Max[axis])
                return false;
        return true;
    }
    bool Overlaps(const VBBox& other) const
    {
        for (int axis = 0; axis < 3; ++axis)
            if (other.Max[axis] < Min[axis] || other.Min[axis] > Max[axis])
                return false;
        return true;
    }
    VBVector Centre() const { return (Min + Max) * 0.5; }
};
