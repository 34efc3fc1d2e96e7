#include "settings/TextureDirectory.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "settings/VExportOptions.h"

namespace {

bool IsSeparator(char c)
{
    return c == '\\' || c == '/';
}

bool HasParentStep(std::string_view subfolder)
{
    size_t start = 0;
    while (start <= subfolder.size()) {
        size_t end = subfolder.find_first_of("\\/", start);
        if (end == std::string_view::npos)
            end = subfolder.size();
        if (TrimSpaces(subfolder.substr(start, end - start)) == "..")
            return true;
        start = end + 1;
    }
    return false;
}

std::string WithClosingBackslash(std::string path)
{
    if (path.empty() || !IsSeparator(path.back()))
        path += '\\';
    return path;
}

std::string_view BaseFolder(bool useProjectDirectory, std::string_view projectDirectory, std::string_view targetDirectory)
{
    return useProjectDirectory && !projectDirectory.empty() ? projectDirectory : targetDirectory;
}

} // namespace

bool IsValidTextureSubfolder(std::string_view subfolder)
{
    if (!subfolder.empty() && IsSeparator(subfolder.front()))
        return false;
    return subfolder.find(':') == std::string_view::npos && !subfolder.starts_with("..") && !HasParentStep(subfolder);
}

std::string TextureDirectoryFromOptions(const VExportOptions& options, std::string_view projectDirectory,
                                        std::string_view targetDirectory)
{
    const std::string& subfolder = options.TextureSubdir;
    const std::string_view chosen =
        !subfolder.empty() && IsValidTextureSubfolder(subfolder) ? std::string_view(subfolder) : kDefaultTextureSubfolder;
    const std::string_view base = BaseFolder(options.TextureUseProjDir, projectDirectory, targetDirectory);
    return WithClosingBackslash(JoinPath(base, FromNativePath(chosen)));
}

std::string TextureDirectoryForDisplay(std::string_view subfolder, bool useProjectDirectory,
                                       std::string_view projectDirectory, std::string_view targetDirectory)
{
    if (!IsValidTextureSubfolder(subfolder))
        return std::string(kInvalidTextureDirectory);
    const std::string_view base = BaseFolder(useProjectDirectory, projectDirectory, targetDirectory);
    return WithClosingBackslash(JoinPath(base, FromNativePath(subfolder)));
}

bool IsInvalidTextureDirectory(std::string_view displayed)
{
    return EqualsNoCase(displayed, kInvalidTextureDirectory);
}
