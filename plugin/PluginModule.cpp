#include "plugin/PluginModule.h"

#include "base/TextUtil.h"
#include "plugin/BatchOptionsDialog.h"
#include "plugin/ExportSession.h"
#include "plugin/VExportFormatQMesh.h"
#include "settings/ApplicationSettings.h"
#include "settings/IniSettingsStore.h"
#include "settings/PosixProcessLauncher.h"
#include "ui/BatchMessageBox.h"

#include <cstdio>

namespace {

struct Module {
    PluginServices Services;
    ApplicationSettings Settings;
    ExportSession Session;
    VExportFormatQMesh QMesh {Session};

    IniSettingsStore DefaultStore {DefaultUserSettingsFilePath()};
    PosixProcessLauncher DefaultLauncher;
    BatchMessageBox DefaultMessageBox {stdout};
    BatchOptionsDialog DefaultOptionsDialog;
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
    LoadApplicationSettings(TheSettingsStore(), module.Settings);
}

void StopPluginModule()
{
    TheModule().Services = PluginServices {};
}

const PluginServices& TheServices()
{
    return TheModule().Services;
}

VSettingsStore& TheSettingsStore()
{
    Module& module = TheModule();
    return module.Services.SettingsStore ? *module.Services.SettingsStore : module.DefaultStore;
}

VProcessLauncher& TheProcessLauncher()
{
    Module& module = TheModule();
    return module.Services.ProcessLauncher ? *module.Services.ProcessLauncher : module.DefaultLauncher;
}

VMessageBox& TheMessageBox()
{
    Module& module = TheModule();
    return module.Services.MessageBox ? *module.Services.MessageBox : module.DefaultMessageBox;
}

VExportOptionsDialog& TheOptionsDialog()
{
    Module& module = TheModule();
    return module.Services.OptionsDialog ? *module.Services.OptionsDialog : module.DefaultOptionsDialog;
}

ApplicationSettings& TheApplicationSettings()
{
    return TheModule().Settings;
}

ExportSession& TheExportSession()
{
    return TheModule().Session;
}

VExportFormat* FindExportFormat(std::string_view name)
{
    VExportFormat& qmesh = TheModule().QMesh;
    if (EqualsNoCase(name, qmesh.ShortName()))
        return &qmesh;
    return nullptr;
}
