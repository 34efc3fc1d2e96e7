#include "settings/CreateProject.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"

namespace {

constexpr std::string_view kStandardFolders[] = {"Textures", "Prefabs", "Models", "Meshes", "Shaders"};

bool Fail(std::string* error, std::string text)
{
    if (error)
        *error = std::move(text);
    return false;
}

} // namespace

std::string ProjectFileName(std::string_view path)
{
    std::string projectFile(path);
    if (ToLowerAscii(projectFile).find(".project") == std::string::npos)
        projectFile += ".project";
    return projectFile;
}

bool CreateProject(std::string_view path, std::string* error)
{
    const std::string projectFile = ProjectFileName(path);
    if (FileExists(projectFile) || DirectoryExists(projectFile))
        return Fail(error, Format("the project file %s already exists", projectFile.c_str()));

    const std::string folder = DirectoryOf(projectFile);
    if (!folder.empty() && !DirectoryExists(folder) && !CreateDirectories(folder, error))
        return false;
    if (!WriteFileAtomically(projectFile, "", error))
        return false;
    for (const std::string_view name : kStandardFolders) {
        const std::string subfolder = JoinPath(folder, name);
        // A project without its standard folders still opens in the editor, so they do not fail it.
        if (!DirectoryExists(subfolder))
            CreateDirectories(subfolder);
    }
    return true;
}
