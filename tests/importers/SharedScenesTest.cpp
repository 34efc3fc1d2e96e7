#include "importers/ImportScene.h"

#include "base/Path.h"
#include "tests/SceneFileSkin.h"
#include "tests/UniqueTempFolder.h"

#include <standin/SceneBuilder.h>

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MPointArray.h>
#include <maya/MTime.h>

#include <gtest/gtest.h>

#include <algorithm>
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
        EXPECT_EQ(!MItDependencyNodes(MFn::kSkinClusterFilter).isDone(), SceneFileDeclaresSkin(entry.path())) << name;
        ++loaded;
    }
    EXPECT_GE(loaded, 40);
}

class SharedScene : public testing::Test {
protected:
    void SetUp() override
    {
        if (!std::filesystem::is_directory(kScenes))
            GTEST_SKIP() << "the shared scenes are not present";
    }

    static ImportResult Load(const char* relativePath, const ImportOptions& options = {})
    {
        return ImportScene(FromNativePath((kScenes / relativePath).string()), options);
    }
};

TEST_F(SharedScene, EmbeddedTexturesAreWrittenOutAndNamedByTheirFileNodes)
{
    const UniqueTempFolder scratch("kestrel_embedded");
    const std::filesystem::path folder = scratch.Native("embedded");
    ImportOptions options;
    options.EmbeddedTextureFolder = FromNativePath(folder.string());
    const ImportResult result = Load("fbx/assimp/box_orphant_embedded_texture.fbx", options);
    ASSERT_TRUE(result.Ok) << result.Error;
    EXPECT_EQ(std::filesystem::file_size(folder / "GridGrey.tga"), 9026u);
    bool named = false;
    for (MItDependencyNodes it(MFn::kFileTexture); !it.isDone(); it.next())
        named = named || std::string(MFnDependencyNode(it.thisNode()).findPlug("fileTextureName").asString().asChar()) ==
                             options.EmbeddedTextureFolder + "\\GridGrey.tga";
    EXPECT_TRUE(named);
}

// Assimp leaves out the morph controller's cube without a word; a file of lights alone places no mesh.
TEST_F(SharedScene, AFileWhoseMeshesAssimpLeavesOutSaysSo)
{
    const auto warned = [](const ImportResult& result) {
        return std::any_of(result.Warnings.begin(), result.Warnings.end(), [](const ImportWarning& warning) {
            return warning.Text == "Assimp read none of the meshes this file places; the scene has no mesh";
        });
    };
    const ImportResult morph = Load("collada/cts/morph_two_targets/morph_two_targets.dae");
    ASSERT_TRUE(morph.Ok) << morph.Error;
    EXPECT_TRUE(warned(morph));
    const ImportResult lights = Load("collada/assimp/lights.dae");
    ASSERT_TRUE(lights.Ok) << lights.Error;
    EXPECT_FALSE(warned(lights));
}

TEST_F(SharedScene, ClipsOfOneFileAreLaidOutOneAfterAnother)
{
    const ImportResult result = Load("gltf/Fox/Fox.glb");
    ASSERT_TRUE(result.Ok) << result.Error;
    ASSERT_EQ(result.Clips.size(), 3u);
    EXPECT_EQ(result.Clips[0].Name, "Survey");
    EXPECT_EQ(result.Clips[1].Name, "Walk");
    EXPECT_EQ(result.Clips[2].Name, "Run");
    for (size_t i = 1; i < result.Clips.size(); ++i)
        EXPECT_GT(result.Clips[i].StartFrame, result.Clips[i - 1].EndFrame);
    EXPECT_LE(MAnimControl::minTime().as(MTime::kFilm), result.Clips[0].StartFrame);
    EXPECT_GE(MAnimControl::maxTime().as(MTime::kFilm), result.Clips[2].EndFrame);
}

TEST_F(SharedScene, ARealCharacterAtItsBindPoseMatchesItsPreSkinMesh)
{
    const ImportResult result = Load("gltf/CesiumMan/CesiumMan.gltf");
    ASSERT_TRUE(result.Ok) << result.Error;
    MFnSkinCluster skin(MItDependencyNodes(MFn::kSkinClusterFilter).thisNode());
    MDagPathArray influences;
    ASSERT_EQ(skin.influenceObjects(influences), 19u);
    const std::string joint = influences[0].partialPathName().asChar();
    ASSERT_TRUE(MGlobal::executeCommand(MString(("dagPose -r -g -bp " + joint).c_str())));
    MObjectArray outputs;
    skin.getOutputGeometry(outputs);
    ASSERT_EQ(outputs.length(), 1u);
    MDagPath shape;
    MDagPath::getAPathTo(outputs[0], shape);
    MPointArray skinned;
    MFnMesh(shape).getPoints(skinned, MSpace::kWorld);
    MDagPath original = shape;
    original.pop();
    ASSERT_TRUE(original.push(standin::NodeByName(std::string(MFnDependencyNode(outputs[0]).name().asChar()) + "Orig")));
    MPointArray bound;
    MFnMesh(original).getPoints(bound, MSpace::kWorld);
    ASSERT_EQ(skinned.length(), bound.length());
    double worst = 0.0;
    for (unsigned int i = 0; i < skinned.length(); ++i)
        worst = std::max(worst, (skinned[i] - bound[i]).length());
    EXPECT_LT(worst, 0.01);
}

} // namespace
