#pragma once
// What the harvest of one export needs from the session, and the per-export state that its
// passes share. The session fills the parameters once; StartExport resets the state before the
// passes run, as each pipeline does at its start.

#include "harvest/FrameTimes.h"
#include "harvest/MaterialCache.h"
#include "harvest/MeshNodeTable.h"
#include "settings/ResolveTexture.h"
#include "settings/TextureNameTable.h"
#include "settings/VExportOptions.h"

#include <maya/MDagPath.h>

#include <cstdint>

class VBVisBuilder;
class VReport;

struct HarvestParameters {
    VExportOptions Options;
    int FormatKind = kFormatKindStatic;
    bool SelectionOnly = false;
    bool Recurse = true;
    // One Maya UI distance unit in centimetres.
    double UnitFactor = 1.0;
    // A muscle-kind vertex animation is exported: every reuse of a vertex makes a copy, so that
    // each corner can move on its own.
    bool MuscleAnimation = false;
    TextureResolveContext Textures;
};

struct PrecalcStats {
    int32_t VertexCount = 0;
    int32_t TriangleCount = 0;
    int32_t MeshNodeCount = 0;
    int32_t JointCount = 0;
    // The skeleton root candidate.
    MDagPath FirstJoint;
    // Maya world space and axes, centimetres.
    float Min[3] = {1e8f, 1e8f, 1e8f};
    float Max[3] = {-1e8f, -1e8f, -1e8f};
    uint8_t InPrecalculation = 0;
};

// The model's collision box when a node carries "ExportAs" = 1.
struct ModelBoundsBox {
    uint8_t BoxGiven = 0;
    float Min[3] = {0.0f, 0.0f, 0.0f};
    float Max[3] = {0.0f, 0.0f, 0.0f};
};

struct HarvestState {
    HarvestState(const HarvestParameters& parameters, VReport& report) : Parameters(parameters), Report(report) {}

    HarvestParameters Parameters;
    VReport& Report;

    PrecalcStats Stats;
    MeshNodeTable MeshNodes;
    MaterialCache Materials;
    TextureNameTable TextureNames;
    ModelBoundsBox ModelBounds;
    // The visibility builder of a static export that computes visibility: portals and
    // anti-portals go to it. Null otherwise; set and cleared by the pipeline.
    VBVisBuilder* VisBuilder = nullptr;
    // Vertices (first and split) of the nodes exported so far, and their polygons.
    int32_t RunningVertexBase = 0;
    int32_t RunningPolygonCount = 0;
    // The key times of the scene's animation curves, gathered once per export.
    KeyTimeSet KeyTimes;
    bool KeyTimesGathered = false;

    bool IsStaticExport() const { return Parameters.FormatKind == kFormatKindStatic; }

    // Everything a pipeline resets before its passes run.
    void StartExport()
    {
        Stats = PrecalcStats{};
        MeshNodes.Reset(0);
        Materials.Reset();
        TextureNames.Clear();
        ModelBounds = ModelBoundsBox{};
        RunningVertexBase = 0;
        RunningPolygonCount = 0;
        KeyTimes.clear();
        KeyTimesGathered = false;
    }
};
