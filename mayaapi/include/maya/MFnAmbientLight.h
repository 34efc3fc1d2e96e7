#pragma once

#include <maya/MFnLight.h>

class MFnAmbientLight : public MFnLight {
public:
  MFnAmbientLight() = default;
  MFnAmbientLight(const MObject& object, MStatus* status = nullptr);
  MFnAmbientLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kAmbientLight; }
  float ambientShade(MStatus* status = nullptr) const { return static_cast<float>(NumberOf("ambientShade", status)); }
  MStatus setAmbientShade(const float& ambient_shade) { return SetNumber("ambientShade", ambient_shade); }
};
