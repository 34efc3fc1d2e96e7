#include "base/Path.h"

#include "base/TextUtil.h"

#include <filesystem>
#include <system_error>

namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

size_t LastSeparator(std::string_view path)
{
    const size_t position = path.find_last_of("\\/");
    return position;
}

#ifndef _WIN32
// The existing entry of dir whose name equals name ignoring case, preferring an exact match.
std::string MatchEntry(const std::filesystem::path& dir, const std::string& name)
{
    std::error_code error;
    if (std::filesystem::exists(dir / name, error))
        return name;
    for (std::filesystem::directory_iterator it(dir, error), end; !error && it != end; it.increment(error)) {
        const std::string candidate = it->path().filename().string();
        if (EqualsNoCase(candidate, name))
            return candidate;
    }
    return name;
}
#endif

} // namespace

std::string JoinPath(std::string_view dir, std::string_view name)
{
    if (dir.empty())
        return std::string(name);
    std::string result(dir);
    if (!IsSeparator(result.back()))
        result += '\\';
    while (!name.empty() && IsSeparator(name.front()))
        name.remove_prefix(1);
    result += name;
    return result;
}

std::string DirectoryOf(std::string_view path)
{
    const size_t position = LastSeparator(path);
    return position == std::string_view::npos ? std::string() : std::string(path.substr(0, position));
}

std::string FileNameOf(std::string_view path)
{
    const size_t position = LastSeparator(path);
    return std::string(position == std::string_view::npos ? path : path.substr(position + 1));
}

std::string ExtensionOf(std::string_view path)
{
    const std::string name = FileNameOf(path);
    const size_t dot = name.find_last_of('.');
    return dot == std::string::npos ? std::string() : name.substr(dot);
}

std::string WithoutExtension(std::string_view path)
{
    const size_t extension = ExtensionOf(path).size();
    return std::string(path.substr(0, path.size() - extension));
}

bool IsAbsolutePath(std::string_view path)
{
    if (!path.empty() && IsSeparator(path.front()))
        return true;
    return path.size() >= 2 && path[1] == ':';
}

std::string FromNativePath(std::string_view path)
{
    std::string result(path);
    for (char& c : result)
        if (c == '/')
            c = '\\';
    return result;
}

std::string ShownPath(std::string_view path)
{
    std::string result(path);
#ifndef _WIN32
    for (char& c : result)
        if (c == '\\')
            c = '/';
#endif
    return result;
}

std::string ToNativePath(std::string_view path)
{
#ifdef _WIN32
    return FromNativePath(path);
#else
    std::filesystem::path result = IsSeparator(path.empty() ? ' ' : path.front()) ? "/" : "";
    bool resolving = true;
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find_first_of("\\/", start);
        if (end == std::string_view::npos)
            end = path.size();
        const std::string component(path.substr(start, end - start));
        if (!component.empty()) {
            const std::string found =
                resolving && component != "." && component != ".." ? MatchEntry(result.empty() ? "." : result, component)
                                                                    : component;
            std::error_code error;
            result /= found;
            resolving = resolving && std::filesystem::exists(result, error);
        }
        start = end + 1;
    }
    return result.string();
#endif
}
