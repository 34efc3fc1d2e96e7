#include "importers/ImportScene.h"

#include "importers/BuildScene.h"
#include "importers/SceneRecord.h"
#include "importers/assimp/AssimpFormats.h"
#include "importers/assimp/ReadAssimpScene.h"
#include "importers/mayaascii/ImportMayaAscii.h"

#include "base/Path.h"

#include <standin/SceneBuilder.h>

#include <filesystem>
#include <fstream>
#include <system_error>

namespace {

std::string FileHead(const std::string& path)
{
    std::ifstream file(ToNativePath(path), std::ios::binary);
    std::string head(kAssimpSignatureBytes, '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(file ? head.size() : static_cast<size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return head;
}

// Texture paths are resolved against the scene's folder, which needs to be known even for a relative path.
std::string AbsoluteScenePath(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(ToNativePath(path), error);
    return error ? path : FromNativePath(absolute.lexically_normal().string());
}

} // namespace

bool CanImportScene(const std::string& path)
{
    const std::string head = FileHead(path);
    return CanReadMayaAscii(path, head) || DetectAssimpFormat(path, head) != AssimpFormat::None;
}

ImportResult ImportScene(const std::string& scenePath, const ImportOptions& options)
{
    const std::string path = IsAbsolutePath(scenePath) ? scenePath : AbsoluteScenePath(scenePath);
    ImportResult result;
    SceneRecord record;
    standin::NewScene();
    if (CanReadMayaAscii(path, FileHead(path))) {
        result.Ok = ImportMayaAscii(path, result);
        if (!result.Ok) {
            result.Error = "'" + FileNameOf(path) + "': " + result.Error;
            standin::NewScene();
        }
        return result;
    }
    if (!ReadAssimpFile(path, options, record, result))
        return result;
    if (!BuildScene(record, result)) {
        result.Error = "'" + FileNameOf(path) + "': " + result.Error;
        standin::NewScene();
        return result;
    }
    result.Ok = true;
    return result;
}
