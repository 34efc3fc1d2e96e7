#include "HarvestTestScene.h"

#include "base/Path.h"
#include "harvest/CountTriangles.h"
#include "harvest/ModelMeshExporter.h"
#include "harvest/StaticSceneVisitor.h"
#include "importers/ImportScene.h"
#include "model/Validate.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"
#include "report/VIssueKind.h"

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
        m_textures = fs::temp_directory_path() /
                     ("kestrel_e2e_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(m_textures);
        fs::create_directories(m_textures / "Textures");
        ImportOptions options;
        options.EmbeddedTextureFolder = FromNativePath((m_textures / "embedded").string());
        const ImportResult result = ImportScene(FromNativePath(scene.string()), options);
        ASSERT_TRUE(result.Ok) << result.Error;
        parameters.Textures.BaseDirectory = FromNativePath(m_textures.string()) + "\\";
        parameters.Textures.TextureDirectory = FromNativePath((m_textures / "Textures").string()) + "\\";
    }

    void TearDown() override
    {
        HarvestTest::TearDown();
        if (!m_textures.empty())
            fs::remove_all(m_textures);
    }

    fs::path m_textures;
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

TEST_F(HarvestImportedSceneTest, SkinnedGltfCharacterHarvestsIntoASoundModel)
{
    Import("gltf/CesiumMan/CesiumMan.gltf");
    if (IsSkipped() || HasFatalFailure())
        return;
    parameters.FormatKind = kFormatKindModel;
    HarvestState& state = State();
    CountTriangles(state);
    EXPECT_GT(state.Stats.JointCount, 0);
    VMModel model;
    GetMeshes(state, model, 3);
    EXPECT_EQ(Validate(model), std::vector<std::string>{});
    ASSERT_GT(model.Faces.Count(), 0);
    EXPECT_GE(model.Vertices.Count(), state.Stats.VertexCount);
    EXPECT_EQ(report.Count(IssueSkinCountMismatch), 0);
}

}
