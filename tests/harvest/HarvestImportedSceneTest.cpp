#include "HarvestTestScene.h"

#include "base/Path.h"
#include "harvest/BoneMatrix.h"
#include "harvest/CountTriangles.h"
#include "harvest/EnterBindPose.h"
#include "harvest/GetSkins.h"
#include "harvest/ModelMeshExporter.h"
#include "harvest/StaticSceneVisitor.h"
#include "importers/ImportScene.h"
#include "model/Validate.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"
#include "report/VIssueKind.h"
#include "tests/UniqueTempFolder.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace {

using namespace harvesttest;
namespace fs = std::filesystem;

class HarvestImportedSceneTest : public HarvestTest {
protected:
    void Import(const std::string& relativePath)
    {
        const fs::path scene = fs::path(KESTREL_SHARED_SCENES_DIR) / relativePath;
        if (!fs::exists(scene))
            GTEST_SKIP() << "shared scene not present: " << scene;
        fs::create_directories(m_textures / "Textures");
        ImportOptions options;
        options.EmbeddedTextureFolder = FromNativePath((m_textures / "embedded").string());
        const ImportResult result = ImportScene(FromNativePath(scene.string()), options);
        ASSERT_TRUE(result.Ok) << result.Error;
        parameters.Textures.BaseDirectory = FromNativePath(m_textures.string()) + "\\";
        parameters.Textures.TextureDirectory = FromNativePath((m_textures / "Textures").string()) + "\\";
    }

    UniqueTempFolder m_folder{"kestrel_e2e"};
    const fs::path& m_textures = m_folder.Native();
};

TEST_F(HarvestImportedSceneTest, TexturedGltfSceneHarvestsIntoASoundWorldWithItsTextureCopied)
{
    Import("gltf/MultiUVTest/MultiUVTest.gltf");
    if (IsSkipped() || HasFatalFailure())
        return;
    HarvestState& state = State();
    CountTriangles(state);
    ASSERT_GT(state.Stats.MeshNodeCount, 0);
    state.MeshNodes.Reset(state.Stats.MeshNodeCount);
    StaticSceneVisitor visitor(state);
    visitor.Iterate(MDagPath(), false, true);
    VMWorld world;
    GetMeshes(state, world, visitor);

    EXPECT_EQ(Validate(world), std::vector<std::string>{});
    EXPECT_EQ(state.MeshNodes.Count(), state.Stats.MeshNodeCount);
    ASSERT_GT(world.Polygons.Count(), 0);
    ASSERT_GT(world.Materials.Count(), 0);
    for (const VMPolygon* polygon : world.Polygons)
        EXPECT_NE(polygon->Material(), nullptr);
    bool anyTextured = false;
    for (const VMMaterial* material : world.Materials)
        if (material->AtlasFlag == 0 && EndsWithNoCase(material->DiffuseTexture, ".png")) {
            anyTextured = true;
            EXPECT_EQ(material->DiffuseTexture.rfind("Textures\\", 0), 0u) << material->DiffuseTexture;
            EXPECT_TRUE(fs::exists(m_textures / "Textures" / FileNameOf(material->DiffuseTexture)));
        }
    EXPECT_TRUE(anyTextured);
    EXPECT_EQ(report.Count(IssueNodeWithoutMaterial), 0);
    EXPECT_EQ(report.Count(IssueVertexWithoutUV), 0);
}

struct ExpectedBone {
    const char* Name;
    float Matrix[12];
};

struct SkinnedScene {
    const char* Path;
    // Vertices that no skin reaches; the harvest binds them to the root.
    int Unweighted;
    // Bind matrices worked out by hand from the file's numbers.
    std::vector<ExpectedBone> Golden;
};

class SkinnedSceneHarvestTest : public HarvestImportedSceneTest, public ::testing::WithParamInterface<SkinnedScene> {};

TEST_P(SkinnedSceneHarvestTest, BonesBindAsTheFileSaysAndEveryVertexKeepsItsWeights)
{
    Import(GetParam().Path);
    if (IsSkipped() || HasFatalFailure())
        return;
    parameters.FormatKind = kFormatKindModel;
    parameters.Options.ExportBones = true;
    HarvestState& state = State();
    CountTriangles(state);
    EnterBindPose(state);
    VMModel model;
    GetMeshes(state, model, 3);
    GetSkins(state, model);

    EXPECT_EQ(Validate(model), std::vector<std::string>{});
    EXPECT_GT(model.Faces.Count(), 0);
    EXPECT_EQ(report.Count(IssueSkinCountMismatch), 0);
    ASSERT_NE(model.Skeleton, nullptr);
    EXPECT_EQ(model.Skeleton->Bones.Count(), state.Stats.JointCount);
    EXPECT_EQ(model.Vertices.Count(), state.RunningVertexBase);
    EXPECT_GE(model.Vertices.Count(), state.Stats.VertexCount);

    int unweighted = 0;
    for (const VMSkinVertex* vertex : model.Vertices) {
        ASSERT_GT(vertex->InfluenceCount, 0u);
        unweighted += vertex->BoundToRoot;
        float sum = 0.0f;
        for (uint32_t k = 0; k < vertex->InfluenceCount; ++k)
            sum += vertex->InfluenceWeights[k];
        // A fifth influence gives way to stronger ones; below four nothing was dropped.
        EXPECT_LE(sum, 1.001f) << vertex->Index;
        if (vertex->InfluenceCount < VMSkinVertex::MaxInfluences) {
            EXPECT_NEAR(sum, 1.0f, 1e-3f) << vertex->Index;
        }
    }
    EXPECT_EQ(unweighted, GetParam().Unweighted);

    // The bind pose that EnterBindPose restored puts every joint where its bind matrix says.
    for (const VMBone* bone : model.Skeleton->Bones) {
        const VMTransform posed = BoneMatrix(standin::PathTo(bone->FullName), false);
        for (int i = 0; i < 12; ++i)
            EXPECT_NEAR(bone->GlobalTransform.M[i], posed.M[i], 1e-3) << bone->FullName << " element " << i;
    }
    for (const ExpectedBone& expected : GetParam().Golden) {
        const VMBone* bone = nullptr;
        for (const VMBone* candidate : model.Skeleton->Bones)
            if (candidate->Name == expected.Name)
                bone = candidate;
        ASSERT_NE(bone, nullptr) << expected.Name;
        for (int i = 0; i < 12; ++i)
            EXPECT_NEAR(bone->GlobalTransform.M[i], expected.Matrix[i], 1e-4) << expected.Name << " element " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    SharedScenes, SkinnedSceneHarvestTest,
    ::testing::Values(
        // Both inverse bind matrices are a translation by (-0.5, -1, 0) m: bound at Maya (50, 100, 0) cm, the
        // engine's (50, 0, 100), axes as a joint at rest.
        SkinnedScene{"gltf/SimpleSkin/SimpleSkin.gltf", 0,
                     {{"nodes_1_", {1, 0, 0, 0, 0, 1, 0, -1, 0, 50, 0, 100}},
                      {"nodes_2_", {1, 0, 0, 0, 0, 1, 0, -1, 0, 50, 0, 100}}}},
        SkinnedScene{"gltf/CesiumMan/CesiumMan.gltf", 0, {}},
        SkinnedScene{"gltf/Fox/Fox.glb", 0, {}},
        SkinnedScene{"fbx/ufbx/maya_kenney_character_7700_binary.fbx", 0, {}},
        SkinnedScene{"fbx/assimp/animation_with_skeleton.fbx", 0, {}},
        // The second instance of the skinned shape follows the skin cluster's weights as the first does.
        SkinnedScene{"fbx/ufbx/maya_instanced_skin_7700_binary.fbx", 0, {}},
        SkinnedScene{"fbx/ufbx/maya_game_sausage_7500_binary_wiggle.fbx", 0, {}},
        // joint3's cluster links it at (0, 2.154313, 0) cm turned 90 degrees about z: its x axis is Maya's y
        // (the engine's z), its y axis Maya's -x.
        SkinnedScene{"fbx/ufbx/maya_game_sausage_7500_ascii_spin.fbx", 0,
                     {{"joint3", {0, 0, 1, -1, 0, 0, 0, -1, 0, 0, 0, 2.15431302f}}}},
        // bone0's inverse bind matrix moves by (100, 0, 0) and the bind-shape matrix turns the pipe's x onto
        // -z: bound at (0, 0, -100) in the file's z-up frame with its x axis up, which the scene's turn to y up
        // keeps pointing up.
        SkinnedScene{"collada/cts/skin_2_influence/skin_2_influence.dae", 0,
                     {{"joint1", {0, 0, 1, 0, 1, 0, -1, 0, 0, 0, 0, -100}},
                      {"joint5", {0, 0, 1, 0, 1, 0, -1, 0, 0, 0, 0, 100}}}}),
    [](const ::testing::TestParamInfo<SkinnedScene>& test) {
        std::string name = FileNameOf(test.param.Path);
        name = name.substr(0, name.find('.'));
        std::replace_if(name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
        return name;
    });

}
