#pragma once
// "Checking materials...": drops the materials that nothing uses, then merges equal ones
// (IsSameMaterial) into the first of them, whose use count becomes the sum. Vertex material
// links to a dropped material are cleared.

class VMModel;
class VMWorld;

// Answers the number of materials removed.
int CheckMaterials(VMWorld& world);
int CheckMaterials(VMModel& model);

// The first half alone: drops the materials that no face uses, clearing vertex links to them;
// the others keep their order. Answers the number removed.
int DropUnusedMaterials(VMModel& model);
