#pragma once
// The options dialog of a batch export: nobody sees it, it confirms itself with the record as
// it stands and stores what a confirmation stores.

#include "plugin/VExportOptionsDialog.h"

class BatchOptionsDialog final : public VExportOptionsDialog {
public:
    // Refuses (answers false) what the dialog would refuse: an invalid texture sub-folder or a
    // maximum strip length above 10000, each told in a message box.
    bool ShowOptionsDialog(const VExportFormat& format, ExportSession& session) override;
};
