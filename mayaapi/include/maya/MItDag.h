#pragma once

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

#include <deque>

class MItDag {
public:
  enum TraversalType { kInvalidType, kDepthFirst, kBreadthFirst };

  // Visits every path (an instanced node once per instance), starting with the world.
  MItDag(TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid, MStatus* status = nullptr);

  MStatus reset();
  MStatus reset(const MDagPath& root, TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid);
  MStatus next();
  bool isDone(MStatus* status = nullptr) const;
  MStatus prune();
  MStatus getPath(MDagPath& path) const;
  MObject currentItem(MStatus* status = nullptr) const;
  MObject item(MStatus* status = nullptr) const { return currentItem(status); }
  unsigned int depth(MStatus* status = nullptr) const;
  MString fullPathName(MStatus* status = nullptr) const;
  MString partialPathName(MStatus* status = nullptr) const;
  TraversalType getType(MStatus* status = nullptr) const;

private:
  void Advance();
  bool Matches(const MDagPath& path) const;

  TraversalType m_type;
  MFn::Type m_filter;
  MDagPath m_root;
  std::deque<MDagPath> m_pending;
  MDagPath m_current;
  bool m_done = true;
  bool m_pruned = false;
};
