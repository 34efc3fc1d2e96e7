#pragma once
// The argument template of a viewer program names the export's files through macros.

#include <string>
#include <string_view>

// Replaces the first "$targetfile", then the first "$targetdir", then the first "$projectdir",
// each found ignoring case; later occurrences stay as they are. The replacements are not searched
// again, so a target path holding a macro name is passed on unchanged.
std::string ExpandViewerArguments(std::string_view argumentTemplate, std::string_view targetFile,
                                  std::string_view targetDirectory, std::string_view projectDirectory);
