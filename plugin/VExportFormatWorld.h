#pragma once
// The static geometry formats: their pipeline gathers the world geometry of the scene, processes
// it in a fixed chain of phases and hands it to the format's Save.

#include "plugin/VExportFormat.h"
#include "plugin/VExportState.h"

#include <string>

class VMWorld;

class VExportFormatWorld : public VExportFormat {
public:
    VExportFormatWorld(const Description& description, ExportSession& session);

    // The node collector of the format's exports.
    virtual VExportState& GetExportState() { return m_state; }
    // The state the pipeline under way works on; null outside an export.
    VExportState* CurrentExportState() const { return m_currentState; }

protected:
    // Answers true also when saving failed: issue 4 carries that failure.
    bool Export() override;
    void Finish() override;

    virtual bool Save(VMWorld& world, const std::string& targetPath, const std::string& settingsText) = 0;

private:
    VExportState m_state;
    VExportState* m_currentState = nullptr;
};
