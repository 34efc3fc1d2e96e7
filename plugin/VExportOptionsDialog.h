#pragma once
// The export options dialog is a user-interface service: the plug-in shows the Windows dialog,
// a batch run confirms it without showing it.

struct ExportSession;
class VExportFormat;

class VExportOptionsDialog {
public:
    virtual ~VExportOptionsDialog() = default;
    // Modal, on the session's option record. On confirmation the record holds the choices and
    // the session's texture directory the folder the dialog showed; answers false when cancelled.
    virtual bool ShowOptionsDialog(const VExportFormat& format, ExportSession& session) = 0;
};
