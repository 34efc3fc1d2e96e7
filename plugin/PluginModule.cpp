#include "plugin/PluginModule.h"

#include "base/FileSystem.h"
#include "base/TextUtil.h"
#include "plugin/ExportSession.h"
#include "plugin/OptionsDialogHost.h"
#include "plugin/VExportFormatPrefab.h"
#include "plugin/VExportFormatQMesh.h"
#include "plugin/VExportFormatVModel.h"
#include "settings/ApplicationSettings.h"
#include "settings/IniSettingsStore.h"
#include "settings/PosixProcessLauncher.h"
#include "settings/ProgramRegistry.h"
#include "ui/BatchMessageBox.h"
#include "ui/VFileDialog.h"

#include <cstdio>
#include <type_traits>

namespace {

struct Module {
    PluginServices Services;
    ApplicationSettings Settings;
    // Recorded at load: the plug-in's data files lie in the installation folder.
    std::string ModuleFolder;
    std::string InstallationFolder;
    ExportSession Session;
    VExportFormatQMesh QMesh {Session};
    VExportFormatVModel Model {Session};
    VExportFormatPrefab Prefab {Session};

    IniSettingsStore DefaultStore {DefaultUserSettingsFilePath()};
    PosixProcessLauncher DefaultLauncher;
    BatchMessageBox DefaultMessageBox {stdout};
    OptionsDialogHost DefaultOptionsDialog;
    CancelledFileDialog DefaultFileDialog;

    PrefabCommandProject CommandProject;
};

Module& TheModule()
{
    static Module module;
    return module;
}

} // namespace

void StartPluginModule(const PluginServices& services)
{
    Module& module = TheModule();
    module.Services = services;
    if (!services.SettingsStore)
        module.DefaultStore.Load();
    module.Settings = ApplicationSettings {};
    module.CommandProject = PrefabCommandProject {};
    // A freshly loaded module remembers no option of an earlier load (the root bone above all,
    // which exports otherwise carry from one to the next).
    module.Session.Options = VExportOptions {};
    LoadApplicationSettings(TheSettingsStore(), module.Settings);
    module.ModuleFolder = ModuleFolderOf(reinterpret_cast<const void*>(&StartPluginModule));
    module.InstallationFolder = InstallationFolder(TheSettingsStore(), module.ModuleFolder);
}

void StopPluginModule()
{
    TheModule().Services = PluginServices {};
}

namespace {

// A service the host installed, or the module's own command-line implementation.
template <class Service>
Service& ChosenOr(Service* chosen, std::type_identity_t<Service>& fallback)
{
    return chosen ? *chosen : fallback;
}

} // namespace

const PluginServices& TheServices()
{
    return TheModule().Services;
}

VSettingsStore& TheSettingsStore()
{
    return ChosenOr(TheModule().Services.SettingsStore, TheModule().DefaultStore);
}

VProcessLauncher& TheProcessLauncher()
{
    return ChosenOr(TheModule().Services.ProcessLauncher, TheModule().DefaultLauncher);
}

VMessageBox& TheMessageBox()
{
    return ChosenOr(TheModule().Services.MessageBox, TheModule().DefaultMessageBox);
}

VExportOptionsDialog& TheOptionsDialog()
{
    return ChosenOr(TheModule().Services.OptionsDialog, TheModule().DefaultOptionsDialog);
}

VFileDialog& TheFileDialog()
{
    return ChosenOr(TheModule().Services.FileDialog, TheModule().DefaultFileDialog);
}

PrefabCommandProject& ThePrefabCommandProject()
{
    return TheModule().CommandProject;
}

ApplicationSettings& TheApplicationSettings()
{
    return TheModule().Settings;
}

const std::string& TheModuleFolder()
{
    return TheModule().ModuleFolder;
}

const std::string& TheInstallationFolder()
{
    return TheModule().InstallationFolder;
}

ExportSession& TheExportSession()
{
    return TheModule().Session;
}

VExportFormat* FindExportFormat(std::string_view name)
{
    // Each lookup name is its format's short name in another case.
    VExportFormat* const formats[] = {&TheModule().QMesh, &TheModule().Model, &TheModule().Prefab};
    for (VExportFormat* format : formats) {
        if (EqualsNoCase(name, format->ShortName()))
            return format;
    }
    return nullptr;
}
