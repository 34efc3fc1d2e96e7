#pragma once
// The prefab's node collection: a node carrying "zephra_ExportTo" becomes a shape instance of the
// mesh or model file it names (its subtree is left to that nested export), every other node is
// collected as for a static mesh.

#include "base/VDictEntry.h"
#include "plugin/VExportState.h"

#include <maya/MDagPath.h>

#include <string>
#include <vector>

struct NodeReference {
    // The node whose subtree the nested export writes.
    MDagPath Node;
};

class VPrefabExportState final : public VExportState {
public:
    using VExportState::VExportState;

    bool VisitNode(const MDagPath& path) override;
    // The common reset, the shape instances, the world and the node references.
    void Reset() override;
    bool PlacesOtherAssets() const override { return !NodeReferences.empty(); }

    // The referenced files (as written in the attribute), each once, with the first node that
    // names it.
    std::vector<VDictEntry<NodeReference>> NodeReferences;
    // The instances of the referenced files, one per node; kept apart from the world, whose
    // contents the pipeline clears after the walk.
    VMWShapeInstance3DCollection Shapes;
    bool HasShapeInstances = false;

private:
    void AddShapeInstance(const MDagPath& path, const std::string& fileName);
};
