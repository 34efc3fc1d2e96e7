#include "plugin/BatchOptionsDialog.h"

#include "plugin/ExportSession.h"
#include "plugin/PluginModule.h"
#include "plugin/VExportFormat.h"
#include "report/LogWindow.h"
#include "settings/ApplicationSettings.h"
#include "settings/TextureDirectory.h"
#include "ui/VMessageBox.h"

#include <algorithm>
#include <initializer_list>

namespace {

constexpr int MaxStripLengthAccepted = 10000;

// A combo box shows only the values it lists; with none selected it reads back its default.
int32_t ComboValue(int32_t value, std::initializer_list<int32_t> items, int32_t fallback)
{
    return std::find(items.begin(), items.end(), value) != items.end() ? value : fallback;
}

bool ShowRefusal(const char* caption, std::string_view text)
{
    VMessageBoxRequest request;
    request.Caption = caption;
    request.Text = std::string(text);
    request.Owner = VMessageBoxOwner::ActiveWindow;
    request.Icon = VMessageBoxIcon::Exclamation;
    TheMessageBox().Show(request);
    return false;
}

bool ConfirmLowScaling()
{
    VMessageBoxRequest request;
    request.Caption = "Warning!";
    request.Text = "Warning! The scaling for this export is set to an extremely\r\n"
                   "low value. This may cause the export not to be visible at all\r\n"
                   "in the engine. Possible reason: Scaling set too low or to zero.\r\n"
                   "Are you sure you want to do this?";
    request.Buttons = VMessageBoxButtons::YesNo;
    request.DefaultAnswer = VMessageBoxAnswer::Yes;
    return TheMessageBox().Show(request) == VMessageBoxAnswer::Yes;
}

} // namespace

bool BatchOptionsDialog::ShowOptionsDialog(const VExportFormat& format, ExportSession& session)
{
    VExportOptions& options = session.Options;
    const bool meshDialog = format.StaticGeometryControls();

    const std::string textureDirectory = TextureDirectoryForDisplay(
        options.TextureSubdir, options.TextureUseProjDir, session.ProjectDirectory, session.TargetDirectory);
    if (IsInvalidTextureDirectory(textureDirectory))
        return ShowRefusal("Error", kInvalidTextureSubdirMessage);
    session.TextureDirectory = textureDirectory;

    if (options.MeshFactor > -0.0001f && options.MeshFactor < 0.0001f && !ConfirmLowScaling()) {
        options.MeshFactor = 0.0f;
        return false;
    }

    options.LightmapUVs = meshDialog ? ComboValue(options.LightmapUVs, {0, 1, 2}, 1)
                                     : ComboValue(options.LightmapUVs, {0, 2}, 1);
    options.LightMapStretchFactor = std::clamp(options.LightMapStretchFactor, 0.0f, 1.0f);
    options.DoubleSided = ComboValue(options.DoubleSided, {0, 1, 2}, 2);
    // The mesh dialog has no root-bone button; a record asking for it shows no centring choice.
    options.CenterMethod = meshDialog ? ComboValue(options.CenterMethod, {0, 1, 3, 4}, 0)
                                      : ComboValue(options.CenterMethod, {0, 1, 2, 3, 4}, 0);
    options.OptimizeMesh = options.OptimizeMesh != 0 ? 1 : 0;
    options.EpsVert = std::max(options.EpsVert, 0.0f);
    options.EpsUV = std::max(options.EpsUV, 0.0f);
    // Only the five check boxes of the dialog survive a confirmation.
    options.ExportMaterialSettings &= 0x1F;

    if (meshDialog) {
        options.DoLighting = false;
        options.ColMesh = ComboValue(options.ColMesh, {0, 1, 2}, 1);
        options.ComputeVisibility = ComboValue(options.ComputeVisibility, {-1, 0, 1, 4, 3}, -1);
        options.ExportStrips = true;
        options.StripPerformance = 4;
        if (options.SetMaxStripLength && options.MaxStripLength > MaxStripLengthAccepted)
            return ShowRefusal("Error!", "Error! The max strip length must be below 10000.\r\n");
    }

    if (TheApplicationSettings().ShowLog)
        FindLogWindow();
    return true;
}
