#pragma once
// Turns every tri-list of a world back into triangles, for the passes that need plain polygons.
//
// Each corner triple becomes a triangle polygon appended to the world's polygon list, with the
// tri-list's attribute copy and group attribute, listed by (and listing) every vis area that
// listed the tri-list. The tri-lists are then destroyed, the vis areas' tri-list lists emptied
// and the world enumerated. Answers 0, or -301 when memory runs out; the tri-lists that were
// not yet cut up then stay as they are.

class VMWorld;

int RemoveTriLists(VMWorld& world);
