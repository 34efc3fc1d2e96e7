#pragma once
// Expressing each skin vertex in the space of the bones that move it, which is what the engine
// skins from.

class VMModel;

// A model that claims bones while its skeleton has none stops claiming them. Without bones each
// vertex's slot-0 position is its position and its slot normal its normal. With bones a vertex
// without influences is first bound to the root bone (VMSkeleton::GetRootBone) with weight 1,
// and the answer becomes -1; then each slot's position is the vertex position brought into that
// slot's bone space (by the inverse of the bone's global transform), and the slot normal is the
// normal brought into the first slot's bone space as a direction. Answers 0 otherwise.
int EncodeVertices(VMModel& model);
