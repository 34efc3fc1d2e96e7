#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>

#include <deque>
#include <set>

namespace standin {
struct Node;
}

// Walks connections from a node or a plug. The root comes first when it passes the filter; with pruning on the
// filter (the default) the walk does not continue through nodes that fail it, with pruning off it walks through
// them without returning them. Each node is visited once. A walk from a plug starts out through that plug's
// connections only; from then on, at either level, a node is left through all its connections in the walk's
// direction, and the plug a node was entered through is its thisPlug.
class MItDependencyGraph {
public:
  enum Direction { kDownstream, kUpstream };
  enum Traversal { kDepthFirst, kBreadthFirst };
  enum Level { kNodeLevel, kPlugLevel };

  MItDependencyGraph(MObject& rootNode, MFn::Type filter = MFn::kInvalid, Direction direction = kDownstream,
                     Traversal traversal = kDepthFirst, Level level = kNodeLevel, MStatus* status = nullptr);
  MItDependencyGraph(MPlug& rootPlug, MFn::Type filter = MFn::kInvalid, Direction direction = kDownstream,
                     Traversal traversal = kDepthFirst, Level level = kNodeLevel, MStatus* status = nullptr);

  MStatus reset();
  bool isDone(MStatus* status = nullptr) const;
  MStatus next();
  MStatus prune();
  MObject thisNode(MStatus* status = nullptr) const;
  MObject currentItem(MStatus* status = nullptr) const { return thisNode(status); }
  MPlug thisPlug(MStatus* status = nullptr) const;
  MPlug previousPlug(MStatus* status = nullptr) const;
  MObject rootNode(MStatus* status = nullptr) const;
  MPlug rootPlug(MStatus* status = nullptr) const;
  void enablePruningOnFilter();
  void disablePruningOnFilter();
  bool isPrunedOnFilter(MStatus* status = nullptr) const;
  MStatus setCurrentFilter(MFn::Type filter);
  MStatus resetFilter();
  MFn::Type currentFilter(MStatus* status = nullptr) const;
  Level currentLevel(MStatus* status = nullptr) const;
  bool atNodeLevel(MStatus* status = nullptr) const { return currentLevel(status) == kNodeLevel; }

private:
  struct Item {
    standin::Node* node = nullptr;
    MPlug plug;
    MPlug previous;
  };

  void Expand(const Item& item);
  bool Matches(const standin::Node* node) const;
  void Advance();

  MObject m_rootNode;
  MPlug m_rootPlug;
  MFn::Type m_filter;
  Direction m_direction;
  Traversal m_traversal;
  Level m_level;
  bool m_pruneOnFilter = true;
  bool m_pruned = false;
  std::deque<Item> m_pending;
  std::set<standin::Node*> m_visited;
  Item m_current;
  bool m_done = true;
};
