#pragma once
// The model format: ".model" with its settings folder (the animation file comes with sampling).

#include "plugin/VExportFormatModel.h"

class VExportFormatVModel final : public VExportFormatModel {
public:
    explicit VExportFormatVModel(ExportSession& session);

    // The data folder's "_config.Xportel", else the older ".export.xml" beside the target.
    std::optional<std::string> ReadSettingsFile(std::string_view targetPath) const override;
    void LaunchViewer() override;

protected:
    // Stores the settings, then writes the model file and its side files. False when the target's
    // folder is missing, the settings could not be stored or the model not written.
    bool Save(VMModel& model, const std::string& targetPath, const std::string& settingsText) override;
};
