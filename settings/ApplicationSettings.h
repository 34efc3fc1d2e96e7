#pragma once
// The per-user application settings: debug printing, tool tips, the log window, the viewer
// programs with their argument templates, and the defaults that new exports take over.

#include <cstdint>
#include <string>
#include <string_view>

class VSettingsStore;

// The store key of the settings: the program name with every blank replaced by an underscore.
inline constexpr std::string_view kApplicationSettingsKey = "HKEY_CURRENT_USER\\Software\\Orvalle\\ZephraSDK\\Kestrel";

struct ApplicationSettings {
    bool ShowLog = true;
    int32_t ToolTips = 0;
    int32_t DebugPrint = 0;
    std::string ModelViewer = "Modlook";
    std::string ModelArgs = "\"$targetfile\"";
    std::string MeshViewer = "Worldlook";
    std::string MeshArgs = "-mesh \"$targetfile\"";
    bool EmbedSettingsInScene = false;
    bool WarnPolyCount = false;
    float MeshFactor = 1.0f;
    int32_t LightmapUVs = 2;

    bool operator==(const ApplicationSettings&) const = default;
};

// Reads the eleven values; a value that is missing or cannot be read keeps what settings holds.
void LoadApplicationSettings(const VSettingsStore& store, ApplicationSettings& settings);

// Writes the eleven values and flushes the store; false when any write failed.
bool SaveApplicationSettings(VSettingsStore& store, const ApplicationSettings& settings);
