#pragma once

#include <maya/MFnReflectShader.h>

class MFnPhongShader : public MFnReflectShader {
public:
  MFnPhongShader() = default;
  MFnPhongShader(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kPhong; }
  float cosPower(MStatus* status = nullptr) const { return FloatOf("cosinePower", status); }
};
