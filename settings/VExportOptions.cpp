#include "settings/VExportOptions.h"

#include <utility>

void SetExportOptionDefaults(VExportOptions& options, const ExportOptionDefaults& defaults)
{
    std::string rootBoneName = std::move(options.RootBoneName);
    options = VExportOptions {};
    options.RootBoneName = std::move(rootBoneName);

    const bool isStatic = defaults.FormatKind == kFormatKindStatic;
    options.ExportLights = isStatic;
    options.CenterMethod = isStatic ? 0 : 2;

    options.TextureUseProjDir = defaults.TextureUseProjDir;
    options.EmbedSettingsInScene = defaults.EmbedSettingsInScene;
    options.LightmapUVs = defaults.LightmapUVs;
    options.MeshFactor = defaults.MeshFactor;
    options.WarnIfMoreThan64kVerts = defaults.WarnIfMoreThan64kVerts;
}
