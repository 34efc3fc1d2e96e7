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

using ShapeDescriber = std::string (*)(const VMWShapeInstance3DCollection&);

// A prefab and visibility.xml are both shape files; only what is said about the shapes differs.
bool DescribeShapeFile(const std::string& path, ShapeDescriber describe, std::string& text, std::string& error)
{
    VMWShapeInstance3DCollection shapes;
    if (LoadPrefabXML(path, shapes, error) != 0)
        return false;
    text = describe(shapes);
    return true;
}

int PrintShapeFile(const std::string& nativePath, ShapeDescriber describe, std::FILE* out, std::FILE* err)
{
    std::string text;
    std::string error;
    if (!DescribeShapeFile(FromNativePath(nativePath), describe, text, error)) {
        std::fprintf(err, "kestrel info: '%s': %s\n", nativePath.c_str(), error.c_str());
        return 1;
    }
    std::fputs(text.c_str(), out);
    return 0;
}

} // namespace

int RunInfo(const std::string& nativePath, std::FILE* out, std::FILE* err)
{
    const std::string path = FromNativePath(nativePath);
    if (EqualsNoCase(ExtensionOf(path), ".prefab"))
        return PrintShapeFile(nativePath, DescribePrefab, out, err);
    const std::string visibilityFile = VisibilityFileOf(path);
    if (visibilityFile == path)
        return PrintShapeFile(nativePath, DescribeVisibility, out, err);
    if (IsOwnAssetFile(path)) {
        std::string text;
        if (!DescribeAssetFile(path, text)) {
            std::fprintf(err, "kestrel info: '%s': %s\n", nativePath.c_str(), LastError().Text.c_str());
            return 1;
        }
        std::string visibility;
        std::string error;
        if (!visibilityFile.empty() && FileExists(visibilityFile)) {
            if (DescribeShapeFile(visibilityFile, DescribeVisibility, visibility, error))
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
                          "(Maya ASCII, FBX, glTF, COLLADA, OBJ, .qmesh, .qcolmesh, .model, .anim, .prefab, visibility.xml)\n",
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
