#pragma once

#include <maya/MFnNonExtendedLight.h>

class MFnAreaLight : public MFnNonExtendedLight {
public:
  MFnAreaLight() = default;
  MFnAreaLight(const MObject& object, MStatus* status = nullptr);
  MFnAreaLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kAreaLight; }
};
