#pragma once

#include <maya/MColor.h>
#include <maya/MFnDagNode.h>

class MFnLight : public MFnDagNode {
public:
  MFnLight() = default;
  MFnLight(const MObject& object, MStatus* status = nullptr);
  MFnLight(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kLight; }
  MColor color(MStatus* status = nullptr) const;
  MStatus setColor(const MColor& col);
  float intensity(MStatus* status = nullptr) const;
  MStatus setIntensity(const float& intens);
  bool useRayTraceShadows(MStatus* status = nullptr) const;
  MStatus setUseRayTraceShadows(const bool& useRayTraceShadows);
  MColor shadowColor(MStatus* status = nullptr) const;
  MStatus setShadowColor(const MColor& shadow_color);

protected:
  double NumberOf(const char* attrName, MStatus* status) const;
  MStatus SetNumber(const char* attrName, double value);
  MColor ColorOf(const char* attrName, MStatus* status) const;
  MStatus SetColorOf(const char* attrName, const MColor& value);
};
