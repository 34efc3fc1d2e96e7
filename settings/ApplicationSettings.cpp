#include "settings/ApplicationSettings.h"

#include "settings/VSettingsStore.h"

#include <bit>
#include <cmath>
#include <optional>

namespace {

void ReadInt(const VSettingsStore& store, std::string_view name, int32_t& value)
{
    if (const std::optional<uint32_t> number = store.ReadNumber(kApplicationSettingsKey, name))
        value = static_cast<int32_t>(*number);
}

void ReadBool(const VSettingsStore& store, std::string_view name, bool& value)
{
    if (const std::optional<uint32_t> number = store.ReadNumber(kApplicationSettingsKey, name))
        value = *number != 0;
}

void ReadString(const VSettingsStore& store, std::string_view name, std::string& value)
{
    if (std::optional<std::string> text = store.ReadString(kApplicationSettingsKey, name))
        value = std::move(*text);
}

void ReadFloat(const VSettingsStore& store, std::string_view name, float& value)
{
    const std::optional<std::string> bytes = store.ReadBinary(kApplicationSettingsKey, name);
    if (!bytes || bytes->size() != sizeof(float))
        return;
    uint32_t bits = 0;
    for (size_t i = sizeof(float); i-- > 0;)
        bits = bits << 8 | static_cast<unsigned char>((*bytes)[i]);
    const float stored = std::bit_cast<float>(bits);
    if (std::isfinite(stored))
        value = stored;
}

std::string FloatBytes(float value)
{
    const uint32_t bits = std::bit_cast<uint32_t>(value);
    std::string bytes(sizeof(float), '\0');
    for (size_t i = 0; i < sizeof(float); ++i)
        bytes[i] = static_cast<char>(bits >> (8 * i) & 0xFF);
    return bytes;
}

} // namespace

void LoadApplicationSettings(const VSettingsStore& store, ApplicationSettings& settings)
{
    // ShowLog is a signed number of which only values above 0 switch the log on.
    int32_t showLog = settings.ShowLog ? 1 : 0;
    ReadInt(store, "ShowLog", showLog);
    settings.ShowLog = showLog > 0;
    ReadInt(store, "ToolTips", settings.ToolTips);
    ReadInt(store, "DebugPrint", settings.DebugPrint);
    ReadString(store, "ModelViewer", settings.ModelViewer);
    ReadString(store, "ModelArgs", settings.ModelArgs);
    ReadString(store, "MeshViewer", settings.MeshViewer);
    ReadString(store, "MeshArgs", settings.MeshArgs);
    ReadBool(store, "EmbedSettingsInScene", settings.EmbedSettingsInScene);
    ReadBool(store, "WarnPolyCount", settings.WarnPolyCount);
    ReadFloat(store, "MeshFactor", settings.MeshFactor);
    ReadInt(store, "LightmapUVs", settings.LightmapUVs);
}

bool SaveApplicationSettings(VSettingsStore& store, const ApplicationSettings& settings)
{
    const std::string_view key = kApplicationSettingsKey;
    bool written = store.WriteNumber(key, "ShowLog", settings.ShowLog ? 1 : 0);
    written &= store.WriteNumber(key, "ToolTips", static_cast<uint32_t>(settings.ToolTips));
    written &= store.WriteNumber(key, "DebugPrint", static_cast<uint32_t>(settings.DebugPrint));
    written &= store.WriteString(key, "ModelViewer", settings.ModelViewer);
    written &= store.WriteString(key, "ModelArgs", settings.ModelArgs);
    written &= store.WriteString(key, "MeshViewer", settings.MeshViewer);
    written &= store.WriteString(key, "MeshArgs", settings.MeshArgs);
    written &= store.WriteNumber(key, "EmbedSettingsInScene", settings.EmbedSettingsInScene ? 1 : 0);
    written &= store.WriteNumber(key, "WarnPolyCount", settings.WarnPolyCount ? 1 : 0);
    written &= store.WriteBinary(key, "MeshFactor", FloatBytes(settings.MeshFactor));
    written &= store.WriteNumber(key, "LightmapUVs", static_cast<uint32_t>(settings.LightmapUVs));
    return store.Flush() && written;
}
