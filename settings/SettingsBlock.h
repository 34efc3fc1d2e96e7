#pragma once
// The settings block: the option record and the animation table as the text stored beside
// each exported file.

#include "settings/VAnimationTable.h"
#include "settings/VExportOptions.h"

#include <string>
#include <string_view>

// "// Exporter: Kestrel", one "// <key> : <value>" line per saved key in table order, then the
// animation text. Lines end with "\r\n"; numbers always use a decimal point.
std::string SaveSettingsToString(const VExportOptions& options, const VAnimationTable& animations);

// Applies the block to the record. When the text holds "<OPTIONS>" (a block embedded in other
// text) reading starts on the line behind it; a "// </OPTIONS>" line ends it. Keys the block
// names take its values, unknown keys are ignored, a value that does not parse leaves its field
// unchanged (a bool is switched off), and a text value holding "<OPTIONS>" is refused because it
// could not be read back. Blocks of
// versions before 7.2 are migrated, and the record's version is the current one afterwards.
// The caller recomputes the texture folder, which depends on the loaded options.
void LoadSettingsFromString(std::string_view text, VExportOptions& options, VAnimationTable& animations);
