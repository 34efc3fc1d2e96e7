#pragma once
// One Maya mesh shape into the vertices and polygons of a container: a vertex per Maya vertex in
// Maya's order, then a copy for every corner whose UVs, normal or tangent differ from those
// already on its vertex; one polygon per Maya polygon (not triangulated), grouped by shading set.

#include "harvest/MeshAccess.h"

#include <maya/MDagPath.h>

#include <cstdint>

struct HarvestState;
class VMModel;
class VMWorld;

enum VExportMeshFlags : uint32_t {
    ExportMeshPreSkin = 2,
};

// The three per-polygon attributes that only static exports store.
struct NodeRenderAttributes {
    uint8_t CastShadows = 1;
    uint8_t Visible = 1;
    uint16_t CollisionFlags = 0xFFFF;
};

// False when the node cannot be opened; every other problem is raised as an issue and the node
// keeps what could be read.
bool ExportMesh(HarvestState& state, const MDagPath& path, VMWorld& world, uint32_t flags);
bool ExportMesh(HarvestState& state, const MDagPath& path, VMModel& model, uint32_t flags);

// The polygons of the open node, into container; firstVertex is the container index of the node's
// first vertex (its Maya vertices follow in order).
void ExportMesh_GetPolygons(HarvestState& state, MeshAccess& access, VMWorld& world, int firstVertex,
                            const NodeRenderAttributes& attributes, int& polygonCount, int& addedVertexCount);
void ExportMesh_GetPolygons(HarvestState& state, MeshAccess& access, VMModel& model, int firstVertex,
                            const NodeRenderAttributes& attributes, int& polygonCount, int& addedVertexCount);
