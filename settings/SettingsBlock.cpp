#include "settings/SettingsBlock.h"

#include "base/Number.h"
#include "base/TextUtil.h"
#include "report/DebugFile.h"
#include "settings/AnimationText.h"
#include "settings/ExportOptionKeys.h"
#include "settings/ScanNumber.h"

#include <cstddef>
#include <variant>

namespace {

constexpr std::string_view kStartMarker = "<OPTIONS>";
constexpr std::string_view kEndMarker = "</OPTIONS>";
// The marker and the "\r\n" behind it.
constexpr size_t kStartMarkerLineLength = 11;
constexpr size_t kMaxValueLength = 1023;
constexpr size_t kMaxKeyLength = 4095;
constexpr float kYawOfOldBlocks = 90.0f;

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

using O = VExportOptions;

std::string FormatValue(const VExportOptions& options, const VOptionKey& key)
{
    return std::visit(Overloaded {
                          [&](int32_t O::*field) { return FormatInt(options.*field); },
                          [&](bool O::*field) { return FormatInt(options.*field ? 1 : 0); },
                          [&](float O::*field) { return FormatFloat(options.*field, 6); },
                          [&](std::string O::*field) { return options.*field; },
                          [&](VSettingsVersion O::*field) {
                              const VSettingsVersion& version = options.*field;
                              return Format("%i.%i.%i.%i", version[0], version[1], version[2], version[3]);
                          },
                      },
                      key.Field);
}

// As sscanf's "%i.%i.%i.%i": all four numbers or nothing.
bool ScanVersion(std::string_view text, VSettingsVersion& version)
{
    VSettingsVersion scanned {};
    for (size_t part = 0; part < scanned.size(); ++part) {
        if (part > 0) {
            if (!text.starts_with('.'))
                return false;
            text.remove_prefix(1);
        }
        const size_t used = ScanInt(text, scanned[part]);
        if (used == 0)
            return false;
        text.remove_prefix(used);
    }
    version = scanned;
    return true;
}

void ParseValue(VExportOptions& options, const VOptionKey& key, std::string_view value)
{
    std::visit(Overloaded {
                   [&](int32_t O::*field) { ScanInt(value, options.*field); },
                   [&](bool O::*field) {
                       options.*field = !value.empty() && (value[0] == 'T' || value[0] == 't' || value[0] == '1');
                   },
                   [&](float O::*field) { ScanFloat(value, options.*field); },
                   [&](std::string O::*field) {
                       // Such a value would make the next load skip every line before it.
                       if (value.find(kStartMarker) == std::string_view::npos)
                           options.*field = std::string(value);
                   },
                   [&](VSettingsVersion O::*field) { ScanVersion(value, options.*field); },
               },
               key.Field);
}

int32_t RenumberedCenterMethod(int32_t oldMethod)
{
    switch (oldMethod) {
    case -1:
        return 0;
    case 0:
        return 1;
    case 2:
        return 3;
    case 3:
        return 2;
    default:
        return 0;
    }
}

void MigrateFromVersion(VExportOptions& options)
{
    const int32_t major = options.Version[0];
    const int32_t minor = options.Version[1];
    if (major < 7)
        options.CenterMethod = RenumberedCenterMethod(options.CenterMethod);
    if (major < 7 || (major == 7 && minor < 2)) {
        // Older exporters faced models along another axis.
        options.RotateYaw += kYawOfOldBlocks;
        options.EmbedSettingsInScene = false;
    }
    options.Version = kCurrentSettingsVersion;
}

std::string_view SkipBlanksAndTabs(std::string_view text)
{
    const size_t start = text.find_first_not_of(" \t");
    return start == std::string_view::npos ? std::string_view {} : text.substr(start);
}

std::string_view TrimTrailingBlanks(std::string_view text)
{
    const size_t last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view {} : text.substr(0, last + 1);
}

} // namespace

std::string SaveSettingsToString(const VExportOptions& options, const VAnimationTable& animations)
{
    DebugPrint("SaveSettingsToString()\r\n");
    std::string text = "// Exporter: Kestrel\r\n";
    for (const VOptionKey& key : ExportOptionKeys()) {
        text += "// ";
        text += key.Name;
        text += " : ";
        text += FormatValue(options, key);
        text += "\r\n";
    }
    text += SaveAnimationsToString(animations);
    DebugPrint("End of SaveSettingsToString()\r\n");
    return text;
}

void LoadSettingsFromString(std::string_view text, VExportOptions& options, VAnimationTable& animations)
{
    DebugPrint("LoadSettingsFromString()\r\n");
    size_t pos = 0;
    if (const size_t marker = text.find(kStartMarker); marker != std::string_view::npos) {
        DebugPrint("Saved options found!\r\n");
        pos = std::min(marker + kStartMarkerLineLength, text.size());
    }

    // The animation text runs to the end of the whole text and its "NumAnimations:" key starts
    // the table afresh, so loading it once from the first such key covers every later one too.
    bool animationsLoaded = false;
    while (pos < text.size()) {
        const size_t lineEnd = std::min(text.find_first_of("\r\n", pos), text.size());
        const std::string_view line = text.substr(pos, lineEnd - pos);
        pos = lineEnd + 1;
        if (!line.starts_with("//"))
            continue;
        const std::string_view body = SkipBlanksAndTabs(line.substr(2));
        if (body == kEndMarker)
            break;
        const size_t colon = body.find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::string_view keyName = TrimTrailingBlanks(body.substr(0, colon));
        const std::string_view value = TrimTrailingBlanks(SkipBlanksAndTabs(body.substr(colon + 1)));
        if (keyName.size() > kMaxKeyLength)
            continue;
        if (EqualsNoCase(keyName, "NumAnimations")) {
            if (!animationsLoaded) {
                const auto keyOffset = static_cast<size_t>(keyName.data() - text.data());
                LoadAnimationsFromString(text.substr(keyOffset), animations);
            }
            animationsLoaded = true;
            continue;
        }
        if (value.size() > kMaxValueLength)
            continue;
        if (const VOptionKey* key = FindExportOptionKey(keyName))
            ParseValue(options, *key, value);
    }

    MigrateFromVersion(options);
}
