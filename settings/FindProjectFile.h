#pragma once
// The editor project that encloses an export target: the nearest folder, from the target's own
// upward, that holds a "*.project" file.

#include <optional>
#include <string>
#include <string_view>

struct ProjectLocation {
    // Ends with a backslash.
    std::string Directory;
    // Directory followed by the project file's name.
    std::string File;
};

// Searches startFolder (a backslash is added when it has no closing separator), then each parent
// in turn; a folder with fewer than two separators ends the search unsearched, so a drive or file
// system root is never taken for a project. Within a folder the first project file in name order
// wins.
std::optional<ProjectLocation> FindProjectFile(std::string_view startFolder);
