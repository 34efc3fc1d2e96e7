#include "HistoryNode.h"
#include "MeshEdit.h"

#include "../NumberCast.h"

#include <algorithm>

// groupParts tags components of the geometry passing through with its group id: Maya writes one per shading
// assignment of part of a mesh (the shape's instObjGroups[0].objectGroups[k] then takes the faces of the group whose
// id its objectGroupId holds) and one per deformer set. The group's members are those it already had under that id
// and inputComponents, less inputRemoveComponent.
namespace standin {
namespace {

using K = AttrKind;

const AttributeSpec kAttributes[] = {
    {"inputGeometry", "ig", K::Mesh},
    {"outputGeometry", "og", K::Mesh},
    {"inputComponents", "ic", K::ComponentList},
    {"inputRemoveComponent", "irc", K::ComponentList},
    {"groupId", "gi", K::Int},
};

int CountOf(const Mesh& mesh, MFn::Type type)
{
  return type == MFn::kMeshPolygonComponent ? mesh.topology->FaceCount() : mesh.topology->vertexCount;
}

std::shared_ptr<Mesh> ComputeGroupParts(Node& node, unsigned int, std::string& problem)
{
  const std::shared_ptr<const Mesh> in = RequiredInput(node, "inputGeometry", problem);
  if (!in)
    return nullptr;
  std::shared_ptr<Mesh> out = CopyPoints(*in);
  const std::shared_ptr<const ComponentData> added = Components(node, "inputComponents");
  if (!added)
    return out;
  const auto id = ClampTo<int>(Number(node, "groupId"));
  const auto existing = in->groups.find(id);
  auto group = std::make_shared<ComponentData>(added->type);
  const int count = CountOf(*in, added->type);
  std::vector<int> members = Indices(added.get(), count, false);
  if (existing != in->groups.end() && existing->second->type == added->type)
    for (int i : Indices(existing->second.get(), count, false))
      members.push_back(i);
  const std::shared_ptr<const ComponentData> removed = Components(node, "inputRemoveComponent");
  std::vector<char> drop(static_cast<size_t>(count), 0);
  if (removed && removed->type == added->type)
    for (int i : Indices(removed.get(), count, false))
      drop[static_cast<size_t>(i)] = 1;
  std::sort(members.begin(), members.end());
  members.erase(std::unique(members.begin(), members.end()), members.end());
  std::erase_if(members, [&](int i) { return drop[static_cast<size_t>(i)] != 0; });
  group->complete = added->complete && std::none_of(drop.begin(), drop.end(), [](char d) { return d != 0; });
  group->elements = std::move(members);
  out->groups[id] = group;
  return out;
}

}

const HistoryNodeType kGroupPartsType{"groupParts", MFn::kGroupParts, {}, kAttributes,
                                      "outputGeometry", "inputGeometry", ComputeGroupParts};

}
