#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <cstddef>

// Visits the scene's dependency nodes in creation order.
class MItDependencyNodes {
public:
  MItDependencyNodes(MFn::Type filter = MFn::kInvalid, MStatus* status = nullptr);

  MStatus reset(MFn::Type filter = MFn::kInvalid);
  MStatus next();
  bool isDone(MStatus* status = nullptr) const;
  MObject thisNode(MStatus* status = nullptr) const;
  MObject item(MStatus* status = nullptr) const { return thisNode(status); }

private:
  void SkipFiltered();

  MFn::Type m_filter;
  size_t m_index = 0;
};
