// Loads arbitrary bytes as a scene, as SceneLoaderFuzz does, and harvests it into a model with bones: the skeleton
// and skin passes meet whatever joints, clusters and weights a broken file leaves behind.

#include "harvest/CountTriangles.h"
#include "harvest/EnterBindPose.h"
#include "harvest/GetSkins.h"
#include "harvest/HarvestState.h"
#include "harvest/ModelMeshExporter.h"
#include "importers/BuildScene.h"
#include "importers/ImportResult.h"
#include "importers/SceneRecord.h"
#include "importers/assimp/ReadAssimpScene.h"
#include "model/VMModel.h"
#include "report/KestrelReportMessage.h"

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
    if (!BuildScene(record, result))
        return 0;
    HarvestParameters parameters;
    parameters.FormatKind = kFormatKindModel;
    parameters.Options.ExportBones = true;
    parameters.Options.ExportBlended = data[0] & 8 ? 0 : 1;
    // Textures are looked for, never copied: a fuzzed file names any path it likes.
    parameters.Textures.TextureBehaviour = 1;
    KestrelReportMessage report;
    HarvestState state(parameters, report);
    state.StartExport();
    CountTriangles(state);
    EnterBindPose(state);
    VMModel model;
    model.Skeleton = VMModel::NewSkeleton();
    GetMeshes(state, model, 3);
    GetSkins(state, model);
    return 0;
}
