#include "plugin/VExportFormatQMesh.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "formats/SaveCollisionMesh.h"
#include "formats/SaveParams.h"
#include "formats/SaveWorld.h"
#include "plugin/ExportSession.h"
#include "plugin/PluginModule.h"
#include "plugin/SaveCollisionHulls.h"
#include "report/KestrelReportMessage.h"
#include "report/LogWindow.h"
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

void StoreSettings(const std::string& targetPath, const std::string& settingsText)
{
    const std::string dataFolder = targetPath + "_data";
    if (!CreateDirectories(dataFolder))
        LogPrint("Failed to create settings directory : %s.\r\n", dataFolder.c_str());
    const std::string settingsFile = SettingsFilePath(targetPath);
    if (WriteFileAtomically(settingsFile, settingsText))
        LogPrint("Settings saved: %s.\r\n", settingsFile.c_str());
    else
        LogPrint("Settings saving failed: %s.\r\n", settingsFile.c_str());
}

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
    VSaveParams params;
    if (options.CreateDataDir) {
        // The editor finds a mesh's textures through resources.xml, so the data folder always
        // carries it beside the material groups the options ask for.
        params.Flags = static_cast<uint32_t>(options.ExportMaterialSettings) | SaveFlagVisibility | SaveFlagResources;
        StoreSettings(targetPath, settingsText);
    }
    params.Console = [](const std::string& line) { LogRaw(line); };

    LogPrint((params.Flags & SaveFlagShader) ? "Saving shader assignments\r\n" : "Not saving shader assignments\r\n");

    const bool meshSaved = SaveWorld(world, targetPath, params);
    LogPrint("SaveWorld returned %i\r\n", meshSaved ? 1 : 0);
    if (options.ColMesh == 0) {
        LogPrint("Not saving collision file\r\n");
        return meshSaved;
    }
    const std::string collisionPath = WithoutExtension(targetPath) + ".qcolmesh";
    const bool collisionSaved = options.ColMesh == 2
        ? SaveCollisionHulls(world, Session().Harvest.MeshNodes, collisionPath, params)
        : SaveCollisionMesh(world, collisionPath, params);
    LogPrint("SaveCollisionMesh returned %i\r\n", collisionSaved ? 1 : 0);
    return meshSaved && collisionSaved;
}
