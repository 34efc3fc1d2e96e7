#include <maya/MFnSet.h>

#include "SceneGraph.h"
#include "Sets.h"

MFnSet::MFnSet(const MObject& object, MStatus* status)
{
  const MStatus result = setObject(object);
  if (status)
    *status = result;
}

MStatus MFnSet::getMembers(MSelectionList& members, bool) const
{
  members.clear();
  standin::Node* set = m_object.standinNode();
  if (!set)
    return MS::kFailure;
  for (const standin::SetMember& member : standin::MembersOf(set)) {
    if (!member.node->dag) {
      members.add(MObject(member.node));
      continue;
    }
    const auto paths = standin::AllPaths(member.node);
    if (member.instance >= paths.size())
      continue;
    const MObject component = member.component ? MObject(std::shared_ptr<standin::Data>(member.component)) : MObject();
    members.add(MDagPath::standinFromNodes(paths[member.instance]), component);
  }
  return MS::kSuccess;
}

bool MFnSet::isMember(const MDagPath& path, const MObject&, MStatus* status) const
{
  standin::Node* set = m_object.standinNode();
  if (status)
    *status = set ? MS::kSuccess : MS::kFailure;
  if (!set)
    return false;
  for (const standin::SetMember& member : standin::MembersOf(set))
    if (member.node == path.standinLast() && member.instance == path.instanceNumber())
      return true;
  return false;
}

MFnSet::Restriction MFnSet::restriction(MStatus* status) const
{
  if (status)
    *status = m_object.isNull() ? MS::kFailure : MS::kSuccess;
  return m_object.hasFn(MFn::kShadingEngine) ? kRenderableOnly : kNone;
}
