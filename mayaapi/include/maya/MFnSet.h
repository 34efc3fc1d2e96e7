#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MSelectionList.h>

class MFnSet : public MFnDependencyNode {
public:
  enum Restriction { kNone, kVerticesOnly, kEdgesOnly, kFacetsOnly, kEditPointsOnly, kRenderableOnly };

  MFnSet() = default;
  MFnSet(const MObject& object, MStatus* status = nullptr);

  MFn::Type type() const override { return MFn::kSet; }
  // Members in the order they were added: one DAG path per member instance, with its component when partial.
  MStatus getMembers(MSelectionList& members, bool flatten) const;
  bool isMember(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = nullptr) const;
  Restriction restriction(MStatus* status = nullptr) const;
};
