#pragma once
// The module-wide objects of the plug-in, created and destroyed in one place: the platform
// services the host hands in, the application settings, the export session and the format
// objects.

#include "settings/VAnimationDescription.h"

#include <string>
#include <string_view>
#include <vector>

struct ApplicationSettings;
struct ExportSession;
class VExportFormat;
class VDialogView;
class VExportOptionsDialog;
class VFileDialog;
class VMessageBox;
class VProcessLauncher;
class VReportView;
class VSettingsStore;

// What the host provides. Maya's module start-up provides the Windows services; the command
// line and tests provide their own. A service left null gets the module's batch default.
struct PluginServices {
    VSettingsStore* SettingsStore = nullptr;
    VProcessLauncher* ProcessLauncher = nullptr;
    VMessageBox* MessageBox = nullptr;
    VExportOptionsDialog* OptionsDialog = nullptr;
    VFileDialog* FileDialog = nullptr;
    // Shows the dialogs to a person (the options dialog, the node properties); null in batch use.
    VDialogView* DialogView = nullptr;
    // The report dialog after interactive exports; null shows nothing.
    VReportView* ReportView = nullptr;
    // Handed the entries a batch export files as "ErrLog.txt"; the command line prints them, Maya
    // leaves it null.
    VReportView* FiledReportView = nullptr;
    // "report.html" beside each target, with every issue of the export; the command line's
    // --no-report-page turns it off.
    bool ReportPage = true;
    // A settings block ("// Key : Value" lines) applied over each target's stored settings, so
    // that a batch run can change options of one export; empty for none.
    std::string OptionOverrides;
    // Animation entries put into each target's animation table after its stored settings and the
    // overrides are loaded, each replacing an entry of its name; empty for none.
    std::vector<VAnimationDescription> AnimationOverrides;
};

// The module's start-up: takes the services, loads the application settings from the store and
// records the module's folder and the installation folder.
void StartPluginModule(const PluginServices& services);
// Drops the services; the module falls back to its batch defaults.
void StopPluginModule();

const PluginServices& TheServices();
VSettingsStore& TheSettingsStore();
VProcessLauncher& TheProcessLauncher();
VMessageBox& TheMessageBox();
VExportOptionsDialog& TheOptionsDialog();
VFileDialog& TheFileDialog();

// The editor project the prefab command works in, chosen or created by the user; empty until
// then, and again after each start of the module.
struct PrefabCommandProject {
    // Ends with a backslash.
    std::string Directory;
    std::string File;
};
PrefabCommandProject& ThePrefabCommandProject();

ApplicationSettings& TheApplicationSettings();
// The folder of the plug-in's own file, and the folder of its data files: the one registered for
// "Kestrel" when there is one, else the module's. Neither ends with a backslash.
const std::string& TheModuleFolder();
const std::string& TheInstallationFolder();
ExportSession& TheExportSession();

// The format whose lookup name ("model", "qmesh", "prefab") or short name matches, ignoring
// case; null when there is none.
VExportFormat* FindExportFormat(std::string_view name);
