#include <maya/MSelectionList.h>

#include <maya/MPlug.h>

#include "SceneGraph.h"

unsigned int MSelectionList::length(MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  return static_cast<unsigned int>(m_items.size());
}

MStatus MSelectionList::add(const MObject& node, bool)
{
  standin::Node* n = node.standinNode();
  if (!n)
    return MS::kInvalidParameter;
  MDagPath path;
  if (n->dag)
    MDagPath::getAPathTo(node, path);
  for (const Item& item : m_items)
    if (item.node == node && item.path == path && item.component.isNull())
      return MS::kSuccess;
  m_items.push_back(Item{node, path, MObject()});
  return MS::kSuccess;
}

MStatus MSelectionList::add(const MDagPath& path, const MObject& component, bool)
{
  if (!path.isValid())
    return MS::kInvalidParameter;
  for (const Item& item : m_items)
    if (item.path == path && item.component == component)
      return MS::kSuccess;
  m_items.push_back(Item{path.node(), path, component});
  return MS::kSuccess;
}

// Accepts a node name or a DAG path name, full ("|group1|pCube1") or partial ("group1|pCube1").
MStatus MSelectionList::add(const MString& matchString, bool)
{
  const std::string text = matchString.asChar();
  if (text.find('|') != std::string::npos) {
    const std::vector<standin::Node*> nodes = standin::FindDagPath(text);
    return nodes.empty() ? MStatus(MS::kInvalidParameter) : add(MDagPath::standinFromNodes(nodes));
  }
  standin::Node* node = standin::FindNode(text);
  return node ? add(MObject(node)) : MStatus(MS::kInvalidParameter);
}

MStatus MSelectionList::remove(unsigned int index)
{
  if (index >= m_items.size())
    return MS::kInvalidParameter;
  m_items.erase(m_items.begin() + index);
  return MS::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& path, MObject& component) const
{
  if (index >= m_items.size() || !m_items[index].path.isValid())
    return MS::kInvalidParameter;
  path = m_items[index].path;
  component = m_items[index].component;
  return MS::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& path) const
{
  MObject component;
  return getDagPath(index, path, component);
}

MStatus MSelectionList::getDependNode(unsigned int index, MObject& node) const
{
  if (index >= m_items.size())
    return MS::kInvalidParameter;
  node = m_items[index].node;
  return MS::kSuccess;
}

MStatus MSelectionList::getPlug(unsigned int, MPlug&) const { return MS::kInvalidParameter; }

bool MSelectionList::hasItem(const MObject& node, MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  for (const Item& item : m_items)
    if (item.node == node)
      return true;
  return false;
}

MStatus MSelectionList::merge(const MSelectionList& other, MergeStrategy strategy)
{
  for (const Item& item : other.m_items) {
    if (strategy == kRemoveFromList) {
      for (size_t i = m_items.size(); i-- > 0;)
        if (m_items[i].node == item.node && m_items[i].path == item.path)
          m_items.erase(m_items.begin() + static_cast<long>(i));
      continue;
    }
    if (item.path.isValid())
      add(item.path, item.component);
    else
      add(item.node);
  }
  return MS::kSuccess;
}
