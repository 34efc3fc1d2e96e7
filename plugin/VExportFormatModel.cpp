#include "plugin/VExportFormatModel.h"

#include "base/Path.h"
#include "geometry/AdjustAnimations.h"
#include "geometry/BoneAnimationBounds.h"
#include "geometry/LimitInfluences.h"
#include "geometry/LocalBoneTransforms.h"
#include "geometry/ModelBounds.h"
#include "geometry/OptimizeMesh.h"
#include "geometry/PlaceModel.h"
#include "geometry/RemoveDeadBones.h"
#include "geometry/ResortBones.h"
#include "geometry/SkinEncoding.h"
#include "geometry/SortModelPrimitives.h"
#include "geometry/TessellateFaces.h"
#include "harvest/EnterBindPose.h"
#include "harvest/GetKeyFrames.h"
#include "harvest/GetSkins.h"
#include "harvest/HarvestState.h"
#include "harvest/MaterialNameCheck.h"
#include "harvest/ModelMeshExporter.h"
#include "harvest/SampleAnimations.h"
#include "model/CheckMaterials.h"
#include "plugin/ExportSession.h"
#include "plugin/PipelineSteps.h"
#include "report/DebugFile.h"
#include "report/GeometryLog.h"
#include "report/KestrelReportMessage.h"
#include "report/LogWindow.h"
#include "report/Progress.h"
#include "report/VIssueKind.h"

#include <maya/MGlobal.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <vector>

namespace {

// The mesh pass's export flags: bind matrices from the skin clusters, vertices before skinning.
constexpr uint32_t ModelMeshFlags = 3;
constexpr float LowestBlendThreshold = 0.001f;
constexpr float DegreesToRadians = 0.017453292f;

bool HasVertexAnimationType(const VAnimationTable& animations)
{
    return std::any_of(animations.begin(), animations.end(), [](const VAnimationDescription& animation) {
        return animation.Type == kAnimTypeMuscle || animation.Type == kAnimTypeMorphTarget;
    });
}

void LimitBlending(VMModel& model, const VExportOptions& options)
{
    if (options.ExportBlended != 0) {
        LogPrint("Limiting blended vertex influences...\r\n");
        if (options.MaxNumBones < VMSkinVertex::MaxInfluences)
            LimitInfluences(model, options.MaxNumBones);
        if (options.BlendThreshold > LowestBlendThreshold)
            ApplyBlendThreshold(model, options.BlendThreshold);
        return;
    }
    // Without blending every vertex keeps its strongest bone alone, at weight 1.
    ApplyBlendThreshold(model, LowestBlendThreshold);
    LimitInfluences(model, 1);
}

void PruneAndSortBones(VMSkeleton& skeleton, const VExportOptions& options, VReport& report)
{
    if (skeleton.Bones.IsEmpty()) {
        report.AddIssue(IssueNoBonesInAnimation);
        return;
    }
    if (options.RemoveBones != 0) {
        LogPrint("Removing dead bones...\r\n");
        std::vector<std::unique_ptr<VMBone>> pruned;
        RemoveDeadBones(skeleton, pruned);
        if (skeleton.Bones.IsEmpty())
            report.AddIssue(IssueAllBonesEliminated);
        LogPrint("Pruned bones:\r\n");
        for (const std::unique_ptr<VMBone>& bone : pruned)
            LogPrint("%s\r\n", bone->Name.c_str());
    }
    LogPrint("Resorting bones...\r\n");
    ResortBones(skeleton);
}

// The option's methods by the model's own: 1 the box centre, 2 the root bone, 3 the floor point;
// 4 places a nested export at its prefab node.
void CenterByOption(VMModel& model, int centerMethod, const VExportState& state)
{
    switch (centerMethod) {
    case 1:
        CenterModel(model, 1);
        break;
    case 2:
        CenterModel(model, 4);
        break;
    case 3:
        CenterModel(model, 3);
        break;
    case 4:
        if (state.PlacementTaken)
            TransformModel(model, state.Placement);
        break;
    default:
        break;
    }
}

// The turn about the engine's up axis z by RotateYaw degrees.
VMTransform YawRotation(float degrees)
{
    const float angle = degrees * DegreesToRadians;
    VMTransform rotation;
    rotation.At(0, 0) = std::cos(angle);
    rotation.At(0, 1) = std::sin(angle);
    rotation.At(1, 0) = -std::sin(angle);
    rotation.At(1, 1) = std::cos(angle);
    return rotation;
}

} // namespace

VExportFormatModel::VExportFormatModel(const Description& description, ExportSession& session)
    : VExportFormat(description, session)
    , m_state(session.Harvest)
{
}

bool VExportFormatModel::Export()
{
    ExportSession& session = Session();
    const VExportOptions& options = session.Options;
    HarvestState& harvest = session.Harvest;
    VReport& report = ModuleReport();
    VMModel& model = m_model;

    StartHarvest(session);
    BeginPhase("Harvesting meshes");
    LogPrint("Starting Model Export...\r\n");

    const auto gatheringStarted = std::chrono::steady_clock::now();
    GetKeyFrames(harvest, ReadTimeBase(), harvest.KeyTimes);
    harvest.KeyTimesGathered = true;
    const auto gathering = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                                 gatheringStarted);
    DebugPrint("GetKeyFrames took %f seconds\r\n", static_cast<double>(gathering.count()) / 1000.0);

    // Harvesting fills every vertex's tangent.
    model.Clear();
    model.HasTangents = 1;
    if (options.ExportBones)
        model.Skeleton = VMModel::NewSkeleton();
    DebugPrint("\r\n***\r\n*** Mesh Calculation Phase\r\n***\r\n\r\n");
    if (options.ExportBones)
        model.HasBones = 1;
    if (HasVertexAnimationType(session.Animations))
        model.HasVertexAnimation = 1;
    // Deformed frames give the corners of one Maya vertex different normals, so a vertex that
    // moves splits at every corner, the same way in every frame.
    harvest.Parameters.MuscleAnimation = model.HasVertexAnimation != 0;
    if (options.ExportBlended != 0)
        model.Blended = 1;

    session.RestoreFrame = EnterBindPose(harvest).as(MTime::uiUnit());
    session.SceneBox.Reset();

    LogPrint("Mesh harvesting phase...\r\n");
    VExportState& state = GetExportState();
    state.Reset();
    TakeRootPlacement(state, options.CenterMethod, RootPath());
    state.Iterate(RootPath(), session.SelectionOnly, true);

    DebugPrint("GetMeshes started\r\n");
    GetMeshes(harvest, model, ModelMeshFlags, RootPath());
    // Otherwise the user finds out from an asset that shows nothing.
    if (model.Faces.Count() == 0)
        report.AddIssue(IssueEmptyScene);
    // Every later pass expects triangles.
    ReportPassResult("TessellateFaces", TessellateFaces(model), report);
    model.Enumerate();
    DebugPrint("GetMeshes done\r\n");

    if (options.ExportBones) {
        GetSkins(harvest, model);
        DebugPrint("Calculating local bones transformations started\r\n");
        FindRootBone(*model.Skeleton, options.RootBoneName);
        ComputeLocalTransforms(*model.Skeleton);
    }

    LimitBlending(model, options);

    // After limiting, which decides which bones still hold vertices.
    if (options.ExportBones)
        PruneAndSortBones(*model.Skeleton, options, report);

    LogPrint("Calculating global visibility bounding box\r\n");
    ComputeModelBounds(model);
    LogPrint("Pre-encoding vertices...\r\n");
    EncodeVertices(model);

    BeginPhase("Animations");
    LogPrint("Animation phase...\r\n");
    model.Enumerate();
    // A step away and back makes Maya evaluate the scene at frame 0 afresh.
    MGlobal::viewFrame(1.0);
    MGlobal::viewFrame(0.0);
    SampleAnimations(harvest, model, session.Animations);

    const ModelBoundsBox& customBox = harvest.ModelBounds;
    if (customBox.BoxGiven) {
        LogPrint("Setting custom collision bounding box\r\n");
        std::copy_n(customBox.Min, 3, model.CollisionBox.Min);
        std::copy_n(customBox.Max, 3, model.CollisionBox.Max);
    }

    BeginPhase("Placing and encoding");
    LogPrint("Centering mesh...\r\n");
    CenterByOption(model, options.CenterMethod, state);
    // About the origin, so after centring: the centre or floor point stays where it was put.
    if (NeedsScaling(options.MeshFactor)) {
        LogPrint("Scaling mesh...\r\n");
        ScaleModel(model, options.MeshFactor);
    }

    // Centring and scaling moved the vertices: their bounds and bone-space positions again.
    LogPrint("Encoding vertices...\r\n");
    LogPrint("Calculating global visibility bounding box\r\n");
    ComputeModelBounds(model);
    if (!customBox.BoxGiven)
        model.CollisionBox = model.Box;
    EncodeVertices(model);
    if (model.Skeleton) {
        LogPrint("Calculating skeleton bounding boxes...\r\n");
        ComputeBoneBounds(*model.Skeleton);
    }

    LogPrint("Middle Enumeration...\r\n");
    model.Enumerate();

    BeginPhase("Optimizing");
    LogPrint("Optimizing mesh (%i)...\r\n", options.OptimizeMesh);
    {
        DebugFileForwarder trace;
        const ScopedGeometryLogSink traceSink(&trace);
        ReportPassResult("OptimizeMesh", OptimizeMesh(model, options.EpsVert), report);
    }

    // After merging, which decides how many vertices there are.
    if (options.WarnIfMoreThan64kVerts && model.Vertices.Count() > MaxVerticesWithoutWarning)
        report.AddIssue(IssueMoreThan64kVertices);

    LogPrint("Adjusting animations...\r\n");
    if (AdjustAnimations(model, options.NewRotDelta) != 0)
        report.AddIssue(IssueBoneAnimationAdjustment);
    DropUnusedMaterials(model);
    CheckDuplicateMaterialNames(model, report);

    LogPrint("Sorting primitives...\r\n");
    ReportPassResult("SortPrimitives", SortPrimitives(model), report);

    // The frames' boxes hold the skin as it is finally sorted and placed.
    if (model.HasBones) {
        LogPrint("Calculating bone animation boundaries...\r\n");
        ComputeBoneAnimationBounds(model);
    }

    LogPrint("Final enumeration...\r\n");
    model.Enumerate();

    if (options.RotateYaw != 0.0f)
        TransformModel(model, YawRotation(options.RotateYaw));

    BeginPhase("Saving");
    LogPrint("Saving model to '%s'...\r\n", ShownPath(session.TargetFile).c_str());
    if (!Save(model, session.TargetFile, SettingsText()))
        report.AddIssue(IssueFileNotSaved, ShownPath(session.TargetFile));
    EndPhase();

    DebugPrint("Freeing...\r\n");
    session.Animations.Reset(0);
    harvest.MeshNodes.Reset(0);
    model.Clear();
    harvest.Materials.Clear();

    LogPrint("Finished\r\n");
    DebugPrint("\r\n***\r\n*** Finished\r\n***\r\n\r\n");
    return true;
}

void VExportFormatModel::Finish()
{
    DeleteCookedMeshes();
    m_state.Reset();
    Session().Harvest.MeshNodes.Reset(0);
}
