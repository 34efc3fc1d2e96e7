#pragma once

#include <maya/MFnNonExtendedLight.h>

class MFnDirectionalLight : public MFnNonExtendedLight {
public:
  MFnDirectionalLight() = default;
  MFnDirectionalLight(const MObject& object, MStatus* status = nullptr);
  MFnDirectionalLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kDirectionalLight; }
};
