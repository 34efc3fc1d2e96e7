#pragma once

#include <maya/MFnLight.h>

class MFnNonAmbientLight : public MFnLight {
public:
  MFnNonAmbientLight() = default;
  MFnNonAmbientLight(const MObject& object, MStatus* status = nullptr);
  MFnNonAmbientLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kNonAmbientLight; }
  // 0 no decay, 1 linear, 2 quadratic, 3 cubic.
  short decayRate(MStatus* status = nullptr) const { return findPlug("decayRate").asShort(status); }
  MStatus setDecayRate(const short& decay_rate) { return SetNumber("decayRate", decay_rate); }
};
