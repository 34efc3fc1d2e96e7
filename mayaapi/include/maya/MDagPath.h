#pragma once

#include <maya/MFn.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <vector>

class MDagPathArray;

// A path from the world down to one DAG node; an instanced node has one path per instance.
class MDagPath {
public:
  MDagPath() = default;

  bool isValid(MStatus* status = nullptr) const;
  unsigned int length(MStatus* status = nullptr) const;
  unsigned int childCount(MStatus* status = nullptr) const;
  MObject child(unsigned int index, MStatus* status = nullptr) const;
  MStatus push(const MObject& child);
  MStatus pop(unsigned int count = 1);
  MObject node(MStatus* status = nullptr) const;
  MObject transform(MStatus* status = nullptr) const;
  MFn::Type apiType(MStatus* status = nullptr) const;
  bool hasFn(MFn::Type type, MStatus* status = nullptr) const;
  MString fullPathName(MStatus* status = nullptr) const;
  MString partialPathName(MStatus* status = nullptr) const;
  MStatus extendToShape();
  MStatus extendToShapeDirectlyBelow(unsigned int index);
  unsigned int numberOfShapesDirectlyBelow(unsigned int& count) const;
  bool isInstanced(MStatus* status = nullptr) const;
  unsigned int instanceNumber(MStatus* status = nullptr) const;
  MMatrix inclusiveMatrix(MStatus* status = nullptr) const;
  MMatrix inclusiveMatrixInverse(MStatus* status = nullptr) const;
  MMatrix exclusiveMatrix(MStatus* status = nullptr) const;
  MMatrix exclusiveMatrixInverse(MStatus* status = nullptr) const;
  bool operator==(const MDagPath& other) const { return m_valid == other.m_valid && m_nodes == other.m_nodes; }
  bool operator!=(const MDagPath& other) const { return !(*this == other); }

  static MStatus getAPathTo(const MObject& node, MDagPath& path);
  static MStatus getAllPathsTo(const MObject& node, MDagPathArray& paths);

  static MDagPath standinWorld();
  static MDagPath standinFromNodes(std::vector<standin::Node*> nodes);
  const std::vector<standin::Node*>& standinNodes() const { return m_nodes; }
  standin::Node* standinLast() const;

private:
  bool m_valid = false;
  std::vector<standin::Node*> m_nodes;
};
