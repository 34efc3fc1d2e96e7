#pragma once
// Maya ASCII scene files (.ma), read with our own parser into the stand-in; Maya Binary files (.mb) are recognised
// so that they are refused with a message that says what to do.

#include "importers/ImportResult.h"

#include <string>
#include <string_view>

// True for a .ma or .mb file name, or contents that begin as Maya ASCII files do.
bool CanReadMayaAscii(std::string_view path, std::string_view head);

// Reads the file (a system path) into the current stand-in scene, which it adds to. False with result.Error when
// the file cannot be read as a whole (missing, Maya Binary, ending inside a command).
bool ImportMayaAscii(const std::string& path, ImportResult& result);

// The same for text in memory, for tests and fuzzing; scenePath places the files it names (empty: none are found).
bool ImportMayaAsciiText(std::string_view text, const std::string& scenePath, ImportResult& result);
