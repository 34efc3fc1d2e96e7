#pragma once

#include <string>
#include <string_view>

// path written relative to folder, with "..\" steps where path lies outside it
// ("C:\game\Textures\a.dds" from "C:\game\levels\" is "..\Textures\a.dds"). Components compare
// ignoring case. Nothing can be made relative across roots: a path that shares no folder with
// folder, or a relative path against an absolute folder, is answered unchanged, as is any path
// against an empty folder.
std::string RelativePath(std::string_view path, std::string_view folder);
