#pragma once

#include <maya/MFnNonExtendedLight.h>

class MFnPointLight : public MFnNonExtendedLight {
public:
  MFnPointLight() = default;
  MFnPointLight(const MObject& object, MStatus* status = nullptr);
  MFnPointLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kPointLight; }
};
