#include "ui/ApplicationSettingsDialog.h"

#include "report/DebugFile.h"
#include "settings/ApplicationSettings.h"
#include "settings/ConfirmApplicationSettings.h"
#include "ui/DialogLayoutBuilder.h"

namespace sc = SettingsControl;

namespace {

DialogLayout ApplicationSettingsLayout()
{
    DialogLayoutBuilder b(132, "Application Settings");
    b.Section("", 0);
    b.Add(sc::ToolTips, ControlKind::Check, "Enable ToolTips", "Show these explanations in the export dialogs");
    b.NextRow().Add(sc::WarnPolyCount, ControlKind::Check, "Warn about models of more than 24000 polygons",
                    "Ask before exporting a model the engine cannot load whole");
    b.NextRow().Add(sc::DebugPrint, ControlKind::Check, "Debug Printout (to debug.txt file)",
                    "Trace every export step into debug.txt beside the target");
    b.NextRow().Add(sc::ShowLog, ControlKind::Check, "Show log window");
    b.NextRow().Add(sc::EmbedSettings, ControlKind::Check, "Embed settings in scene");
    b.Section("Viewers", 0);
    b.Add(sc::ModelViewer, ControlKind::Edit, "Model viewer:");
    b.Add(sc::ModelArgs, ControlKind::Edit, "Arguments:");
    b.NextRow().Add(sc::MeshViewer, ControlKind::Edit, "Mesh viewer:");
    b.Add(sc::MeshArgs, ControlKind::Edit, "Arguments:");
    b.Section("", 0);
    b.Add(kIdOk, ControlKind::Button, "OK");
    b.Add(kIdCancel, ControlKind::Button, "Cancel");
    b.Add(sc::Reset, ControlKind::Button, "Reset");
    return b.Build();
}

} // namespace

ApplicationSettingsDialog::ApplicationSettingsDialog(ApplicationSettings& settings, VSettingsStore& store)
    : Dialog(ApplicationSettingsLayout())
    , m_settings(settings)
    , m_store(store)
{
}

void ApplicationSettingsDialog::Open()
{
    DebugPrint("ApplicationSettingsDialogProc()\n");
    ShowToolTips(m_settings.ToolTips != 0);
    SetChecked(sc::ToolTips, m_settings.ToolTips != 0);
    SetChecked(sc::WarnPolyCount, m_settings.WarnPolyCount);
    SetChecked(sc::DebugPrint, m_settings.DebugPrint != 0);
    SetChecked(sc::ShowLog, m_settings.ShowLog);
    SetChecked(sc::EmbedSettings, m_settings.EmbedSettingsInScene);
    SetText(sc::ModelViewer, m_settings.ModelViewer);
    SetText(sc::ModelArgs, m_settings.ModelArgs);
    SetText(sc::MeshViewer, m_settings.MeshViewer);
    SetText(sc::MeshArgs, m_settings.MeshArgs);
    for (int id : {sc::ShowLog, sc::EmbedSettings, sc::ModelViewer, sc::ModelArgs, sc::MeshViewer, sc::MeshArgs,
                   sc::Reset})
        Enable(id, false);
    SetFocus(kIdOk);
}

void ApplicationSettingsDialog::Command(int id)
{
    if (id == kIdCancel) {
        End(0);
    } else if (id == kIdOk) {
        ConfirmApplicationSettings({Checked(sc::ToolTips), Checked(sc::WarnPolyCount), Checked(sc::DebugPrint)},
                                   m_settings, m_store);
        End(1);
    }
}
