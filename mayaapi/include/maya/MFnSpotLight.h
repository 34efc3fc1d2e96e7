#pragma once

#include <maya/MFnNonExtendedLight.h>

class MFnSpotLight : public MFnNonExtendedLight {
public:
  MFnSpotLight() = default;
  MFnSpotLight(const MObject& object, MStatus* status = nullptr);
  MFnSpotLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kSpotLight; }
  // Radians, as every angle the API returns.
  double coneAngle(MStatus* status = nullptr) const { return NumberOf("coneAngle", status); }
  MStatus setConeAngle(const double& cone_angle) { return SetNumber("coneAngle", cone_angle); }
  double penumbraAngle(MStatus* status = nullptr) const { return NumberOf("penumbraAngle", status); }
  MStatus setPenumbraAngle(const double& penumbra_angle) { return SetNumber("penumbraAngle", penumbra_angle); }
  double dropOff(MStatus* status = nullptr) const { return NumberOf("dropoff", status); }
  MStatus setDropOff(const double& drop_off) { return SetNumber("dropoff", drop_off); }
};
