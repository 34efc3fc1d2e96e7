#pragma once

#include <maya/MStatus.h>
#include <maya/MVector.h>

class MMatrix;
class MFloatPoint;

class MPoint {
public:
  MPoint() = default;
  MPoint(double xx, double yy, double zz = 0.0, double ww = 1.0) : x(xx), y(yy), z(zz), w(ww) {}
  MPoint(const MVector& v) : x(v.x), y(v.y), z(v.z) {}
  MPoint(const MFloatPoint& p);

  double distanceTo(const MPoint& other) const;
  MPoint& cartesianize();
  bool isEquivalent(const MPoint& other, double tolerance = 1.0e-10) const;
  MStatus get(double d[4]) const { d[0] = x; d[1] = y; d[2] = z; d[3] = w; return MS::kSuccess; }

  double operator[](unsigned int i) const { return i == 0 ? x : (i == 1 ? y : (i == 2 ? z : w)); }
  MVector operator-(const MPoint& o) const { return {x - o.x, y - o.y, z - o.z}; }
  MPoint operator+(const MVector& v) const { return {x + v.x, y + v.y, z + v.z, w}; }
  MPoint operator-(const MVector& v) const { return {x - v.x, y - v.y, z - v.z, w}; }
  MPoint operator*(double s) const { return {x * s, y * s, z * s, w}; }
  MPoint& operator+=(const MVector& v) { x += v.x; y += v.y; z += v.z; return *this; }
  bool operator==(const MPoint& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
  bool operator!=(const MPoint& o) const { return !(*this == o); }
  friend MPoint operator*(const MPoint& p, const MMatrix& m);

  static const MPoint origin;

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double w = 1.0;
};
