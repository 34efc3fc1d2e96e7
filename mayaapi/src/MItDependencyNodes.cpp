#include <maya/MItDependencyNodes.h>

#include "SceneGraph.h"

MItDependencyNodes::MItDependencyNodes(MFn::Type filter, MStatus* status) : m_filter(filter)
{
  const MStatus result = reset(filter);
  if (status)
    *status = result;
}

// The world is not a dependency node of the scene's list.
void MItDependencyNodes::SkipFiltered()
{
  const auto& nodes = standin::CurrentScene().nodes;
  while (m_index < nodes.size() &&
         (nodes[m_index]->type == MFn::kWorld ||
          (m_filter != MFn::kInvalid && !standin::TypeHasFn(nodes[m_index]->type, m_filter))))
    ++m_index;
}

MStatus MItDependencyNodes::reset(MFn::Type filter)
{
  m_filter = filter;
  m_index = 0;
  SkipFiltered();
  return MS::kSuccess;
}

MStatus MItDependencyNodes::next()
{
  if (isDone())
    return MS::kFailure;
  ++m_index;
  SkipFiltered();
  return MS::kSuccess;
}

bool MItDependencyNodes::isDone(MStatus* status) const
{
  if (status)
    *status = MS::kSuccess;
  return m_index >= standin::CurrentScene().nodes.size();
}

MObject MItDependencyNodes::thisNode(MStatus* status) const
{
  if (status)
    *status = isDone() ? MS::kFailure : MS::kSuccess;
  return isDone() ? MObject() : MObject(standin::CurrentScene().nodes[m_index].get());
}
