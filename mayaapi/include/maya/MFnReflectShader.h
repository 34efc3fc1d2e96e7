#pragma once

#include <maya/MFnLambertShader.h>

class MFnReflectShader : public MFnLambertShader {
public:
  MFnReflectShader() = default;
  MFnReflectShader(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kReflect; }
  MColor specularColor(MStatus* status = nullptr) const { return ColorOf("specularColor", status); }
  MColor reflectedColor(MStatus* status = nullptr) const { return ColorOf("reflectedColor", status); }
  float reflectivity(MStatus* status = nullptr) const { return FloatOf("reflectivity", status); }
};
