#pragma once
// The animation table as the key lines at the end of the settings block.

#include "settings/VAnimationTable.h"

#include <string>
#include <string_view>

// "// NumAnimations: <count>" followed by 21 key lines per entry. Names and files are escaped
// and cut to 255 characters. A full table of long names can pass the 1 MiB that older readers
// reserved; it is written whole all the same, since cutting it would lose animations.
std::string SaveAnimationsToString(const VAnimationTable& animations);

// Reads whitespace-separated key and value tokens. "NumAnimations:" replaces the table by that
// many new entries (at most VAnimationTable::kCapacity; more are dropped); each "Animation:"
// moves on to the next entry. Keys for an entry beyond the count, or before the first
// "Animation:", have no entry to go to and are ignored, as are unknown keys and values that do
// not parse.
void LoadAnimationsFromString(std::string_view text, VAnimationTable& animations);
