#pragma once

#include <maya/MFnNonAmbientLight.h>

class MFnNonExtendedLight : public MFnNonAmbientLight {
public:
  MFnNonExtendedLight() = default;
  MFnNonExtendedLight(const MObject& object, MStatus* status = nullptr);
  MFnNonExtendedLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kNonExtendedLight; }
};
