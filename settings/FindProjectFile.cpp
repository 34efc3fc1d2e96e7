#include "settings/FindProjectFile.h"

#include "base/FileSystem.h"
#include "base/TextUtil.h"

#include <algorithm>

namespace {

constexpr std::string_view kExtension = ".project";

bool IsSeparator(char c)
{
    return c == '\\' || c == '/';
}

size_t SeparatorCount(std::string_view path)
{
    return static_cast<size_t>(std::count_if(path.begin(), path.end(), IsSeparator));
}

// "x\y\z\" -> "x\y\": cut after the second-to-last separator.
std::string ParentFolder(std::string_view folder)
{
    const size_t last = folder.find_last_of("\\/");
    const size_t secondToLast = last == 0 ? std::string_view::npos : folder.find_last_of("\\/", last - 1);
    return std::string(folder.substr(0, secondToLast + 1));
}

// Any file that "*.project" matches, a bare ".project" too.
std::optional<std::string> ProjectFileIn(std::string_view folder)
{
    for (const DirectoryEntry& entry : ListDirectory(folder))
        if (!entry.IsDirectory && EndsWithNoCase(entry.Name, kExtension))
            return entry.Name;
    return std::nullopt;
}

} // namespace

std::optional<ProjectLocation> FindProjectFile(std::string_view startFolder)
{
    std::string folder(startFolder);
    if (!folder.empty() && !IsSeparator(folder.back()))
        folder += '\\';
    while (SeparatorCount(folder) >= 2) {
        if (const std::optional<std::string> name = ProjectFileIn(folder))
            return ProjectLocation {folder, folder + *name};
        folder = ParentFolder(folder);
    }
    return std::nullopt;
}
