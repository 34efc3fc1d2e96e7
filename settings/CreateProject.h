#pragma once
// A new, empty editor project with its standard folders.

#include <string>
#include <string_view>

// Appends ".project" unless the path already names one (anywhere, ignoring case), then creates
// the project's folder with all missing levels, the empty project file and the sub-folders
// "Textures", "Prefabs", "Models", "Meshes" and "Shaders". An existing project file is never
// replaced. On failure answers false with the reason in error.
bool CreateProject(std::string_view path, std::string* error = nullptr);

// The project file CreateProject makes of path: path itself when it names one, else path with
// ".project" appended.
std::string ProjectFileName(std::string_view path);
