#pragma once

#include <maya/MMatrix.h>
#include <maya/MVector.h>

class MQuaternion;

#define kEulerRotationEpsilon 1.0e-10

class MEulerRotation {
public:
  enum RotationOrder { kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX };

  MEulerRotation() = default;
  MEulerRotation(double xx, double yy, double zz, RotationOrder ord = kXYZ) : x(xx), y(yy), z(zz), order(ord) {}
  MEulerRotation(const MVector& v, RotationOrder ord = kXYZ) : x(v.x), y(v.y), z(v.z), order(ord) {}

  // Keep this rotation's order.
  MEulerRotation& operator=(const MQuaternion& q);
  MEulerRotation& operator=(const MMatrix& m);
  MEulerRotation& setValue(double xx, double yy, double zz, RotationOrder ord = kXYZ);

  // Angles in radians; the first axis of the order is applied first.
  MMatrix asMatrix() const;
  MQuaternion asQuaternion() const;
  MVector asVector() const { return {x, y, z}; }
  // The same rotation with its angles for another order.
  MEulerRotation reorder(RotationOrder ord) const { return decompose(asMatrix(), ord); }
  // The rotation that undoes this one: the angles negated, applied in the opposite order.
  MEulerRotation inverse() const;
  // The angles of a rotation matrix for the given order; the angle about the order's middle axis lies within
  // [-pi/2, pi/2]; at +-pi/2, where the other two axes line up, the first takes the whole turn and the last is 0.
  static MEulerRotation decompose(const MMatrix& matrix, RotationOrder ord);

  double operator[](unsigned int i) const { return i == 0 ? x : (i == 1 ? y : z); }
  bool operator==(const MEulerRotation& o) const { return x == o.x && y == o.y && z == o.z && order == o.order; }
  bool operator!=(const MEulerRotation& o) const { return !(*this == o); }
  bool isEquivalent(const MEulerRotation& other, double tolerance = kEulerRotationEpsilon) const;
  bool isZero(double tolerance = kEulerRotationEpsilon) const;

  static const MEulerRotation identity;

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  RotationOrder order = kXYZ;
};
