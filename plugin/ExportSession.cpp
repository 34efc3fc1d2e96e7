#include "plugin/ExportSession.h"

#include "plugin/PluginModule.h"
#include "plugin/VExportFormat.h"
#include "report/KestrelReportMessage.h"
#include "report/VIssueKind.h"
#include "report/VReportEntry.h"
#include "settings/ApplicationSettings.h"
#include "harvest/CountTriangles.h"
#include "report/DebugFile.h"
#include "settings/FindProjectFile.h"

#include <chrono>
#include <optional>

void InitForExport(ExportSession& session, VExportFormat& format, bool selectionOnly,
                   const ApplicationSettings& applicationSettings)
{
    session.Format = &format;
    session.FormatKind = format.FormatKind();
    session.SelectionOnly = selectionOnly;
    session.NoPrompt = false;

    ExportOptionDefaults defaults;
    defaults.FormatKind = format.FormatKind();
    defaults.TextureUseProjDir = format.UsesProject();
    defaults.EmbedSettingsInScene = applicationSettings.EmbedSettingsInScene;
    defaults.LightmapUVs = applicationSettings.LightmapUVs;
    defaults.MeshFactor = applicationSettings.MeshFactor;
    defaults.WarnIfMoreThan64kVerts = applicationSettings.WarnPolyCount;
    SetExportOptionDefaults(session.Options, defaults);

    session.SceneBox.Reset();
    session.Animations.Reset(0);

    HarvestState& harvest = session.Harvest;
    harvest.Parameters = HarvestParameters {};
    harvest.Parameters.Options = session.Options;
    harvest.Parameters.FormatKind = format.FormatKind();
    harvest.Parameters.SelectionOnly = selectionOnly;
    harvest.StartExport();
    const auto started = std::chrono::steady_clock::now();
    CountTriangles(harvest);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - started;
    DebugPrint("CountTriangles took %f seconds\r\n", seconds.count());
}

bool FindProjectForTarget(ExportSession& session, const VExportFormat& format)
{
    session.ProjectDirectory.clear();
    session.ProjectFile.clear();
    if (!format.UsesProject())
        return true;

    if (const std::optional<ProjectLocation> project = FindProjectFile(session.TargetDirectory)) {
        session.ProjectDirectory = project->Directory;
        session.ProjectFile = project->File;
        return true;
    }
    if (!format.RequiresProject())
        return true;

    VReport& report = ModuleReport();
    report.AddIssue(IssueProjectNotFound);
    report.Finalize(SeverityInformation);
    if (VReportView* view = TheServices().ReportView)
        report.ShowReportDialog(*view, "Issues during export");
    return false;
}
