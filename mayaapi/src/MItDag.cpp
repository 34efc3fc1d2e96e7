#include <maya/MItDag.h>

#include "SceneGraph.h"

MItDag::MItDag(TraversalType type, MFn::Type filter, MStatus* status) : m_type(type), m_filter(filter)
{
  m_root = MDagPath::standinWorld();
  const MStatus result = reset();
  if (status)
    *status = result;
}

MStatus MItDag::reset()
{
  m_pending.clear();
  m_pending.push_back(m_root);
  m_done = false;
  m_pruned = true;
  Advance();
  return MS::kSuccess;
}

MStatus MItDag::reset(const MDagPath& root, TraversalType type, MFn::Type filter)
{
  if (!root.isValid())
    return MS::kInvalidParameter;
  m_root = root;
  m_type = type;
  m_filter = filter;
  return reset();
}

bool MItDag::Matches(const MDagPath& path) const
{
  return m_filter == MFn::kInvalid || standin::TypeHasFn(path.standinLast()->type, m_filter);
}

// Expands the current path (unless pruned) and moves to the next path that passes the filter; nodes that fail
// the filter are still walked through.
void MItDag::Advance()
{
  for (;;) {
    if (!m_pruned && m_current.isValid()) {
      standin::Node* last = m_current.standinLast();
      std::vector<standin::Node*> nodes = m_current.standinNodes();
      if (m_type == kBreadthFirst) {
        for (standin::Node* child : last->children) {
          nodes.push_back(child);
          m_pending.push_back(MDagPath::standinFromNodes(nodes));
          nodes.pop_back();
        }
      } else {
        for (size_t i = last->children.size(); i-- > 0;) {
          nodes.push_back(last->children[i]);
          m_pending.push_front(MDagPath::standinFromNodes(nodes));
          nodes.pop_back();
        }
      }
    }
    m_pruned = false;
    if (m_pending.empty()) {
      m_done = true;
      m_current = MDagPath();
      return;
    }
    m_current = m_pending.front();
    m_pending.pop_front();
    if (Matches(m_current))
      return;
  }
}

MStatus MItDag::next()
{
  if (m_done)
    return MS::kFailure;
  Advance();
  return MS::kSuccess;
}

bool MItDag::isDone(MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  return m_done;
}

MStatus MItDag::prune()
{
  m_pruned = true;
  return MS::kSuccess;
}

MStatus MItDag::getPath(MDagPath& path) const
{
  if (m_done)
    return MS::kFailure;
  path = m_current;
  return MS::kSuccess;
}

MObject MItDag::currentItem(MStatus* status) const { return m_current.node(status); }

unsigned int MItDag::depth(MStatus* status) const { return m_current.length(status); }

MString MItDag::fullPathName(MStatus* status) const { return m_current.fullPathName(status); }

MString MItDag::partialPathName(MStatus* status) const { return m_current.partialPathName(status); }

MItDag::TraversalType MItDag::getType(MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  return m_type;
}
