#pragma once
// Double-precision vectors for the chart passes: charts are measured and flattened in double
// so that long thin triangles of a large level keep their shape.

#include <cmath>

struct Vec2 {
    double X = 0.0;
    double Y = 0.0;
};

inline Vec2 operator+(Vec2 a, Vec2 b) { return {a.X + b.X, a.Y + b.Y}; }
inline Vec2 operator-(Vec2 a, Vec2 b) { return {a.X - b.X, a.Y - b.Y}; }
inline Vec2 operator*(Vec2 a, double s) { return {a.X * s, a.Y * s}; }
inline double Dot(Vec2 a, Vec2 b) { return a.X * b.X + a.Y * b.Y; }
// Twice the signed area of the triangle (o, a, b): positive when counter-clockwise.
inline double Cross(Vec2 a, Vec2 b) { return a.X * b.Y - a.Y * b.X; }

struct Vec3 {
    double X = 0.0;
    double Y = 0.0;
    double Z = 0.0;
};

inline Vec3 operator+(Vec3 a, Vec3 b) { return {a.X + b.X, a.Y + b.Y, a.Z + b.Z}; }
inline Vec3 operator-(Vec3 a, Vec3 b) { return {a.X - b.X, a.Y - b.Y, a.Z - b.Z}; }
inline Vec3 operator*(Vec3 a, double s) { return {a.X * s, a.Y * s, a.Z * s}; }
inline double Dot(Vec3 a, Vec3 b) { return a.X * b.X + a.Y * b.Y + a.Z * b.Z; }
inline Vec3 Cross(Vec3 a, Vec3 b) { return {a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X}; }
inline double Length(Vec3 a) { return std::sqrt(Dot(a, a)); }
// The zero vector stays zero.
inline Vec3 Normalized(Vec3 a)
{
    const double length = Length(a);
    return length > 0.0 ? a * (1.0 / length) : Vec3{};
}
