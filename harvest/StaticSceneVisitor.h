#pragma once
// The static geometry export's walk: which nodes become world meshes, lights and portals. The
// export state of the plug-in derives from it and keeps the lists for the export's length.

#include "harvest/NodeIterator.h"
#include "model/VMTransform.h"

#include <maya/MDagPath.h>

#include <cstdint>
#include <vector>

struct HarvestState;
class VMWorld;

class StaticSceneVisitor : public NodeIterator {
public:
    explicit StaticSceneVisitor(HarvestState& state) : m_state(state) {}

    bool VisitNode(const MDagPath& path) override;
    // Empties the three lists and frees their storage.
    void Reset() override;

    std::vector<MDagPath> WorldMeshes;
    std::vector<MDagPath> Lights;
    std::vector<MDagPath> Portals;
    // With CenterMethod 4 the first world mesh in visit order defines the export's origin.
    uint8_t PlacementTaken = 0;
    VMTransform Placement;

protected:
    // The static collection of a node that the skip rule kept.
    bool CollectNode(const MDagPath& path);

    HarvestState& m_state;
};

// After the walk: the world meshes, then the lights (into the world's light list) and the portal
// shapes (to the state's visibility builder). Each node's outcome goes to the trace only.
// Answers true.
bool GetMeshes(HarvestState& state, VMWorld& world, const StaticSceneVisitor& visitor);
