#pragma once
// The model export's mesh pass: meshes into the model, joints to the skeleton harvest, and the
// node that stands for the model's collision box.

#include "harvest/NodeIterator.h"

#include <maya/MDagPath.h>

#include <cstdint>

struct HarvestState;
class VMModel;

class ModelMeshExporter : public NodeIterator {
public:
    ModelMeshExporter(HarvestState& state, VMModel& model, uint32_t flags);
    bool VisitNode(const MDagPath& path) override;

private:
    HarvestState& m_state;
    VMModel& m_model;
    uint32_t m_flags;
};

// A mesh whose "ExportAs" is 1 stands for a cube one UI unit wide: its world transform gives
// the model's collision box. A later node replaces an earlier one.
void ModelBoundsNode(HarvestState& state, const MDagPath& path);

// Resets the per-pass counters and walks the scene with a ModelMeshExporter, from root when it is
// valid (a prefab node's nested export), else the whole scene. Answers true.
bool GetMeshes(HarvestState& state, VMModel& model, uint32_t flags, const MDagPath& root = MDagPath());
