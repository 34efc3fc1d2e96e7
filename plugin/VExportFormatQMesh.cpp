#include "plugin/VExportFormatQMesh.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "plugin/ExportSession.h"
#include "plugin/PluginModule.h"
#include "plugin/SaveStaticMesh.h"
#include "report/KestrelReportMessage.h"
#include "report/VIssueKind.h"
#include "settings/ApplicationSettings.h"
#include "settings/SettingsFile.h"

namespace {

constexpr VExportFormat::Description QMeshDescription {
    .ShortName = "QMESH",
    .TranslatorName = "Zephra_Static_Mesh",
    .FormatKind = kFormatKindStatic,
    .StaticGeometryControls = true,
    .UsesProject = true,
    .RequiresProject = false,
};

} // namespace

VExportFormatQMesh::VExportFormatQMesh(ExportSession& session)
    : VExportFormatWorld(QMeshDescription, session)
{
}

std::optional<std::string> VExportFormatQMesh::ReadSettingsFile(std::string_view targetPath) const
{
    return ::ReadSettingsFile(targetPath, false);
}

void VExportFormatQMesh::LaunchViewer()
{
    StartViewer(TheApplicationSettings().MeshViewer, TheApplicationSettings().MeshArgs);
}

bool VExportFormatQMesh::Save(VMWorld& world, const std::string& targetPath, const std::string& settingsText)
{
    if (!DirectoryExists(DirectoryOf(targetPath))) {
        ModuleReport().AddIssue(IssueFileNotSaved);
        return false;
    }
    const VExportOptions& options = Session().Options;
    if (options.CreateDataDir)
        StoreSettings(targetPath, settingsText);
    return SaveStaticMesh(world, targetPath, StaticSaveParams(options), options, Session().Harvest.MeshNodes);
}
