#pragma once
// "Application Settings": the per-user settings. Only its three check boxes are taken over on OK;
// the log window, the embedding default and the viewer programs are shown as they stand but are
// edited in the settings store itself, so they are read-only here.

#include "ui/Dialog.h"

struct ApplicationSettings;
class VSettingsStore;

namespace SettingsControl {
inline constexpr int ToolTips = 1077;
inline constexpr int WarnPolyCount = 1032;
inline constexpr int DebugPrint = 1060;
inline constexpr int ShowLog = 1061;
inline constexpr int EmbedSettings = 1062;
inline constexpr int ModelViewer = 1063;
inline constexpr int ModelArgs = 1064;
inline constexpr int MeshViewer = 1065;
inline constexpr int MeshArgs = 1066;
inline constexpr int Reset = 1067;
} // namespace SettingsControl

class ApplicationSettingsDialog final : public Dialog {
public:
    ApplicationSettingsDialog(ApplicationSettings& settings, VSettingsStore& store);

    void Open() override;
    // OK takes the check boxes over and saves every setting.
    void Command(int id) override;

private:
    ApplicationSettings& m_settings;
    VSettingsStore& m_store;
};
