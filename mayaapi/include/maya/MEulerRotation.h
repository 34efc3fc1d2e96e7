#pragma once

#include <maya/MMatrix.h>
#include <maya/MVector.h>

class MEulerRotation {
public:
  enum RotationOrder { kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX };

  MEulerRotation() = default;
  MEulerRotation(double xx, double yy, double zz, RotationOrder ord = kXYZ) : x(xx), y(yy), z(zz), order(ord) {}
  MEulerRotation(const MVector& v, RotationOrder ord = kXYZ) : x(v.x), y(v.y), z(v.z), order(ord) {}

  // Angles in radians; the first axis of the order is applied first.
  MMatrix asMatrix() const;
  MVector asVector() const { return {x, y, z}; }
  bool operator==(const MEulerRotation& o) const { return x == o.x && y == o.y && z == o.z && order == o.order; }

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  RotationOrder order = kXYZ;
};
