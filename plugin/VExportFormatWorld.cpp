#include "plugin/VExportFormatWorld.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "geometry/AdjustTriangles.h"
#include "geometry/StripWorld.h"
#include "geometry/TessellatePolygons.h"
#include "geometry/lightmap/GenerateLightmapUVs.h"
#include "geometry/visibility/VBVisBuilder.h"
#include "harvest/HarvestState.h"
#include "harvest/MaterialNameCheck.h"
#include "model/CheckMaterials.h"
#include "model/ComputeWorldBounds.h"
#include "model/ScaleWorld.h"
#include "model/SortPrimitives.h"
#include "model/Translate.h"
#include "plugin/ApplyPlacement.h"
#include "plugin/ExportSession.h"
#include "plugin/PipelineSteps.h"
#include "plugin/TotalTimeLine.h"
#include "plugin/VExportLogger.h"
#include "report/DebugFile.h"
#include "report/GeometryLog.h"
#include "report/KestrelReportMessage.h"
#include "report/LogWindow.h"
#include "report/Progress.h"
#include "report/VIssueKind.h"

#include <chrono>
#include <memory>

namespace {

void CenterWorld(VMWorld& world, int centerMethod, const VExportState& state)
{
    if (centerMethod == 4) {
        if (state.PlacementTaken)
            ApplyPlacement(world, state.Placement);
        return;
    }
    if (centerMethod != 1 && centerMethod != 3)
        return;
    ComputeWorldBounds(world);
    if (world.Bounds.IsEmpty())
        return;
    const VMBoundingBox& box = world.Bounds;
    const float offset[3] = {-(box.Min[0] + box.Max[0]) * 0.5f, -(box.Min[1] + box.Max[1]) * 0.5f,
                             centerMethod == 3 ? -box.Min[2] : -(box.Min[2] + box.Max[2]) * 0.5f};
    Translate(world, offset);
}

StripParams StripParamsFrom(const VExportOptions& options)
{
    StripParams params;
    params.StripPerformance = options.StripPerformance;
    params.StripObject = options.StripObject;
    params.MaxStripSize = options.MaxStripSize;
    params.MaxStripLength = options.MaxStripLength;
    params.MinStripLength = options.MinStripLength;
    return params;
}

// A failed computation leaves the world without visibility and the export goes on; a data folder
// that cannot be made only switches the dump off.
void ComputeVisibility(VBVisBuilder& builder, VMWorld& world, const ExportSession& session, VGLogger& logger,
                       VReport& report)
{
    LogPrint("Calculating visibility...\r\n");
    builder.SetLogger(&logger);
    builder.SetPolygons(world);
    bool dump = session.Options.DebugVisInfo;
    std::string dumpPath;
    if (dump) {
        const std::string dataFolder = session.TargetFile + "_data";
        if (CreateDirectories(dataFolder)) {
            dumpPath = JoinPath(dataFolder, "_debug.VISINFO");
        } else {
            LogPrint("Failed to create settings directory : %s.\r\n", ShownPath(dataFolder).c_str());
            dump = false;
        }
    }
    if (builder.Build(session.Options.ComputeVisibility, dump, dumpPath, report) != 0) {
        LogPrint("Calculating visibility completed...\r\n");
        builder.ExportToWorld(world);
    } else {
        LogPrint("Error while calculating visibility. Visibility will not be added to world\r\n");
    }
    builder.SetLogger(nullptr);
}

} // namespace

VExportFormatWorld::VExportFormatWorld(const Description& description, ExportSession& session)
    : VExportFormat(description, session)
    , m_state(session.Harvest)
{
}

bool VExportFormatWorld::Export()
{
    ExportSession& session = Session();
    const VExportOptions& options = session.Options;
    HarvestState& harvest = session.Harvest;
    VReport& report = ModuleReport();
    VExportLogger logger;

    StartHarvest(session);
    BeginPhase("Harvesting meshes");

    LogPrint("*** ExportWorld started ***\r\n");
    const auto started = std::chrono::steady_clock::now();

    // Every static export has a builder, so the harvest takes the scene's portals whether or not
    // this export computes visibility; only the build itself follows the option.
    auto visBuilder = std::make_unique<VBVisBuilder>();
    harvest.VisBuilder = visBuilder.get();
    session.SceneBox.Reset();

    LogRaw("Calculating meshes and textures...\r\n");

    VExportState& state = GetExportState();
    m_currentState = &state;
    state.Reset();

    TakeRootPlacement(state, options.CenterMethod, RootPath());

    state.Iterate(RootPath(), session.SelectionOnly, true);

    // Harvesting fills every vertex's tangent.
    VMWorld& world = state.World;
    world.Clear();
    world.HasTangents = 1;

    GetMeshes(harvest, world, state);
    // Otherwise the user finds out from an asset that shows nothing.
    if (world.Polygons.Count() == 0 && world.Lights.Count() == 0 && !state.PlacesOtherAssets())
        report.AddIssue(IssueEmptyScene);

    TessellatePolygons(world);
    world.Enumerate();

    // Before centring and scaling, which move the areas' boxes and portals with the geometry.
    if (options.ComputeVisibility != VBModeOff) {
        BeginPhase("Visibility");
        ComputeVisibility(*visBuilder, world, session, logger, report);
    }

    BeginPhase("Welding");

    LogPrint("Centering Mesh...\r\n");
    CenterWorld(world, options.CenterMethod, state);

    // About the origin, so after centring: the centre or floor point stays where it was put.
    if (NeedsScaling(options.MeshFactor)) {
        LogPrint("Scaling Mesh...\r\n");
        ScaleWorld(world, options.MeshFactor);
    }

    ComputeWorldBounds(world);

    LogPrint("Checking materials...\r\n");
    CheckMaterials(world);
    CheckDuplicateMaterialNames(world, report);

    ReportPassResult("AdjustTriangles",
                     AdjustTriangles(world, options.EpsVert, options.EpsUV, options.OptimizeMesh != 0), report);

    // On the welded mesh, so that charts follow the surface across the welded seams.
    if (options.LightmapUVs == 1) {
        BeginPhase("Lightmap UVs");
        LogPrint("Generating UVs...\r\n");
        ReportPassResult("GenerateLightmapUVs",
                         GenerateLightmapUVs(world, LightmapAtlasSize, options.LightMapStretchFactor, &logger), report);
    }

    // After welding, which decides how many vertices there are.
    if (options.WarnIfMoreThan64kVerts && world.Vertices.Count() > MaxVerticesWithoutWarning)
        report.AddIssue(IssueMoreThan64kVertices);

    if (options.ExportStrips) {
        LogWindowForwarder progress;
        const ScopedGeometryLogSink progressSink(&progress);
        BeginPhase("Strips");
        LogPrint("Generating triangle strips...\r\n");
        StripStatistics statistics;
        const int result = StripWorld(world, StripParamsFrom(options), &statistics);
        ReportPassResult("StripWorld", result, report);
        if (result == 0)
            report.AddIssue(IssueStripStatistics,
                            Format("Strips and lists: %d\r\nMaterials: %d\r\nVis areas: %d", statistics.TriListCount,
                                   statistics.MaterialCount, statistics.VisAreaCount));
    }

    LogPrint("Sorting primitivies...\r\n");
    SortPrimitives(world);

    LogPrint("Final enumeration...\r\n");
    world.Enumerate();

    harvest.Materials.Clear();

    DebugPrint("Freeing visibility builder...\r\n");
    harvest.VisBuilder = nullptr;
    visBuilder->Clear();
    visBuilder.reset();

    BeginPhase("Saving");
    LogPrint("Saving to '%s'...\r\n", ShownPath(session.TargetFile).c_str());
    if (!Save(world, session.TargetFile, SettingsText()))
        report.AddIssue(IssueFileNotSaved, ShownPath(session.TargetFile));
    EndPhase();

    DebugPrint("Managed to save. Now, trying to deinitialize\r\n");

    const auto elapsed =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - started).count();
    DebugPrint("Freeing mesh nodes...\r\n");
    harvest.MeshNodes.Reset(0);
    DebugPrint("File dir\r\n");
    world.Clear();

    LogRaw("Finished!\r\n");
    LogRaw(TotalTimeLine(elapsed));
    return true;
}

void VExportFormatWorld::Finish()
{
    // The engine cooks the meshes it loads into files beside them; after an export they are stale.
    DeleteCookedMeshes();
    if (m_currentState != nullptr)
        m_currentState->Reset();
    m_currentState = nullptr;
    Session().Harvest.MeshNodes.Reset(0);
}
