#pragma once

#include <maya/MStatus.h>

class MColor {
public:
  enum MColorType { kRGB, kHSV, kCMY, kCMYK };

  MColor() = default;
  MColor(float rr, float gg, float bb = 0.0f, float aa = 1.0f) : r(rr), g(gg), b(bb), a(aa) {}

  MStatus get(float rgb[3]) const { rgb[0] = r; rgb[1] = g; rgb[2] = b; return MS::kSuccess; }
  float operator[](unsigned int i) const { return i == 0 ? r : (i == 1 ? g : (i == 2 ? b : a)); }
  bool operator==(const MColor& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
  bool operator!=(const MColor& o) const { return !(*this == o); }

  float r = 0.0f;
  float g = 0.0f;
  float b = 0.0f;
  float a = 1.0f;
};
