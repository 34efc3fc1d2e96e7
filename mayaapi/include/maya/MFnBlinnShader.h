#pragma once

#include <maya/MFnReflectShader.h>

class MFnBlinnShader : public MFnReflectShader {
public:
  MFnBlinnShader() = default;
  MFnBlinnShader(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kBlinn; }
  float eccentricity(MStatus* status = nullptr) const { return FloatOf("eccentricity", status); }
  float specularRollOff(MStatus* status = nullptr) const { return FloatOf("specularRollOff", status); }
};
