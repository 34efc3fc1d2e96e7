#pragma once

#include <maya/MFnNonAmbientLight.h>

class MFnNonExtendedLight : public MFnNonAmbientLight {
public:
  MFnNonExtendedLight() = default;
  MFnNonExtendedLight(const MObject& object, MStatus* status = nullptr);
  MFnNonExtendedLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kNonExtendedLight; }
  float shadowRadius(MStatus* status = nullptr) const { return static_cast<float>(NumberOf("shadowRadius", status)); }
  MStatus setShadowRadius(const float& shadow_radius) { return SetNumber("shadowRadius", shadow_radius); }
  bool castSoftShadows(MStatus* status = nullptr) const { return NumberOf("castSoftShadows", status) != 0.0; }
  MStatus setCastSoftShadows(const bool& cast_soft_shadows) { return SetNumber("castSoftShadows", cast_soft_shadows); }
  bool useDepthMapShadows(MStatus* status = nullptr) const { return NumberOf("useDepthMapShadows", status) != 0.0; }
  MStatus setUseDepthMapShadows(const bool& use_depth_map) { return SetNumber("useDepthMapShadows", use_depth_map); }
};
