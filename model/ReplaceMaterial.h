#pragma once

class VMModel;
class VMWorld;
struct VMMaterial;

// Every vertex whose material link is oldMaterial gets newMaterial, and every primitive (every
// face of a model) that uses oldMaterial is given newMaterial, the use counts moving with it.
void ReplaceMaterial(VMWorld& world, VMMaterial* oldMaterial, VMMaterial* newMaterial);
void ReplaceMaterial(VMModel& model, VMMaterial* oldMaterial, VMMaterial* newMaterial);
