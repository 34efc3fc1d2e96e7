#include <maya/MDagPath.h>

#include <maya/MDagPathArray.h>

#include "SceneGraph.h"

namespace {

void SetStatus(MStatus* status, MS::MStatusCode code)
{
  if (status)
    *status = code;
}

bool IsIntermediate(standin::Node* node)
{
  standin::Attribute* io = node->FindAttribute("intermediateObject");
  return io && standin::EvaluatePlug(node, standin::PlugKey{io, {}}).number != 0.0;
}

// The shape a transform path stands for: its only shape, or its only non-intermediate one when an intermediate
// (such as a skinned mesh's original) sits beside it.
standin::Node* ShapeBelow(standin::Node* node)
{
  if (!node || !standin::TypeHasFn(node->type, MFn::kTransform))
    return nullptr;
  standin::Node* shape = nullptr;
  standin::Node* visible = nullptr;
  int shapes = 0;
  int visibleShapes = 0;
  for (standin::Node* child : node->children)
    if (standin::TypeHasFn(child->type, MFn::kShape)) {
      ++shapes;
      shape = child;
      if (!IsIntermediate(child)) {
        ++visibleShapes;
        visible = child;
      }
    }
  if (visibleShapes == 1)
    return visible;
  return shapes == 1 ? shape : nullptr;
}

// True when exactly one DAG path ends in the '|'-separated names of tail.
bool TailNamesOnePath(const std::string& tail)
{
  const std::string last = tail.substr(tail.rfind('|') == std::string::npos ? 0 : tail.rfind('|') + 1);
  const std::string suffix = "|" + tail;
  size_t count = 0;
  for (const auto& node : standin::CurrentScene().nodes) {
    if (!node->dag || node->name != last)
      continue;
    for (const auto& path : standin::AllPaths(node.get())) {
      std::string full;
      for (const standin::Node* n : path)
        full += "|" + n->name;
      if (full.size() >= suffix.size() && full.compare(full.size() - suffix.size(), suffix.size(), suffix) == 0 &&
          ++count > 1)
        return false;
    }
  }
  return count == 1;
}

}

MDagPath MDagPath::standinWorld()
{
  MDagPath path;
  path.m_valid = true;
  return path;
}

MDagPath MDagPath::standinFromNodes(std::vector<standin::Node*> nodes)
{
  MDagPath path;
  path.m_valid = true;
  path.m_nodes = std::move(nodes);
  return path;
}

standin::Node* MDagPath::standinLast() const
{
  if (!m_valid)
    return nullptr;
  return m_nodes.empty() ? standin::CurrentScene().world : m_nodes.back();
}

bool MDagPath::isValid(MStatus* status) const
{
  SetStatus(status, MS::kSuccess);
  return m_valid;
}

unsigned int MDagPath::length(MStatus* status) const
{
  SetStatus(status, m_valid ? MS::kSuccess : MS::kFailure);
  return static_cast<unsigned int>(m_nodes.size());
}

unsigned int MDagPath::childCount(MStatus* status) const
{
  standin::Node* last = standinLast();
  SetStatus(status, last ? MS::kSuccess : MS::kFailure);
  return last ? static_cast<unsigned int>(last->children.size()) : 0;
}

MObject MDagPath::child(unsigned int index, MStatus* status) const
{
  standin::Node* last = standinLast();
  if (!last || index >= last->children.size()) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  SetStatus(status, MS::kSuccess);
  return MObject(last->children[index]);
}

MStatus MDagPath::push(const MObject& child)
{
  standin::Node* last = standinLast();
  standin::Node* node = child.standinNode();
  if (!last || !node)
    return MS::kInvalidParameter;
  for (standin::Node* c : last->children)
    if (c == node) {
      m_nodes.push_back(node);
      return MS::kSuccess;
    }
  return MS::kInvalidParameter;
}

MStatus MDagPath::pop(unsigned int count)
{
  if (!m_valid || count > m_nodes.size())
    return MS::kInvalidParameter;
  m_nodes.resize(m_nodes.size() - count);
  return MS::kSuccess;
}

MObject MDagPath::node(MStatus* status) const
{
  standin::Node* last = standinLast();
  SetStatus(status, last ? MS::kSuccess : MS::kFailure);
  return last ? MObject(last) : MObject();
}

MObject MDagPath::transform(MStatus* status) const
{
  for (size_t i = m_nodes.size(); i-- > 0;)
    if (standin::TypeHasFn(m_nodes[i]->type, MFn::kTransform)) {
      SetStatus(status, MS::kSuccess);
      return MObject(m_nodes[i]);
    }
  SetStatus(status, m_valid ? MS::kSuccess : MS::kFailure);
  return m_valid ? MObject(standin::CurrentScene().world) : MObject();
}

MFn::Type MDagPath::apiType(MStatus* status) const
{
  standin::Node* last = standinLast();
  SetStatus(status, last ? MS::kSuccess : MS::kFailure);
  return last ? last->type : MFn::kInvalid;
}

// A transform answers for its shape too, so a mesh's transform path has kMesh as well as kTransform.
bool MDagPath::hasFn(MFn::Type type, MStatus* status) const
{
  standin::Node* last = standinLast();
  SetStatus(status, last ? MS::kSuccess : MS::kFailure);
  if (!last)
    return false;
  if (standin::TypeHasFn(last->type, type))
    return true;
  standin::Node* shape = ShapeBelow(last);
  return shape && standin::TypeHasFn(shape->type, type);
}

MString MDagPath::fullPathName(MStatus* status) const
{
  SetStatus(status, m_valid ? MS::kSuccess : MS::kFailure);
  std::string name;
  for (const standin::Node* node : m_nodes)
    name += "|" + node->name;
  return MString(name);
}

// The shortest tail of the full path that names one path only: the node's name unless it (or an ancestor on the
// way) is instanced, in which case parents are prepended until the tail is unique.
MString MDagPath::partialPathName(MStatus* status) const
{
  SetStatus(status, m_valid ? MS::kSuccess : MS::kFailure);
  if (m_nodes.empty())
    return MString();
  // The shortest tail of the full path that names this path only: the node's name unless another node shares it
  // (DAG nodes under different parents may) or the node is instanced.
  for (size_t first = m_nodes.size(); first-- > 0;) {
    std::string name;
    for (size_t i = first; i < m_nodes.size(); ++i)
      name += (i == first ? "" : "|") + m_nodes[i]->name;
    if (TailNamesOnePath(name))
      return MString(name);
  }
  return fullPathName();
}

MStatus MDagPath::extendToShape()
{
  standin::Node* last = standinLast();
  if (!last)
    return MS::kFailure;
  if (standin::TypeHasFn(last->type, MFn::kShape))
    return MS::kSuccess;
  standin::Node* shape = ShapeBelow(last);
  if (!shape)
    return MS::kFailure;
  m_nodes.push_back(shape);
  return MS::kSuccess;
}

MStatus MDagPath::extendToShapeDirectlyBelow(unsigned int index)
{
  standin::Node* last = standinLast();
  if (!last)
    return MS::kFailure;
  unsigned int seen = 0;
  for (standin::Node* child : last->children)
    if (standin::TypeHasFn(child->type, MFn::kShape) && seen++ == index) {
      m_nodes.push_back(child);
      return MS::kSuccess;
    }
  return MS::kInvalidParameter;
}

unsigned int MDagPath::numberOfShapesDirectlyBelow(unsigned int& count) const
{
  count = 0;
  if (standin::Node* last = standinLast())
    for (standin::Node* child : last->children)
      if (standin::TypeHasFn(child->type, MFn::kShape))
        ++count;
  return count;
}

bool MDagPath::isInstanced(MStatus* status) const
{
  standin::Node* last = standinLast();
  SetStatus(status, last ? MS::kSuccess : MS::kFailure);
  return last && standin::PathCount(last) > 1;
}

unsigned int MDagPath::instanceNumber(MStatus* status) const
{
  standin::Node* last = standinLast();
  SetStatus(status, last ? MS::kSuccess : MS::kFailure);
  if (!last || m_nodes.empty())
    return 0;
  const auto paths = standin::AllPaths(last);
  for (size_t i = 0; i < paths.size(); ++i)
    if (paths[i] == m_nodes)
      return static_cast<unsigned int>(i);
  return 0;
}

MMatrix MDagPath::inclusiveMatrix(MStatus* status) const
{
  SetStatus(status, m_valid ? MS::kSuccess : MS::kFailure);
  return standin::PathMatrix(m_nodes);
}

MMatrix MDagPath::inclusiveMatrixInverse(MStatus* status) const { return inclusiveMatrix(status).inverse(); }

MMatrix MDagPath::exclusiveMatrix(MStatus* status) const
{
  SetStatus(status, m_valid ? MS::kSuccess : MS::kFailure);
  if (m_nodes.empty())
    return MMatrix();
  return standin::PathMatrix(std::vector<standin::Node*>(m_nodes.begin(), m_nodes.end() - 1));
}

MMatrix MDagPath::exclusiveMatrixInverse(MStatus* status) const { return exclusiveMatrix(status).inverse(); }

MStatus MDagPath::getAPathTo(const MObject& node, MDagPath& path)
{
  standin::Node* n = node.standinNode();
  if (!n || !n->dag)
    return MS::kInvalidParameter;
  const auto paths = standin::AllPaths(n);
  if (paths.empty())
    return MS::kFailure;
  path = standinFromNodes(paths.front());
  return MS::kSuccess;
}

MStatus MDagPath::getAllPathsTo(const MObject& node, MDagPathArray& paths)
{
  paths.clear();
  standin::Node* n = node.standinNode();
  if (!n || !n->dag)
    return MS::kInvalidParameter;
  for (auto& nodes : standin::AllPaths(n))
    paths.append(standinFromNodes(std::move(nodes)));
  return MS::kSuccess;
}
