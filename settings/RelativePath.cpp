#include "settings/RelativePath.h"

#include "base/Path.h"
#include "base/TextUtil.h"

#include <vector>

namespace {

std::vector<std::string_view> Components(std::string_view path)
{
    std::vector<std::string_view> components;
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find_first_of("\\/", start);
        if (end == std::string_view::npos)
            end = path.size();
        const std::string_view component = path.substr(start, end - start);
        if (!component.empty() && component != ".")
            components.push_back(component);
        start = end + 1;
    }
    return components;
}

} // namespace

std::string RelativePath(std::string_view path, std::string_view folder)
{
    if (folder.empty() || IsAbsolutePath(path) != IsAbsolutePath(folder))
        return FromNativePath(path);
    const std::vector<std::string_view> pathParts = Components(path);
    const std::vector<std::string_view> folderParts = Components(folder);
    size_t common = 0;
    while (common < pathParts.size() && common < folderParts.size() && EqualsNoCase(pathParts[common], folderParts[common]))
        ++common;
    if (common == 0 && IsAbsolutePath(path))
        return FromNativePath(path);

    std::string relative;
    for (size_t i = common; i < folderParts.size(); ++i)
        relative += "..\\";
    for (size_t i = common; i < pathParts.size(); ++i) {
        relative += pathParts[i];
        if (i + 1 < pathParts.size())
            relative += '\\';
    }
    return relative;
}
