#pragma once

#include <maya/MColor.h>
#include <maya/MFnDependencyNode.h>

class MFnLambertShader : public MFnDependencyNode {
public:
  MFnLambertShader() = default;
  MFnLambertShader(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kLambert; }
  MColor color(MStatus* status = nullptr) const;
  MColor transparency(MStatus* status = nullptr) const;
  MColor ambientColor(MStatus* status = nullptr) const;
  MColor incandescence(MStatus* status = nullptr) const;
  float diffuseCoeff(MStatus* status = nullptr) const;
  float translucenceCoeff(MStatus* status = nullptr) const;

protected:
  MColor ColorOf(const char* attrName, MStatus* status) const;
  float FloatOf(const char* attrName, MStatus* status) const;
};
