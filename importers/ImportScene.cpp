#include "importers/ImportScene.h"

#include "importers/BuildScene.h"
#include "importers/SceneRecord.h"
#include "importers/assimp/AssimpFormats.h"
#include "importers/assimp/ReadAssimpScene.h"

#include "base/Path.h"

#include <standin/SceneBuilder.h>

#include <fstream>

namespace {

std::string FileHead(const std::string& path)
{
    std::ifstream file(ToNativePath(path), std::ios::binary);
    std::string head(kAssimpSignatureBytes, '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(file ? head.size() : static_cast<size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return head;
}

} // namespace

bool CanImportScene(const std::string& path)
{
    return DetectAssimpFormat(path, FileHead(path)) != AssimpFormat::None;
}

ImportResult ImportScene(const std::string& path, const ImportOptions& options)
{
    ImportResult result;
    SceneRecord record;
    standin::NewScene();
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
