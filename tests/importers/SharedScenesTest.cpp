#include "importers/ImportScene.h"

#include "base/Path.h"

#include <maya/MFn.h>
#include <maya/MItDependencyNodes.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace {

const std::filesystem::path kScenes = KESTREL_SHARED_SCENES_DIR;

// Files that Assimp cannot read by their nature: an FBX older than 2011 and a glTF whose animation sampler
// gives its interpolation as a number.
const std::set<std::string> kUnreadable = {"maya_cube_6100_ascii.fbx", "AnimatedSpotlights.gltf"};

bool IsSceneFile(const std::filesystem::path& path)
{
    const std::string extension = path.extension().string();
    return extension == ".fbx" || extension == ".gltf" || extension == ".glb" || extension == ".dae" ||
           extension == ".obj";
}

TEST(SharedScenes, EveryReadableSceneLoadsAndTheOthersFailWithAReason)
{
    if (!std::filesystem::is_directory(kScenes))
        GTEST_SKIP() << "the shared scenes are not present";
    int loaded = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kScenes)) {
        if (!entry.is_regular_file() || !IsSceneFile(entry.path()))
            continue;
        ImportOptions options;
        options.WriteEmbeddedTextures = false;
        const ImportResult result = ImportScene(FromNativePath(entry.path().string()), options);
        const std::string name = entry.path().filename().string();
        if (kUnreadable.count(name)) {
            EXPECT_FALSE(result.Ok) << name;
            EXPECT_EQ(result.Error.rfind("'" + name + "': ", 0), 0u) << result.Error;
            continue;
        }
        EXPECT_TRUE(result.Ok) << name << ": " << result.Error;
        EXPECT_FALSE(MItDependencyNodes(MFn::kDagNode).isDone()) << name;
        ++loaded;
    }
    EXPECT_GE(loaded, 40);
}

} // namespace
