#include "settings/TextureDirectory.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "settings/VExportOptions.h"

namespace {

bool IsSeparator(char c)
{
    return c == '\\' || c == '/';
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
    // A network path typed with forward slashes is as absolute as one with backslashes.
    const std::string system = FromNativePath(subfolder);
    return !system.starts_with("\\\\") && system.find(':') == std::string::npos && !system.starts_with("..");
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
