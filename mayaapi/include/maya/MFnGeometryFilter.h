#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MObjectArray.h>

// A deformer. Its output connections are the shapes it deforms (for a joint cluster, the members of its set).
class MFnGeometryFilter : public MFnDependencyNode {
public:
  MFnGeometryFilter() = default;
  MFnGeometryFilter(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kGeometryFilt; }
  MObject deformerSet(MStatus* status = nullptr) const;
  unsigned int numOutputConnections(MStatus* status = nullptr) const;
  unsigned int indexForOutputConnection(unsigned int connectionIndex, MStatus* status = nullptr) const;
  MStatus getPathAtIndex(unsigned int index, MDagPath& path) const;
  MObject outputShapeAtIndex(unsigned int index, MStatus* status = nullptr) const;
  MStatus getInputGeometry(MObjectArray& objects) const;
  MStatus getOutputGeometry(MObjectArray& objects) const;
  unsigned int indexForOutputShape(const MObject& shape, MStatus* status = nullptr) const;
  float envelope(MStatus* status = nullptr) const;
};
