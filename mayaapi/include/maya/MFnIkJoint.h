#pragma once

#include <maya/MEulerRotation.h>
#include <maya/MFnTransform.h>

class MFnIkJoint : public MFnTransform {
public:
  MFnIkJoint() = default;
  MFnIkJoint(const MObject& object, MStatus* status = nullptr);
  MFnIkJoint(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kJoint; }
  MObject create(const MObject& parent = MObject::kNullObj, MStatus* status = nullptr);
  MStatus getOrientation(MEulerRotation& orientation) const;
  MStatus setOrientation(const MEulerRotation& orientation);
};
