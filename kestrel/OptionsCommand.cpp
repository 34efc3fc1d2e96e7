#include "kestrel/OptionsCommand.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "kestrel/ExportCommand.h"
#include "kestrel/LoadedPlugin.h"
#include "plugin/ExportSession.h"
#include "plugin/VExportFormat.h"
#include "plugin/VExportOptionsDialog.h"
#include "settings/IniSettingsStore.h"
#include "settings/PosixProcessLauncher.h"
#include "settings/SettingsBlock.h"
#include "settings/SettingsFile.h"
#include "ui/ReportDialog.h"

#include <CLI/CLI.hpp>

#include <memory>

int RunOptions(const std::string& target, const DesktopDialogs& desktop, std::FILE* out, std::FILE* err)
{
    if (!desktop.View) {
        std::fprintf(err,
                     "kestrel options: the options dialog needs a display: %s\n"
                     "Change options without one with: kestrel export SCENE -o TARGET --set Key=Value\n",
                     desktop.Reason.c_str());
        return 1;
    }

    IniSettingsStore store(DefaultUserSettingsFilePath());
    store.Load();
    PosixProcessLauncher launcher;
    DialogReportView report(*desktop.View);
    PluginServices services;
    services.SettingsStore = &store;
    services.ProcessLauncher = &launcher;
    services.MessageBox = desktop.MessageBox;
    services.DialogView = desktop.View;
    services.ReportView = &report;
    LoadedPlugin plugin(services);
    if (!plugin.Load()) {
        std::fprintf(err, "kestrel options: the plug-in did not load\n");
        return 1;
    }

    const std::string targetFile = FromNativePath(AbsoluteNative(target));
    const size_t dot = targetFile.rfind('.');
    VExportFormat* format = dot == std::string::npos ? nullptr : FindExportFormat(targetFile.substr(dot + 1));
    if (!format) {
        std::fprintf(err, "kestrel options: '%s' names no asset the exporter writes\n", target.c_str());
        return 2;
    }
    if (!format->Init(targetFile, 0, false, true, false)) {
        std::fprintf(err, "kestrel options: '%s' lies in no editor project\n", target.c_str());
        return 1;
    }
    ExportSession& session = TheExportSession();
    if (!TheOptionsDialog().ShowOptionsDialog(*format, session)) {
        std::fprintf(out, "The options of '%s' are left as they were\n", target.c_str());
        return 0;
    }

    const std::string settingsFile = SettingsFilePath(targetFile);
    std::string error;
    if (!CreateDirectories(DirectoryOf(settingsFile), &error) ||
        !WriteFileAtomically(settingsFile, SaveSettingsToString(session.Options, session.Animations), &error)) {
        std::fprintf(err, "kestrel options: cannot store the options in '%s': %s\n", ToNativePath(settingsFile).c_str(),
                     error.c_str());
        return 1;
    }
    std::fprintf(out, "Stored the options of '%s' in '%s'\n", target.c_str(), ToNativePath(settingsFile).c_str());
    return 0;
}

void AddOptionsCommand(CLI::App& app, std::function<DesktopDialogs()> openDesktop)
{
    auto target = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand("options", "Edit the export options stored beside an asset (.qmesh, "
                                                      ".model) in the options dialog; needs a display");
    command->add_option("TARGET", *target, "The asset file whose options to edit")->required();
    command->callback([target, openDesktop] {
        const int code = RunOptions(*target, openDesktop(), stdout, stderr);
        if (code == 0)
            throw CLI::Success();
        throw CLI::RuntimeError(code);
    });
}
