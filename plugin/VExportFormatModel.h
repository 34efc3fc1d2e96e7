#pragma once
// The skinned model formats: their pipeline harvests the scene's meshes, bones and skins into the
// model container, processes it in a fixed chain of phases and hands it to the format's Save.

#include "model/VMModel.h"
#include "plugin/VExportFormat.h"
#include "plugin/VExportState.h"

#include <string>

class VExportFormatModel : public VExportFormat {
public:
    VExportFormatModel(const Description& description, ExportSession& session);

    VExportState& GetExportState() { return m_state; }

protected:
    // Answers true also when saving failed: issue 4 carries that failure.
    bool Export() override;
    void Finish() override;

    virtual bool Save(VMModel& model, const std::string& targetPath, const std::string& settingsText) = 0;

private:
    VExportState m_state;
    VMModel m_model;
};
