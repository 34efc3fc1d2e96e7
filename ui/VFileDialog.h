#pragma once
// File dialogs: the files the prefab command asks the user to pick. The plug-in shows Windows'
// open and save dialogs; in batch mode nobody can pick, so every dialog is cancelled.

#include <optional>
#include <string>

enum class VFileDialogKind { Open, Save };

struct VFileDialogRequest {
    VFileDialogKind Kind = VFileDialogKind::Open;
    // Empty: the system's own title.
    std::string Title;
    // One description with its pattern in brackets, as "Project files (*.Project)".
    std::string Filter;
    // Without the dot; appended to a typed name that has none. Empty for none.
    std::string DefaultExtension;
    // A system path; empty lets the system choose.
    std::string StartFolder;
};

class VFileDialog {
public:
    virtual ~VFileDialog() = default;
    // Modal: the chosen file as a system path, or nothing when the user cancelled.
    virtual std::optional<std::string> Choose(const VFileDialogRequest& request) = 0;
};

class CancelledFileDialog final : public VFileDialog {
public:
    std::optional<std::string> Choose(const VFileDialogRequest&) override { return std::nullopt; }
};
