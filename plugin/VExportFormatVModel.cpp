#include "plugin/VExportFormatVModel.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "formats/SaveAnimations.h"
#include "formats/SaveModel.h"
#include "formats/SaveParams.h"
#include "formats/chunk/LastError.h"
#include "geometry/ModelTangents.h"
#include "plugin/ExportSession.h"
#include "plugin/PipelineSteps.h"
#include "plugin/PluginModule.h"
#include "report/KestrelReportMessage.h"
#include "report/LogWindow.h"
#include "report/VIssueKind.h"
#include "settings/ApplicationSettings.h"
#include "settings/SettingsFile.h"
#include "ui/VMessageBox.h"

namespace {

constexpr VExportFormat::Description ModelDescription {
    .ShortName = "Model",
    .TranslatorName = "Zephra_Model_File",
    .FormatKind = kFormatKindModel,
    .StaticGeometryControls = false,
    .UsesProject = true,
    .RequiresProject = false,
};

// The settings block in the data folder; a failure ends the save, so that the next export does
// not silently start from older settings than the model it sits beside.
bool StoreSettings(const std::string& targetPath, const std::string& settingsText)
{
    const std::string dataFolder = targetPath + "_data";
    if (!CreateDirectories(dataFolder)) {
        LogPrint("Failed to create settings directory : %s.\r\n", ShownPath(dataFolder).c_str());
        return false;
    }
    const std::string settingsFile = SettingsFilePath(targetPath);
    if (!WriteFileAtomically(settingsFile, settingsText))
        return false;
    LogPrint("Settings saved: %s.\r\n", ShownPath(settingsFile).c_str());
    const std::string legacyFile = LegacySettingsFilePath(targetPath);
    if (FileExists(legacyFile)) {
        LogPrint("Deleting old settings file: %s.\r\n", ShownPath(legacyFile).c_str());
        DeleteFileAt(legacyFile);
    }
    return true;
}

void ShowSaveError(const char* caption, const std::string& text)
{
    VMessageBoxRequest request;
    request.Caption = caption;
    request.Text = text;
    request.Owner = VMessageBoxOwner::Desktop;
    TheMessageBox().Show(request);
}

} // namespace

VExportFormatVModel::VExportFormatVModel(ExportSession& session)
    : VExportFormatModel(ModelDescription, session)
{
}

std::optional<std::string> VExportFormatVModel::ReadSettingsFile(std::string_view targetPath) const
{
    return ::ReadSettingsFile(targetPath, true);
}

void VExportFormatVModel::LaunchViewer()
{
    StartViewer(TheApplicationSettings().ModelViewer, TheApplicationSettings().ModelArgs);
}

bool VExportFormatVModel::Save(VMModel& model, const std::string& targetPath, const std::string& settingsText)
{
    if (!DirectoryExists(DirectoryOf(targetPath))) {
        ModuleReport().AddIssue(IssueFileNotSaved);
        return false;
    }

    const VExportOptions& options = Session().Options;
    VSaveParams params;
    if (options.CreateDataDir) {
        if (!StoreSettings(targetPath, settingsText))
            return false;
        // As for static meshes, the editor finds a model's textures through resources.xml.
        params.Flags = static_cast<uint32_t>(options.ExportMaterialSettings) | SaveFlagResources;
    }
    LogPrint((options.ExportMaterialSettings & SaveFlagShader) ? "Saving shader assignments\r\n"
                                                               : "Not saving shader assignments\r\n");

    // The writer takes tangents as they stand; an exported model always has them from harvesting.
    if (!model.HasTangents)
        ReportPassResult("ComputeModelTangents", ComputeModelTangents(model), ModuleReport());
    bool saved = SaveModel(model, targetPath, params);
    if (saved) {
        LogPrint("Model saved: %s.\r\n", ShownPath(targetPath).c_str());
    } else {
        const std::string reason = LastError().Text;
        LogPrint("Model save failed. Reason:\r\n%s.\r\n", reason.c_str());
        ShowSaveError("Error saving model:", reason);
    }
    if (model.BoneAnimations.IsEmpty() && model.VertexAnimations.IsEmpty())
        return saved;

    const std::string animationPath = WithoutExtension(targetPath) + ".anim";
    if (SaveAnimations(model, animationPath)) {
        LogPrint("Animation saved: %s.\r\n", ShownPath(animationPath).c_str());
        return saved;
    }
    LogPrint("Animation save failed: %s.\r\n", ShownPath(animationPath).c_str());
    ShowSaveError("Error saving animation file:", ShownPath(animationPath));
    return false;
}
