#pragma once

#include <maya/MFnReflectShader.h>

class MFnPhongEShader : public MFnReflectShader {
public:
  MFnPhongEShader() = default;
  MFnPhongEShader(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kPhongExplorer; }
  float roughness(MStatus* status = nullptr) const { return FloatOf("roughness", status); }
  float highlightSize(MStatus* status = nullptr) const { return FloatOf("highlightSize", status); }
  MColor whiteness(MStatus* status = nullptr) const { return ColorOf("whiteness", status); }
};
