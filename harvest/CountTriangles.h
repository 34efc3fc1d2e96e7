#pragma once
// The precalculation pass: how big the export will be, before anything is harvested. Its
// figures size the mesh node table and give the scene bounds and the skeleton root candidate.

#include "harvest/NodeIterator.h"

#include <maya/MDagPath.h>

struct HarvestState;

// The visitor of the pass: counts joints and mesh shapes, enters every node.
class TriangleCounter : public NodeIterator {
public:
    explicit TriangleCounter(HarvestState& state) : m_state(state) {}
    bool VisitNode(const MDagPath& path) override;

private:
    HarvestState& m_state;
};

// Triangles of one mesh shape, widening the scene bounds and the vertex total with its
// vertices: 0 for an invisible shape, -1 when it cannot be opened.
int CountMeshTriangles(HarvestState& state, const MDagPath& path);

// Leaves its results in state.Stats; answers 0.
int CountTriangles(HarvestState& state);
