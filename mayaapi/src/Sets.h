#pragma once

#include "SceneGraph.h"

#include <vector>

namespace standin {

// A set's members, read from what is wired into its "dagSetMembers" and "dnSetMembers" in connection order: an
// instance's "instObjGroups[i]" is the whole instance i, its "instObjGroups[i].objectGroups[k]" the component held
// in that group's "objectGrpCompList", a "message" the node itself.
std::vector<SetMember> MembersOf(const Node* set);

// Makes the node's instance (or the given faces or vertices of it) a member of the set, wired as Maya wires it.
// A shading engine takes the faces away from the other shading engines of that instance, since a face has one
// shader.
void AddSetMember(Node* set, Node* member, unsigned int instance, std::shared_ptr<ComponentData> component);

// The components of one of a shape's "instObjGroups[i].objectGroups[k]": its "objectGrpCompList" as set, or, for a
// shape with history, those of the group its geometry carries under the id in "objectGroupId" (a copy).
std::shared_ptr<ComponentData> GroupComponent(const Node* member, const PlugKey& group);

}
