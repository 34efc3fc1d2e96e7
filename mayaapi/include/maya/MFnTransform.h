#pragma once

#include <maya/MEulerRotation.h>
#include <maya/MFnDagNode.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

class MFnTransform : public MFnDagNode {
public:
  MFnTransform() = default;
  MFnTransform(const MObject& object, MStatus* status = nullptr);
  MFnTransform(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kTransform; }
  MObject create(const MObject& parent = MObject::kNullObj, MStatus* status = nullptr);
  MVector getTranslation(MSpace::Space space, MStatus* status = nullptr) const;
  MVector translation(MSpace::Space space, MStatus* status = nullptr) const { return getTranslation(space, status); }
  MStatus setTranslation(const MVector& translation, MSpace::Space space);
  MStatus getRotation(MEulerRotation& rotation) const;
  MStatus getRotation(double rotation[3], MTransformationMatrix::RotationOrder& order) const;
  MStatus setRotation(const MEulerRotation& rotation);
  MTransformationMatrix::RotationOrder rotationOrder(MStatus* status = nullptr) const;
  MStatus getScale(double scale[3]) const;
  MStatus setScale(const double scale[3]);
};
