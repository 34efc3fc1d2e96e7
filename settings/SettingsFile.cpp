#include "settings/SettingsFile.h"

#include "base/FileSystem.h"
#include "report/DebugFile.h"
#include "settings/SettingsBlock.h"

std::string SettingsFilePath(std::string_view targetPath) { return std::string(targetPath) + "_data\\_config.Xportel"; }

std::string LegacySettingsFilePath(std::string_view targetPath) { return std::string(targetPath) + ".export.xml"; }

std::optional<std::string> ReadSettingsFile(std::string_view targetPath, bool allowLegacyFile)
{
    std::string path = SettingsFilePath(targetPath);
    if (!FileExists(path)) {
        path = LegacySettingsFilePath(targetPath);
        if (!allowLegacyFile || !FileExists(path))
            return std::nullopt;
    }
    std::string text;
    if (!ReadWholeFile(path, text))
        return std::nullopt;
    return text;
}

bool LoadSettingsFromFile(std::string_view targetPath, bool allowLegacyFile, VExportOptions& options,
                          VAnimationTable& animations)
{
    DebugPrint("LoadSettingsFromFile()\r\n");
    const std::optional<std::string> text = ReadSettingsFile(targetPath, allowLegacyFile);
    if (!text)
        return false;
    LoadSettingsFromString(*text, options, animations);
    return true;
}
