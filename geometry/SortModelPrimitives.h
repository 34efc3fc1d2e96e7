#pragma once
// The order the model writer emits: faces by material, vertices by their first bone.

class VMModel;

// Faces are ordered by the number of their material (list position; a face without material
// first), keeping their order within a material. With bones and a skeleton of more than one bone,
// vertices are ordered by the number of their first influence bone (a vertex without influences
// first), keeping their order among equals, and the ID links are rebuilt (FixModelID). Bones,
// vertices and materials are then numbered, and every vertex track of every animation is ordered
// by vertex number. Answers 0, or -301 when memory runs out (the model keeps its order then).
int SortPrimitives(VMModel& model);
