#pragma once
// One Maya polygon into one polygon of a container, and the rule that decides when a corner
// needs a vertex of its own.

#include "harvest/ExportMesh.h"

#include <maya/MFloatVectorArray.h>
#include <maya/MMatrix.h>

#include <cstdint>
#include <limits>
#include <vector>

struct VMMaterial;
struct VMVertexData;

// Normal and base UV of a vertex that no corner has reached yet.
inline constexpr float kUnsetVertexValue = std::numeric_limits<float>::max();

// The values one corner brings to its vertex, in the model's axes.
struct CornerValues {
    float BaseUV[2] = {0.0f, 0.0f};
    float LightmapUV[2] = {0.0f, 0.0f};
    float Normal[3] = {0.0f, 0.0f, 0.0f};
    float Tangent[3] = {0.0f, 0.0f, 0.0f};
};

// What every polygon of one node shares while it is written.
struct NodePolygonContext {
    MeshAccess* Access = nullptr;
    // The node's first vertex per Maya vertex index.
    std::vector<VMVertexData*> FirstVertices;
    bool UseLightmapUVs = false;
    bool Tangents = false;
    bool Mirrored = false;
    bool SplitEveryReuse = false;
    // Brings the node's object-space normals and tangents into world space.
    MMatrix InverseMatrix;
    NodeRenderAttributes RenderAttributes;
    uint32_t MeshNodeNumber = 0;
    int AddedVertices = 0;
    int Polygons = 0;
    bool OutOfMemory = false;
    // Scratch reused for every polygon, so that a node costs no allocation per corner.
    MFloatVectorArray TangentScratch;
    MFloatVectorArray BinormalScratch;
    std::vector<VMVertexData*> CornerScratch;
};

// The polygon at the access's polygon iterator, with the set's material; tangents (when on) are
// fetched here and turned off for the rest of the node when Maya cannot give them.
void PolygonStep(NodePolygonContext& context, VMWorld& world, VMMaterial* material);
void PolygonStep(NodePolygonContext& context, VMModel& model, VMMaterial* material);

// The atlas texel centre of a colour material's diffuse colour, or the material's UV transform.
void MapMaterialUV(const VMMaterial* material, float uv[2]);

// The corner may stay on a vertex that already has values: UVs exactly equal, normals within
// 0.0001 and tangents within 0.001 per component (both bounds inclusive).
bool CornerFitsVertex(const VMVertexData& vertex, const CornerValues& corner, bool compareLightmap,
                      bool compareTangent);
