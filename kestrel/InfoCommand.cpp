#include "kestrel/InfoCommand.h"

#include "kestrel/DescribeScene.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/DescribeAssetFile.h"
#include "formats/DescribeVisibility.h"
#include "formats/PrefabXml.h"
#include "formats/chunk/LastError.h"
#include "importers/ImportScene.h"
#include "model/VMWShapeInstance3D.h"

#include <filesystem>
#include <system_error>

namespace {

bool IsOwnAssetFile(const std::string& path)
{
    const std::string extension = ExtensionOf(path);
    return EqualsNoCase(extension, ".qmesh") || EqualsNoCase(extension, ".qcolmesh") ||
           EqualsNoCase(extension, ".model") || EqualsNoCase(extension, ".anim");
}

// Describing a scene must not leave files behind, so its embedded textures go to a scratch folder.
std::string ScratchTextureFolder()
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error) / "kestrel-info-textures";
    return error ? std::string() : FromNativePath(folder.string());
}

// A static mesh's zones live in visibility.xml in its settings folder.
std::string VisibilityFileOf(const std::string& path)
{
    if (EqualsNoCase(FileNameOf(path), "visibility.xml"))
        return path;
    return EqualsNoCase(ExtensionOf(path), ".qmesh") ? JoinPath(path + "_data", "visibility.xml") : std::string();
}

bool DescribeVisibilityFile(const std::string& path, std::string& text, std::string& error)
{
    VMWShapeInstance3DCollection shapes;
    if (LoadPrefabXML(path, shapes, error) != 0)
        return false;
    text = DescribeVisibility(shapes);
    return true;
}

} // namespace

int RunInfo(const std::string& nativePath, std::FILE* out, std::FILE* err)
{
    const std::string path = FromNativePath(nativePath);
    if (EqualsNoCase(ExtensionOf(path), ".prefab")) {
        VMWShapeInstance3DCollection shapes;
        std::string error;
        if (LoadPrefabXML(path, shapes, error) != 0) {
            std::fprintf(err, "kestrel info: '%s': %s\n", nativePath.c_str(), error.c_str());
            return 1;
        }
        std::fputs(DescribePrefab(shapes).c_str(), out);
        return 0;
    }
    const std::string visibilityFile = VisibilityFileOf(path);
    if (visibilityFile == path) {
        std::string text;
        std::string error;
        if (!DescribeVisibilityFile(path, text, error)) {
            std::fprintf(err, "kestrel info: '%s': %s\n", nativePath.c_str(), error.c_str());
            return 1;
        }
        std::fputs(text.c_str(), out);
        return 0;
    }
    if (IsOwnAssetFile(path)) {
        std::string text;
        if (!DescribeAssetFile(path, text)) {
            std::fprintf(err, "kestrel info: '%s': %s\n", nativePath.c_str(), LastError().Text.c_str());
            return 1;
        }
        std::string visibility;
        std::string error;
        if (!visibilityFile.empty() && FileExists(visibilityFile)) {
            if (DescribeVisibilityFile(visibilityFile, visibility, error))
                text += visibility;
            else
                text += "Visibility: " + visibilityFile + " is unreadable: " + error + "\n";
        }
        std::fputs(text.c_str(), out);
        return 0;
    }
    if (!FileExists(path)) {
        std::fprintf(err, "kestrel info: '%s': no such file\n", nativePath.c_str());
        return 1;
    }
    if (!CanImportScene(path)) {
        std::fprintf(err, "kestrel info: '%s': not a scene or asset file kestrel can read "
                          "(Maya ASCII, FBX, glTF, COLLADA, OBJ, .qmesh, .qcolmesh, .model, .anim, .prefab)\n",
                     nativePath.c_str());
        return 1;
    }
    ImportOptions options;
    options.EmbeddedTextureFolder = ScratchTextureFolder();
    options.WriteEmbeddedTextures = !options.EmbeddedTextureFolder.empty();
    const ImportResult result = ImportScene(path, options);
    if (!result.Ok) {
        std::fprintf(err, "kestrel info: cannot load %s\n", result.Error.c_str());
        return 1;
    }
    std::fprintf(out, "Scene: %s\n", nativePath.c_str());
    std::fputs(DescribeScene(result).c_str(), out);
    return 0;
}
