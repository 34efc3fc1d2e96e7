#pragma once

#include <maya/MStatus.h>

class MPoint;

class MFloatPoint {
public:
  MFloatPoint() = default;
  MFloatPoint(float xx, float yy, float zz = 0.0f, float ww = 1.0f) : x(xx), y(yy), z(zz), w(ww) {}
  MFloatPoint(const MPoint& p);

  MStatus get(float f[4]) const { f[0] = x; f[1] = y; f[2] = z; f[3] = w; return MS::kSuccess; }
  bool operator==(const MFloatPoint& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
  bool operator!=(const MFloatPoint& o) const { return !(*this == o); }

  float x = 0.0f;
  float y = 0.0f;
  float z = 0.0f;
  float w = 1.0f;
};
