#pragma once
// Where a target's settings block is stored: "_config.Xportel" in the target's data folder, or
// for models exported by older versions the ".export.xml" file beside the target.

#include "settings/VAnimationTable.h"
#include "settings/VExportOptions.h"

#include <optional>
#include <string>
#include <string_view>

std::string SettingsFilePath(std::string_view targetPath);
std::string LegacySettingsFilePath(std::string_view targetPath);

// The data folder's file when it exists, else the legacy file when allowed and present.
std::optional<std::string> ReadSettingsFile(std::string_view targetPath, bool allowLegacyFile);

// Applies the stored block to the record and table; answers whether one was found. Without
// one the record keeps what it holds.
bool LoadSettingsFromFile(std::string_view targetPath, bool allowLegacyFile, VExportOptions& options,
                          VAnimationTable& animations);
