#pragma once
// The options dialog of every export: the session's record shown in the dialog of its format, in
// the host's view when there is one and Maya runs with prompts, else confirmed unseen.

#include "plugin/VExportOptionsDialog.h"

class OptionsDialogHost final : public VExportOptionsDialog {
public:
    bool ShowOptionsDialog(const VExportFormat& format, ExportSession& session) override;
};
