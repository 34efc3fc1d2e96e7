#include <maya/MFnDagNode.h>

#include <maya/MDagPathArray.h>

#include "SceneGraph.h"

namespace {

void SetStatus(MStatus* status, MS::MStatusCode code)
{
  if (status)
    *status = code;
}

}

MFnDagNode::MFnDagNode(const MObject& object, MStatus* status)
{
  SetStatus(status, setObject(object).statusCode());
}

MFnDagNode::MFnDagNode(const MDagPath& path, MStatus* status)
{
  SetStatus(status, setObject(path).statusCode());
}

MStatus MFnDagNode::setObject(const MObject& object)
{
  m_path = MDagPath();
  const MStatus status = MFnDependencyNode::setObject(object);
  if (status)
    MDagPath::getAPathTo(object, m_path);
  return status;
}

MStatus MFnDagNode::setObject(const MDagPath& path)
{
  MDagPath target = path;
  if (path.isValid() && !path.node().hasFn(type()) && path.hasFn(type()))
    target.extendToShape();
  const MStatus status = MFnDependencyNode::setObject(target.node());
  m_path = status ? target : MDagPath();
  return status;
}

MObject MFnDagNode::create(const MString& typeName, const MObject& parent, MStatus* status)
{
  return create(typeName, MString(), parent, status);
}

// Like Maya, a shape made without a parent gets a new transform, and the transform is what is returned.
MObject MFnDagNode::create(const MString& typeName, const MString& name, const MObject& parent, MStatus* status)
{
  standin::Node* parentNode = parent.isNull() ? standin::CurrentScene().world : parent.standinNode();
  if (!parentNode || !parentNode->dag) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  standin::Node* node = standin::NewNode(typeName.asChar(), name.asChar());
  if (!node || !node->dag) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  standin::Node* created = node;
  if (parent.isNull() && standin::TypeHasFn(node->type, MFn::kShape)) {
    standin::Node* transform = standin::NewNode("transform", standin::TransformNameFor(node->name));
    standin::AddChild(parentNode, transform);
    parentNode = transform;
    created = transform;
  }
  standin::AddChild(parentNode, node);
  setObject(MObject(node));
  SetStatus(status, MS::kSuccess);
  return MObject(created);
}

bool MFnDagNode::isIntermediateObject(MStatus* status) const
{
  bool value = false;
  SetStatus(status, findPlug("intermediateObject").getValue(value).statusCode());
  return value;
}

MStatus MFnDagNode::setIntermediateObject(bool intermediate)
{
  return findPlug("intermediateObject").setValue(intermediate);
}

unsigned int MFnDagNode::parentCount(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node ? static_cast<unsigned int>(node->parents.size()) : 0;
}

MObject MFnDagNode::parent(unsigned int index, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  if (!node || index >= node->parents.size()) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  SetStatus(status, MS::kSuccess);
  return MObject(node->parents[index]);
}

unsigned int MFnDagNode::childCount(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node ? static_cast<unsigned int>(node->children.size()) : 0;
}

MObject MFnDagNode::child(unsigned int index, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  if (!node || index >= node->children.size()) {
    SetStatus(status, MS::kInvalidParameter);
    return MObject();
  }
  SetStatus(status, MS::kSuccess);
  return MObject(node->children[index]);
}

MStatus MFnDagNode::addChild(MObject& child, unsigned int, bool keepExistingParents)
{
  standin::Node* node = m_object.standinNode();
  standin::Node* c = child.standinNode();
  if (!node || !c)
    return MS::kInvalidParameter;
  if (!keepExistingParents) {
    for (standin::Node* old : c->parents)
      std::erase(old->children, c);
    c->parents.clear();
  }
  return standin::AddChild(node, c) ? MS::kSuccess : MS::kInvalidParameter;
}

MStatus MFnDagNode::getPath(MDagPath& path) const
{
  if (!m_path.isValid())
    return MS::kFailure;
  path = m_path;
  return MS::kSuccess;
}

MStatus MFnDagNode::getAllPaths(MDagPathArray& paths) const { return MDagPath::getAllPathsTo(m_object, paths); }

MDagPath MFnDagNode::dagPath(MStatus* status) const
{
  SetStatus(status, m_path.isValid() ? MS::kSuccess : MS::kFailure);
  return m_path;
}

MString MFnDagNode::fullPathName(MStatus* status) const { return m_path.fullPathName(status); }

MString MFnDagNode::partialPathName(MStatus* status) const { return m_path.partialPathName(status); }

bool MFnDagNode::isInstanced(bool, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return node && standin::PathCount(node) > 1;
}

unsigned int MFnDagNode::instanceCount(bool total, MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  if (!node)
    return 0;
  return total ? static_cast<unsigned int>(standin::PathCount(node)) : static_cast<unsigned int>(node->parents.size());
}

MMatrix MFnDagNode::transformationMatrix(MStatus* status) const
{
  standin::Node* node = m_object.standinNode();
  SetStatus(status, node ? MS::kSuccess : MS::kFailure);
  return standin::LocalMatrix(node);
}
