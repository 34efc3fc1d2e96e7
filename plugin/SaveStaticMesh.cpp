#include "plugin/SaveStaticMesh.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "formats/SaveCollisionMesh.h"
#include "formats/SaveVisibility.h"
#include "formats/SaveWorld.h"
#include "plugin/SaveCollisionHulls.h"
#include "report/LogWindow.h"
#include "settings/SettingsFile.h"
#include "settings/VExportOptions.h"

#include <random>

void StoreSettings(const std::string& targetPath, const std::string& settingsText)
{
    const std::string dataFolder = targetPath + "_data";
    if (!CreateDirectories(dataFolder))
        LogPrint("Failed to create settings directory : %s.\r\n", ShownPath(dataFolder).c_str());
    const std::string settingsFile = SettingsFilePath(targetPath);
    if (WriteFileAtomically(settingsFile, settingsText))
        LogPrint("Settings saved: %s.\r\n", ShownPath(settingsFile).c_str());
    else
        LogPrint("Settings saving failed: %s.\r\n", ShownPath(settingsFile).c_str());
}

VSaveParams StaticSaveParams(const VExportOptions& options)
{
    VSaveParams params;
    if (options.CreateDataDir) {
        // The editor finds a mesh's textures through resources.xml, so the data folder always
        // carries it beside the material groups the options ask for.
        params.Flags = static_cast<uint32_t>(options.ExportMaterialSettings) | SaveFlagVisibility | SaveFlagResources;
    }
    params.Console = [](const std::string& line) { LogRaw(line); };
    // Each export draws the zones' debug colours anew.
    params.SaveVisibility = [seed = std::random_device {}()](const VMWorld& world, const std::string& folder) {
        return SaveVisibility(world, folder, seed);
    };
    return params;
}

bool SaveStaticMesh(VMWorld& world, const std::string& meshPath, const VSaveParams& params,
                    const VExportOptions& options, const MeshNodeTable& nodes)
{
    LogPrint((params.Flags & SaveFlagShader) ? "Saving shader assignments\r\n" : "Not saving shader assignments\r\n");

    const bool meshSaved = SaveWorld(world, meshPath, params);
    LogPrint("SaveWorld returned %i\r\n", meshSaved ? 1 : 0);
    if (options.ColMesh == 0) {
        LogPrint("Not saving collision file\r\n");
        return meshSaved;
    }
    const std::string collisionPath = WithoutExtension(meshPath) + ".qcolmesh";
    const bool collisionSaved = options.ColMesh == 2 ? SaveCollisionHulls(world, nodes, collisionPath, params)
                                                     : SaveCollisionMesh(world, collisionPath, params);
    LogPrint("SaveCollisionMesh returned %i\r\n", collisionSaved ? 1 : 0);
    return meshSaved && collisionSaved;
}
