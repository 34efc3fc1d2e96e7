#pragma once

#include <maya/MMatrix.h>
#include <maya/MStatus.h>
#include <maya/MVector.h>

class MEulerRotation;

#define kQuaternionEpsilon 1.0e-10

// A rotation as x, y, z (the axis scaled by the sine of half the angle) and w (the cosine of half the angle). As for
// matrices, a * b rotates by a first, then by b.
class MQuaternion {
public:
  MQuaternion() = default;
  MQuaternion(double xx, double yy, double zz, double ww) : x(xx), y(yy), z(zz), w(ww) {}
  MQuaternion(const double q[4]) : x(q[0]), y(q[1]), z(q[2]), w(q[3]) {}
  // The smallest rotation that turns a onto b; with angleFactor that rotation's angle scaled.
  MQuaternion(const MVector& a, const MVector& b);
  MQuaternion(const MVector& a, const MVector& b, double angleFactor);
  MQuaternion(double angle, const MVector& axis);

  // The rotation part of a homogeneous rotation matrix, as a quaternion of unit length.
  MQuaternion& operator=(const MMatrix& matrix);
  MQuaternion& operator=(const MEulerRotation& rotation);
  MMatrix asMatrix() const;
  MEulerRotation asEulerRotation() const;

  MQuaternion& setAxisAngle(const MVector& axis, double theta);
  bool getAxisAngle(MVector& axis, double& theta) const;
  MQuaternion& setToXAxis(double theta) { return setAxisAngle(MVector::xAxis, theta); }
  MQuaternion& setToYAxis(double theta) { return setAxisAngle(MVector::yAxis, theta); }
  MQuaternion& setToZAxis(double theta) { return setAxisAngle(MVector::zAxis, theta); }

  MQuaternion normal() const;
  MQuaternion& normalizeIt();
  MQuaternion conjugate() const { return {-x, -y, -z, w}; }
  MQuaternion& conjugateIt() { return *this = conjugate(); }
  MQuaternion inverse() const;
  MQuaternion& invertIt() { return *this = inverse(); }
  MQuaternion& negateIt() { return *this = -*this; }
  MStatus get(double dest[4]) const;

  MQuaternion operator*(const MQuaternion& other) const;
  MQuaternion& operator*=(const MQuaternion& other) { return *this = *this * other; }
  MQuaternion operator+(const MQuaternion& o) const { return {x + o.x, y + o.y, z + o.z, w + o.w}; }
  MQuaternion operator-(const MQuaternion& o) const { return {x - o.x, y - o.y, z - o.z, w - o.w}; }
  MQuaternion operator-() const { return {-x, -y, -z, -w}; }
  double operator[](unsigned int i) const { return i == 0 ? x : (i == 1 ? y : (i == 2 ? z : w)); }
  double& operator[](unsigned int i) { return i == 0 ? x : (i == 1 ? y : (i == 2 ? z : w)); }
  bool operator==(const MQuaternion& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
  bool operator!=(const MQuaternion& o) const { return !(*this == o); }
  bool isEquivalent(const MQuaternion& other, double tolerance = kQuaternionEpsilon) const;
  friend MQuaternion operator*(double scale, const MQuaternion& q) { return {scale * q.x, scale * q.y, scale * q.z, scale * q.w}; }

  static const MQuaternion identity;

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double w = 1.0;
};
