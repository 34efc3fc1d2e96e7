#pragma once

#include <maya/MStatus.h>
#include <maya/MTransformationMatrix.h>

class MMatrix;
class MEulerRotation;
class MFloatVector;
class MPoint;

class MVector {
public:
  enum Axis { kXaxis, kYaxis, kZaxis, kWaxis };

  MVector() = default;
  MVector(double xx, double yy, double zz = 0.0) : x(xx), y(yy), z(zz) {}
  MVector(const double d[3]) : x(d[0]), y(d[1]), z(d[2]) {}
  MVector(const MFloatVector& v);
  MVector(const MPoint& p);

  double length() const;
  MVector normal() const;
  MStatus normalize();
  double angle(const MVector& other) const;
  MVector transformAsNormal(const MMatrix& matrix) const;
  MVector rotateBy(const MEulerRotation& rotation) const;
  MVector rotateBy(const double rotXYZ[3], MTransformationMatrix::RotationOrder order) const;
  bool isEquivalent(const MVector& other, double tolerance = 1.0e-10) const;
  MStatus get(double d[3]) const { d[0] = x; d[1] = y; d[2] = z; return MS::kSuccess; }

  double operator[](unsigned int i) const { return i == 0 ? x : (i == 1 ? y : z); }
  double& operator[](unsigned int i) { return i == 0 ? x : (i == 1 ? y : z); }
  MVector operator+(const MVector& o) const { return {x + o.x, y + o.y, z + o.z}; }
  MVector operator-(const MVector& o) const { return {x - o.x, y - o.y, z - o.z}; }
  MVector operator-() const { return {-x, -y, -z}; }
  MVector operator*(double s) const { return {x * s, y * s, z * s}; }
  MVector operator/(double s) const { return {x / s, y / s, z / s}; }
  double operator*(const MVector& o) const { return x * o.x + y * o.y + z * o.z; }
  MVector operator^(const MVector& o) const { return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x}; }
  MVector& operator+=(const MVector& o) { x += o.x; y += o.y; z += o.z; return *this; }
  MVector& operator-=(const MVector& o) { x -= o.x; y -= o.y; z -= o.z; return *this; }
  MVector& operator*=(double s) { x *= s; y *= s; z *= s; return *this; }
  bool operator==(const MVector& o) const { return x == o.x && y == o.y && z == o.z; }
  bool operator!=(const MVector& o) const { return !(*this == o); }
  friend MVector operator*(double s, const MVector& v) { return v * s; }
  friend MVector operator*(const MVector& v, const MMatrix& m);

  static const MVector zero;
  static const MVector one;
  static const MVector xAxis;
  static const MVector yAxis;
  static const MVector zAxis;
  static const MVector xNegAxis;
  static const MVector yNegAxis;
  static const MVector zNegAxis;

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};
