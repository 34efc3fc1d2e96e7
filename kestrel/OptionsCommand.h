#pragma once
// "kestrel options TARGET": the export options dialog of the target's format on the options
// stored beside the target; "Save/&Export" stores them back, nothing is exported. It needs a
// desktop to show the dialog on; "kestrel export --set" changes options without one.

#include <cstdio>
#include <functional>
#include <string>

namespace CLI {
class App;
}

class VDialogView;
class VMessageBox;

// Where the dialogs are shown; a null view when there is no display (reason says why).
struct DesktopDialogs {
    VDialogView* View = nullptr;
    VMessageBox* MessageBox = nullptr;
    std::string Reason;
};

// Returns the process exit code: 0 when the options were stored or the dialog was cancelled.
int RunOptions(const std::string& target, const DesktopDialogs& desktop, std::FILE* out, std::FILE* err);

// Adds the subcommand; openDesktop is called only when it runs.
void AddOptionsCommand(CLI::App& app, std::function<DesktopDialogs()> openDesktop);
