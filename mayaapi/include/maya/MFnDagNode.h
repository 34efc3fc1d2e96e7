#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MMatrix.h>

class MDagPathArray;

class MFnDagNode : public MFnDependencyNode {
public:
  enum { kNextPos = 0xff };

  MFnDagNode() = default;
  MFnDagNode(const MObject& object, MStatus* status = nullptr);
  MFnDagNode(const MDagPath& path, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kDagNode; }
  MStatus setObject(const MObject& object) override;
  // A path that ends in a transform reaches the shape below it when the function set needs a shape.
  virtual MStatus setObject(const MDagPath& path);

  MObject create(const MString& typeName, const MObject& parent = MObject::kNullObj, MStatus* status = nullptr);
  MObject create(const MString& typeName, const MString& name, const MObject& parent = MObject::kNullObj,
                 MStatus* status = nullptr);
  bool isIntermediateObject(MStatus* status = nullptr) const;
  MStatus setIntermediateObject(bool intermediate);
  unsigned int parentCount(MStatus* status = nullptr) const;
  MObject parent(unsigned int index, MStatus* status = nullptr) const;
  unsigned int childCount(MStatus* status = nullptr) const;
  MObject child(unsigned int index, MStatus* status = nullptr) const;
  MStatus addChild(MObject& child, unsigned int index = kNextPos, bool keepExistingParents = false);
  MStatus getPath(MDagPath& path) const;
  MStatus getAllPaths(MDagPathArray& paths) const;
  MDagPath dagPath(MStatus* status = nullptr) const;
  MString fullPathName(MStatus* status = nullptr) const;
  MString partialPathName(MStatus* status = nullptr) const;
  bool isInstanced(bool indirect = true, MStatus* status = nullptr) const;
  unsigned int instanceCount(bool total, MStatus* status = nullptr) const;
  MMatrix transformationMatrix(MStatus* status = nullptr) const;

protected:
  MDagPath m_path;
};
