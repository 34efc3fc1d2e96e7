// Feeds arbitrary bytes to the Assimp bridge as one of the formats it reads (the first byte chooses which) and,
// when the file is read, builds the scene into the stand-in.

#include "importers/BuildScene.h"
#include "importers/ImportResult.h"
#include "importers/SceneRecord.h"
#include "importers/assimp/ReadAssimpScene.h"

#include <standin/SceneBuilder.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

const char* const kExtensions[] = {"fbx", "glb", "gltf", "dae", "obj"};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const std::string extension = kExtensions[data[0] % (sizeof(kExtensions) / sizeof(kExtensions[0]))];
    SceneRecord record;
    ImportResult result;
    if (!ReadAssimpMemory(data + 1, size - 1, extension, record, result))
        return 0;
    standin::NewScene();
    BuildScene(record, result);
    return 0;
}
