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
  float intensity(MStatus* status = nullptr) const;

protected:
  double NumberOf(const char* attrName, MStatus* status) const;
};
