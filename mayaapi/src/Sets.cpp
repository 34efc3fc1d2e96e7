#include "Sets.h"

#include <algorithm>
#include <ranges>

namespace standin {
namespace {

unsigned int NextIndex(Node* node, const PlugKey& arrayKey)
{
  const auto found = node->elements.find(arrayKey);
  return found == node->elements.end() || found->second.empty() ? 0 : *found->second.rbegin() + 1;
}

void TakeFacesAway(Node* engine, Node* member, unsigned int instance, const ComponentData* taken)
{
  for (Node* other : engine->scene->nodes | std::views::transform([](const auto& n) { return n.get(); })) {
    if (other == engine || other->type != MFn::kShadingEngine)
      continue;
    auto& members = other->members;
    for (auto it = members.begin(); it != members.end();) {
      if (it->node != member || it->instance != instance) {
        ++it;
        continue;
      }
      if (!taken || !it->component) {
        it = members.erase(it);
        continue;
      }
      auto& faces = it->component->elements;
      std::erase_if(faces, [&](int f) {
        return std::find(taken->elements.begin(), taken->elements.end(), f) != taken->elements.end();
      });
      it = faces.empty() ? members.erase(it) : it + 1;
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
