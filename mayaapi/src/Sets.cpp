#include "Sets.h"

#include "NumberCast.h"

#include <algorithm>

namespace standin {
namespace {

unsigned int NextIndex(Node* node, const PlugKey& arrayKey)
{
  const auto found = node->elements.find(arrayKey);
  return found == node->elements.end() || found->second.empty() ? 0 : *found->second.rbegin() + 1;
}

bool IsMembership(const Connection& c)
{
  if (!c.alive || !TypeHasFn(c.dstNode->type, MFn::kSet))
    return false;
  const std::string& into = c.dst.attribute->name;
  return into == "dagSetMembers" || into == "dnSetMembers";
}

// The connection that makes (member, instance, component) a member of the set.
Connection* MembershipOf(Node* set, Node* member, unsigned int instance, const ComponentData* component)
{
  Scene& scene = *set->scene;
  for (size_t index : set->incoming) {
    Connection& c = scene.connections[index];
    if (!IsMembership(c) || c.srcNode != member || c.src.indices.empty() || c.src.indices.front() != instance)
      continue;
    const bool whole = c.src.attribute->name == "instObjGroups";
    if ((whole && !component) || (!whole && component && GroupComponent(member, c.src).get() == component))
      return &c;
  }
  return nullptr;
}

void TakeFacesAway(Node* engine, Node* member, unsigned int instance, const ComponentData* taken)
{
  // Sorted once: a per-face shader assignment takes away many faces from meshes of many faces.
  std::vector<int> takenFaces;
  if (taken) {
    takenFaces = taken->elements;
    std::sort(takenFaces.begin(), takenFaces.end());
  }
  for (const auto& owned : engine->scene->nodes) {
    Node* other = owned.get();
    if (other == engine || other->type != MFn::kShadingEngine)
      continue;
    for (const SetMember& held : MembersOf(other)) {
      if (held.node != member || held.instance != instance)
        continue;
      Connection* wire = MembershipOf(other, member, instance, held.component.get());
      if (!taken || !held.component) {
        if (wire)
          wire->alive = false;
        continue;
      }
      std::erase_if(held.component->elements,
                    [&](int f) { return std::binary_search(takenFaces.begin(), takenFaces.end(), f); });
      if (held.component->elements.empty() && wire)
        wire->alive = false;
    }
  }
}

}

std::shared_ptr<ComponentData> GroupComponent(const Node* member, const PlugKey& group)
{
  const Attribute* list = member->FindAttribute("objectGrpCompList");
  const auto value = member->values.find(PlugKey{const_cast<Attribute*>(list), group.indices});
  if (value != member->values.end())
    return std::dynamic_pointer_cast<ComponentData>(value->second.data);
  Node* shape = const_cast<Node*>(member);
  const std::shared_ptr<Mesh> mesh = ShapeGeometry(shape);
  Attribute* id = shape->FindAttribute("objectGroupId");
  if (!mesh || !id)
    return nullptr;
  const auto found = mesh->groups.find(ClampTo<int>(EvaluatePlug(shape, PlugKey{id, group.indices}).number));
  return found == mesh->groups.end() ? nullptr : std::make_shared<ComponentData>(*found->second);
}

std::vector<SetMember> MembersOf(const Node* set)
{
  std::vector<SetMember> members;
  if (!set)
    return members;
  for (size_t index : set->incoming) {
    const Connection& c = set->scene->connections[index];
    if (!IsMembership(c))
      continue;
    const std::string& from = c.src.attribute->name;
    if (from == "instObjGroups" && !c.src.indices.empty())
      members.push_back(SetMember{c.srcNode, c.src.indices.front(), nullptr});
    else if (from == "objectGroups" && c.src.indices.size() == 2)
      members.push_back(SetMember{c.srcNode, c.src.indices.front(), GroupComponent(c.srcNode, c.src)});
    else if (!c.srcNode->dag || from == "message")
      members.push_back(SetMember{c.srcNode, 0, nullptr});
  }
  return members;
}

void AddSetMember(Node* set, Node* member, unsigned int instance, std::shared_ptr<ComponentData> component)
{
  if (!set || !member)
    return;
  if (set->type == MFn::kShadingEngine && member->dag)
    TakeFacesAway(set, member, instance, component.get());
  Attribute* setMembers = set->FindAttribute(member->dag ? "dagSetMembers" : "dnSetMembers");
  const PlugKey dst{setMembers, {NextIndex(set, PlugKey{setMembers, {}})}};
  if (!member->dag) {
    Connect(member, PlugKey{member->FindAttribute("message"), {}}, set, dst);
    return;
  }
  Attribute* iog = member->FindAttribute("instObjGroups");
  if (!component) {
    Connect(member, PlugKey{iog, {instance}}, set, dst);
    return;
  }
  Attribute* og = member->FindAttribute("objectGroups");
  const unsigned int group = NextIndex(member, PlugKey{og, {instance}});
  Value list;
  list.data = component;
  member->values[PlugKey{member->FindAttribute("objectGrpCompList"), {instance, group}}] = list;
  Connect(member, PlugKey{og, {instance, group}}, set, dst);
}

}
