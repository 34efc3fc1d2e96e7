#include "plugin/PipelineSteps.h"

#include "harvest/EngineTransform.h"
#include "plugin/ExportSession.h"
#include "plugin/VExportState.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"

namespace {

constexpr int GeometryOutOfMemory = -301;

} // namespace

void StartHarvest(ExportSession& session)
{
    HarvestParameters& parameters = session.Harvest.Parameters;
    parameters.Options = session.Options;
    parameters.FormatKind = session.FormatKind;
    parameters.SelectionOnly = session.SelectionOnly;
    parameters.UnitFactor = session.UnitFactor;
    parameters.Textures.TextureDirectory = session.TextureDirectory;
    parameters.Textures.ProjectDirectory = session.ProjectDirectory;
    parameters.Textures.BaseDirectory = session.BaseDirectory;
    parameters.Textures.TextureBehaviour = session.Options.TextureBehaviour;
    parameters.Textures.ProjRelativeFilenames = session.Options.ProjRelativeFilenames;
    session.Harvest.Materials.Reset();
    session.Harvest.MeshNodes.Reset(session.Harvest.Stats.MeshNodeCount);
}

void TakeRootPlacement(VExportState& state, int centerMethod, const MDagPath& root)
{
    if (centerMethod == 4 && root.isValid()) {
        state.Placement = PlacementFromNode(root);
        state.PlacementTaken = 1;
    }
}

void ReportPassResult(const char* pass, int result, VReport& report)
{
    if (result == GeometryOutOfMemory)
        report.AddIssue(IssueOutOfMemory, pass);
}

bool NeedsScaling(float meshFactor)
{
    return meshFactor < 0.99999f || meshFactor > 1.00001f;
}
