#include <maya/MItSelectionList.h>

MItSelectionList::MItSelectionList(const MSelectionList& list, MFn::Type filter, MStatus* status)
    : m_list(list), m_filter(filter)
{
  SkipFiltered();
  if (status)
    *status = MS::kSuccess;
}

void MItSelectionList::SkipFiltered()
{
  while (m_filter != MFn::kInvalid && m_index < m_list.length()) {
    MObject node;
    m_list.getDependNode(m_index, node);
    if (node.hasFn(m_filter))
      return;
    ++m_index;
  }
}

bool MItSelectionList::isDone(MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  return m_index >= m_list.length();
}

MStatus MItSelectionList::next()
{
  if (isDone())
    return MS::kFailure;
  ++m_index;
  SkipFiltered();
  return MS::kSuccess;
}

MStatus MItSelectionList::reset()
{
  m_index = 0;
  SkipFiltered();
  return MS::kSuccess;
}

MStatus MItSelectionList::getDagPath(MDagPath& path, MObject& component) const
{
  return m_list.getDagPath(m_index, path, component);
}

MStatus MItSelectionList::getDagPath(MDagPath& path) const { return m_list.getDagPath(m_index, path); }

MStatus MItSelectionList::getDependNode(MObject& node) const { return m_list.getDependNode(m_index, node); }

MItSelectionList::selItemType MItSelectionList::itemType(MStatus* status) const
{
  MDagPath path;
  const bool dag = static_cast<bool>(m_list.getDagPath(m_index, path));
  if (status)
    *status = isDone() ? MS::kFailure : MS::kSuccess;
  return isDone() ? kUnknownItem : (dag ? kDagSelectionItem : kDNselectionItem);
}
