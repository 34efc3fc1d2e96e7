#include "Sets.h"

#include <algorithm>

namespace standin {
namespace {

unsigned int NextIndex(Node* node, const PlugKey& arrayKey)
{
  const auto found = node->elements.find(arrayKey);
  return found == node->elements.end() || found->second.empty() ? 0 : *found->second.rbegin() + 1;
}

// Ends the wiring that made a member of the set, so that connection walks agree with the membership list.
void Disconnect(Node* set, Node* member, unsigned int instance, const std::shared_ptr<ComponentData>& component)
{
  Scene& scene = *set->scene;
  for (size_t index : member->outgoing) {
    Connection& c = scene.connections[index];
    if (!c.alive || c.dstNode != set || c.src.indices.empty() || c.src.indices.front() != instance)
      continue;
    if (!component && c.src.attribute->name == "instObjGroups")
      c.alive = false;
    if (component && c.src.attribute->name == "objectGroups") {
      const PlugKey list{member->FindAttribute("objectGrpCompList"), c.src.indices};
      const auto value = member->values.find(list);
      if (value != member->values.end() && value->second.data == component)
        c.alive = false;
    }
  }
}

void TakeFacesAway(Node* engine, Node* member, unsigned int instance, const ComponentData* taken)
{
  for (const auto& owned : engine->scene->nodes) {
    Node* other = owned.get();
    if (other == engine || other->type != MFn::kShadingEngine)
      continue;
    auto& members = other->members;
    for (auto it = members.begin(); it != members.end();) {
      if (it->node != member || it->instance != instance) {
        ++it;
        continue;
      }
      if (!taken || !it->component) {
        Disconnect(other, member, instance, it->component);
        it = members.erase(it);
        continue;
      }
      auto& faces = it->component->elements;
      std::erase_if(faces, [&](int f) {
        return std::find(taken->elements.begin(), taken->elements.end(), f) != taken->elements.end();
      });
      if (faces.empty()) {
        Disconnect(other, member, instance, it->component);
        it = members.erase(it);
      } else {
        ++it;
      }
    }
  }
}

}

void AddSetMember(Node* set, Node* member, unsigned int instance, std::shared_ptr<ComponentData> component)
{
  if (!set || !member)
    return;
  if (set->type == MFn::kShadingEngine && member->dag)
    TakeFacesAway(set, member, instance, component.get());
  set->members.push_back(SetMember{member, instance, component});
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
