#pragma once
// Opens a scene file in the Maya stand-in: the current scene is replaced by the file's contents, as Maya's
// File > Open does for a file of a foreign format.

#include "importers/ImportResult.h"

#include <string>

// True when one of the importers takes the file, by its extension and first bytes.
bool CanImportScene(const std::string& path);
// path is a system path (backslashes). On failure the current scene is empty and result.Error names the file.
ImportResult ImportScene(const std::string& path, const ImportOptions& options = {});
