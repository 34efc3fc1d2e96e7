#include <maya/MFnDependencyNode.h>

#include <maya/MPlugArray.h>

#include "SceneGraph.h"

#include <algorithm>

namespace {

void SetStatus(MStatus* status, MS::MStatusCode code)
{
  if (status)
    *status = code;
}

// Adds a pending attribute and its children to the node, keeping the objects that name them valid.
void Adopt(standin::Node* node, standin::Attribute* attribute, standin::Attribute* parent)
{
  auto& pending = standin::CurrentScene().pendingAttributes;
  const auto found = std::find_if(pending.begin(), pending.end(), [&](const auto& p) { return p.get() == attribute; });
  if (found == pending.end())
    return;
  std::unique_ptr<standin::Attribute> owned = std::move(*found);
  pending.erase(found);
  std::vector<standin::Attribute*> children = owned->children;
  owned->children.clear();
  owned->dynamic = true;
  node->AddAttribute(std::move(owned), parent);
  for (standin::Attribute* child : children)
    Adopt(node, child, attribute);
}

}

MFnDependencyNode::MFnDependencyNode(const MObject& object, MStatus* status)
{
  SetStatus(status, setObject(object).statusCode());
}

MObject MFnDependencyNode::create(const MString& typeName, MStatus* status)
{
  return create(typeName, MString(), status);
}

MObject MFnDependencyNode::create(const MString& typeName, const MString& name, MStatus* status)
{
  standin::Node* node = standin::NewNode(typeName.asChar(), name.asChar());
  if (!node || node->dag) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  setObject(MObject(node));
  SetStatus(status, MS::kSuccess);
  return m_object;
}

MString MFnDependencyNode::name(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node ? MString(node->name) : MString();
}

MString MFnDependencyNode::setName(const MString& name, bool, MStatus* status)
{
  standin::Node* node = m_object.standinNode();
  if (!node || name.isEmpty()) {
    SetStatus(status, MS::kInvalidParameter);
    return MString();
  }
  if (node->name != name.asChar())
    node->name = standin::UniqueName(name.asChar());
  SetStatus(status, MS::kSuccess);
  return MString(node->name);
}

MString MFnDependencyNode::typeName(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node ? MString(node->typeName) : MString();
}

MPlug MFnDependencyNode::findPlug(const MString& attrName, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  standin::Attribute* attribute = node ? node->FindAttribute(attrName.asChar()) : nullptr;
  if (!attribute) {
    SetStatus(status, MS::kInvalidParameter);
    return MPlug();
  }
  SetStatus(status, MS::kSuccess);
  return MPlug(node, standin::PlugKey{attribute, {}});
}

MPlug MFnDependencyNode::findPlug(const MString& attrName, bool, MStatus* status) const
{
  return findPlug(attrName, status);
}

// Attribute objects of another node of the same type are accepted by name, as Maya's static attributes are.
MPlug MFnDependencyNode::findPlug(const MObject& attribute, MStatus* status) const
{
  const standin::Attribute* a = attribute.standinAttribute();
  if (!a) {
    SetStatus(status, MS::kInvalidParameter);
    return MPlug();
  }
  return findPlug(MString(a->name), status);
}

MPlug MFnDependencyNode::findPlug(const MObject& attribute, bool, MStatus* status) const
{
  return findPlug(attribute, status);
}

MObject MFnDependencyNode::attribute(const MString& attrName, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  standin::Attribute* a = node ? node->FindAttribute(attrName.asChar()) : nullptr;
  SetStatus(status, a ? MS::kSuccess : MS::kInvalidParameter);
  return a ? MObject(a) : MObject();
}

unsigned int MFnDependencyNode::attributeCount(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node ? static_cast<unsigned int>(node->attributes.size()) : 0;
}

MObject MFnDependencyNode::attribute(unsigned int index, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  if (!node || index >= node->attributes.size()) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  SetStatus(status, MS::kSuccess);
  return MObject(node->attributes[index].get());
}

bool MFnDependencyNode::hasAttribute(const MString& attrName, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node && node->FindAttribute(attrName.asChar());
}

MStatus MFnDependencyNode::addAttribute(const MObject& attribute)
{
  standin::Node* node = m_object.standinNode();
  standin::Attribute* a = attribute.standinAttribute();
  if (!node || !a || a->owner || a->parent)
    return MS::kInvalidParameter;
  if (node->FindAttribute(a->name) || (!a->shortName.empty() && node->FindAttribute(a->shortName)))
    return MS::kInvalidParameter;
  Adopt(node, a, nullptr);
  node->scene->Touch();
  return MS::kSuccess;
}

MStatus MFnDependencyNode::getConnections(MPlugArray& plugs) const
{
  plugs.clear();
  standin::Node* node = m_object.standinNode();
  if (!node)
    return MS::kFailure;
  std::vector<standin::PlugKey> seen;
  auto add = [&](const standin::PlugKey& key) {
    if (std::find(seen.begin(), seen.end(), key) == seen.end()) {
      seen.push_back(key);
      plugs.append(MPlug(node, key));
    }
  };
  for (size_t index : node->incoming)
    if (node->scene->connections[index].alive)
      add(node->scene->connections[index].dst);
  for (size_t index : node->outgoing)
    if (node->scene->connections[index].alive)
      add(node->scene->connections[index].src);
  return MS::kSuccess;
}
