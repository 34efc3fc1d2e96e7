#pragma once

#include <maya/MStatus.h>

class MVector;
class MFloatMatrix;

class MFloatVector {
public:
  MFloatVector() = default;
  MFloatVector(float xx, float yy, float zz = 0.0f) : x(xx), y(yy), z(zz) {}
  MFloatVector(const MVector& v);

  float length() const;
  MFloatVector normal() const;
  MStatus normalize();
  MStatus get(float f[3]) const { f[0] = x; f[1] = y; f[2] = z; return MS::kSuccess; }

  float operator[](unsigned int i) const { return i == 0 ? x : (i == 1 ? y : z); }
  MFloatVector operator+(const MFloatVector& o) const { return {x + o.x, y + o.y, z + o.z}; }
  MFloatVector operator-(const MFloatVector& o) const { return {x - o.x, y - o.y, z - o.z}; }
  MFloatVector operator-() const { return {-x, -y, -z}; }
  MFloatVector operator*(float s) const { return {x * s, y * s, z * s}; }
  float operator*(const MFloatVector& o) const { return x * o.x + y * o.y + z * o.z; }
  MFloatVector operator^(const MFloatVector& o) const { return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x}; }
  bool operator==(const MFloatVector& o) const { return x == o.x && y == o.y && z == o.z; }
  bool operator!=(const MFloatVector& o) const { return !(*this == o); }

  float x = 0.0f;
  float y = 0.0f;
  float z = 0.0f;
};
