#pragma once

#include <maya/MFnLight.h>

class MFnAmbientLight : public MFnLight {
public:
  MFnAmbientLight() = default;
  MFnAmbientLight(const MObject& object, MStatus* status = nullptr);
  MFnAmbientLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kAmbientLight; }
  float ambientShade(MStatus* status = nullptr) const { return findPlug("ambientShade").asFloat(status); }
};
