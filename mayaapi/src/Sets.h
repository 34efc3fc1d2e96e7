#pragma once

#include "SceneGraph.h"

namespace standin {

// Makes the node's instance (or the given faces or vertices of it) a member of the set, wiring the instance's
// "instObjGroups" into the set's "dagSetMembers" as Maya does. A shading engine takes the faces away from the
// other shading engines of that instance, since a face has one shader.
void AddSetMember(Node* set, Node* member, unsigned int instance, std::shared_ptr<ComponentData> component);

}
