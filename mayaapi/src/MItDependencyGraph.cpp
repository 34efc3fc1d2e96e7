#include <maya/MItDependencyGraph.h>

#include "SceneGraph.h"

#include <algorithm>

namespace {

void SetStatus(MStatus* status, MS::MStatusCode code)
{
  if (status)
    *status = code;
}

// True when key names the root plug or something inside it (an element of an array plug, a child of a compound).
bool IsWithin(const standin::PlugKey& key, const standin::PlugKey& root)
{
  for (const standin::Attribute* a = key.attribute; a; a = a->parent)
    if (a == root.attribute)
      return key.indices.size() >= root.indices.size() &&
             std::equal(root.indices.begin(), root.indices.end(), key.indices.begin());
  return false;
}

}

MItDependencyGraph::MItDependencyGraph(MObject& rootNode, MFn::Type filter, Direction direction, Traversal traversal,
                                       Level level, MStatus* status)
    : m_rootNode(rootNode), m_filter(filter), m_direction(direction), m_traversal(traversal), m_level(level)
{
  SetStatus(status, rootNode.standinNode() ? MS::kSuccess : MS::kInvalidParameter);
  reset();
}

MItDependencyGraph::MItDependencyGraph(MPlug& rootPlug, MFn::Type filter, Direction direction, Traversal traversal,
                                       Level level, MStatus* status)
    : m_rootNode(rootPlug.node()), m_rootPlug(rootPlug), m_filter(filter), m_direction(direction),
      m_traversal(traversal), m_level(level)
{
  SetStatus(status, rootPlug.isNull() ? MS::kInvalidParameter : MS::kSuccess);
  reset();
}

bool MItDependencyGraph::Matches(const standin::Node* node) const
{
  return m_filter == MFn::kInvalid || standin::TypeHasFn(node->type, m_filter);
}

// The neighbours across the node's connections in the walk's direction, in connection order; from the root plug
// only the connections of that plug count.
void MItDependencyGraph::Expand(const Item& item)
{
  const standin::Scene& scene = *item.node->scene;
  const bool downstream = m_direction == kDownstream;
  const bool fromRootPlug = item.node == m_rootNode.standinNode() && !m_rootPlug.isNull() && item.plug == m_rootPlug;
  std::deque<Item> found;
  for (size_t index : downstream ? item.node->outgoing : item.node->incoming) {
    const standin::Connection& c = scene.connections[index];
    if (!c.alive)
      continue;
    const standin::PlugKey& here = downstream ? c.src : c.dst;
    if (fromRootPlug && !IsWithin(here, m_rootPlug.standinKey()))
      continue;
    standin::Node* next = downstream ? c.dstNode : c.srcNode;
    if (m_visited.count(next))
      continue;
    m_visited.insert(next);
    found.push_back(Item{next, MPlug(next, downstream ? c.dst : c.src), MPlug(item.node, here)});
  }
  if (m_traversal == kDepthFirst)
    m_pending.insert(m_pending.begin(), found.begin(), found.end());
  else
    m_pending.insert(m_pending.end(), found.begin(), found.end());
}

void MItDependencyGraph::Advance()
{
  for (;;) {
    if (m_pending.empty()) {
      m_done = true;
      m_current = Item();
      return;
    }
    Item item = m_pending.front();
    m_pending.pop_front();
    if (Matches(item.node)) {
      m_current = item;
      m_pruned = false;
      return;
    }
    if (!m_pruneOnFilter)
      Expand(item);
  }
}

MStatus MItDependencyGraph::reset()
{
  m_pending.clear();
  m_visited.clear();
  m_done = false;
  m_pruned = false;
  standin::Node* root = m_rootNode.standinNode();
  if (!root) {
    m_done = true;
    return MS::kInvalidParameter;
  }
  m_visited.insert(root);
  if (Matches(root)) {
    m_current = Item{root, m_rootPlug, MPlug()};
    return MS::kSuccess;
  }
  Expand(Item{root, m_rootPlug, MPlug()});
  Advance();
  return MS::kSuccess;
}

bool MItDependencyGraph::isDone(MStatus* status) const
{
  SetStatus(status, MS::kSuccess);
  return m_done;
}

MStatus MItDependencyGraph::next()
{
  if (m_done)
    return MS::kFailure;
  if (!m_pruned)
    Expand(m_current);
  Advance();
  return MS::kSuccess;
}

MStatus MItDependencyGraph::prune()
{
  if (m_done)
    return MS::kFailure;
  m_pruned = true;
  return MS::kSuccess;
}

MObject MItDependencyGraph::thisNode(MStatus* status) const
{
  SetStatus(status, m_done ? MS::kFailure : MS::kSuccess);
  return m_done ? MObject() : MObject(m_current.node);
}

MPlug MItDependencyGraph::thisPlug(MStatus* status) const
{
  SetStatus(status, m_done ? MS::kFailure : MS::kSuccess);
  return m_done ? MPlug() : m_current.plug;
}

MPlug MItDependencyGraph::previousPlug(MStatus* status) const
{
  SetStatus(status, m_done ? MS::kFailure : MS::kSuccess);
  return m_done ? MPlug() : m_current.previous;
}

MObject MItDependencyGraph::rootNode(MStatus* status) const
{
  SetStatus(status, MS::kSuccess);
  return m_rootNode;
}

MPlug MItDependencyGraph::rootPlug(MStatus* status) const
{
  SetStatus(status, MS::kSuccess);
  return m_rootPlug;
}

void MItDependencyGraph::enablePruningOnFilter()
{
  m_pruneOnFilter = true;
  reset();
}

void MItDependencyGraph::disablePruningOnFilter()
{
  m_pruneOnFilter = false;
  reset();
}

bool MItDependencyGraph::isPrunedOnFilter(MStatus* status) const
{
  SetStatus(status, MS::kSuccess);
  return m_pruneOnFilter;
}

MStatus MItDependencyGraph::setCurrentFilter(MFn::Type filter)
{
  m_filter = filter;
  return reset();
}

MStatus MItDependencyGraph::resetFilter() { return setCurrentFilter(MFn::kInvalid); }

MFn::Type MItDependencyGraph::currentFilter(MStatus* status) const
{
  SetStatus(status, MS::kSuccess);
  return m_filter;
}

MItDependencyGraph::Level MItDependencyGraph::currentLevel(MStatus* status) const
{
  SetStatus(status, MS::kSuccess);
  return m_level;
}
