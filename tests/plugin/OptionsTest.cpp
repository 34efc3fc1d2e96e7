// How the option record steers a static export, set the way a batch run sets it.

#include "PluginFixture.h"
#include "TestScenes.h"

#include "formats/StaticMeshReader.h"

#include <standin/SceneBuilder.h>

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace {

class ExportOptions : public PluginFixture {
protected:
    VMBoundingBox ExportedBounds(const std::string& relative)
    {
        EXPECT_TRUE(ExportAll(relative));
        VStaticMeshFile mesh;
        EXPECT_TRUE(ReadStaticMesh(SystemPath(relative), mesh));
        EXPECT_EQ(mesh.TriangleCount, 12);
        return mesh.Bounds;
    }
};

TEST_F(ExportOptions, ColMeshZeroWritesNoCollisionFileAndTheNextExportStartsFromTheStoredOptions)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    SetOptions("// ColMesh : 0\r\n");
    ASSERT_TRUE(ExportAll("kept.qmesh"));
    EXPECT_TRUE(Has("kept.qmesh"));
    EXPECT_FALSE(Has("kept.qcolmesh"));
    EXPECT_TRUE(Log.Has("Not saving collision file\r\n"));
    EXPECT_THAT(Read("kept.qmesh_data/_config.Xportel"), HasSubstr("// ColMesh : 0\r\n"));

    SetOptions("");
    ASSERT_TRUE(ExportAll("kept.qmesh"));
    EXPECT_FALSE(Has("kept.qcolmesh"));
    ASSERT_TRUE(ExportAll("fresh.qmesh"));
    EXPECT_TRUE(Has("fresh.qcolmesh"));
}

// A cube 200 wide at Maya (100, 20, 50) enters the engine as (x, -z, y): x 100..300,
// y -250..-50, z 20..220. Scaling is about the origin and only beyond 1 +- 0.00001; centring
// moves the box centre (1) or its floor point (3) to the origin, or leaves the box (2).
struct PlacementCase {
    const char* Options;
    float Min[3];
    float Max[3];
    bool Scaled;
};

class ExportPlacement : public ExportOptions, public ::testing::WithParamInterface<PlacementCase> {};

TEST_P(ExportPlacement, ScalesAndCentresTheWorld)
{
    AssignMaterial(AddCube("box", 100, 20, 50, 200), "stone");
    SetOptions(GetParam().Options);

    const VMBoundingBox box = ExportedBounds("placed.qmesh");
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_FLOAT_EQ(box.Min[axis], GetParam().Min[axis]) << axis;
        EXPECT_FLOAT_EQ(box.Max[axis], GetParam().Max[axis]) << axis;
    }
    EXPECT_EQ(Log.Has("Scaling Mesh...\r\n"), GetParam().Scaled);
}

INSTANTIATE_TEST_SUITE_P(ExportOptions, ExportPlacement, ::testing::Values(
    PlacementCase {"// MeshFactor : 1.000005\r\n", {100, -250, 20}, {300, -50, 220}, false},
    PlacementCase {"// MeshFactor : 1.000020\r\n", {100.002f, -250.005f, 20.0004f}, {300.006f, -50.001f, 220.0044f}, true},
    PlacementCase {"// MeshFactor : 2.0\r\n", {200, -500, 40}, {600, -100, 440}, true},
    PlacementCase {"// CenterMethod : 1\r\n", {-100, -100, -100}, {100, 100, 100}, false},
    PlacementCase {"// CenterMethod : 3\r\n", {-100, -100, 0}, {100, 100, 200}, false},
    PlacementCase {"// CenterMethod : 2\r\n", {100, -250, 20}, {300, -50, 220}, false}));

TEST_F(ExportOptions, CenterMethodFourPutsTheWorldInTheFirstMeshsLocalSpace)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    ASSERT_TRUE(standin::SetAttr("box.translateX", 500.0));
    ASSERT_TRUE(standin::SetAttr("box.rotateY", 1.5707963267948966));
    AssignMaterial(AddCube("second", 0, 0, 0, 100), "wood");
    ASSERT_TRUE(standin::SetAttr("second.translateX", 500.0));
    SetOptions("// CenterMethod : 4\r\n");

    ASSERT_TRUE(ExportAll("pivot.qmesh"));
    VStaticMeshFile mesh;
    ASSERT_TRUE(ReadStaticMesh(SystemPath("pivot.qmesh"), mesh));
    // The first cube is back at its local corner (engine y is Maya's -z); the second, unrotated
    // at the same place in Maya, turns the other way about the first cube's origin.
    EXPECT_NEAR(mesh.Bounds.Min[0], -100.0f, 1e-3f);
    EXPECT_NEAR(mesh.Bounds.Max[0], 100.0f, 1e-3f);
    EXPECT_NEAR(mesh.Bounds.Min[1], -100.0f, 1e-3f);
    EXPECT_NEAR(mesh.Bounds.Max[1], 0.0f, 1e-3f);
    EXPECT_NEAR(mesh.Bounds.Min[2], 0.0f, 1e-3f);
    EXPECT_NEAR(mesh.Bounds.Max[2], 100.0f, 1e-3f);
}

struct BatchRefusal {
    const char* Options;
    const char* Message;
};

TEST_F(ExportOptions, InvalidTextureSubfolderOrStripLengthRefusesTheBatchExport)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    for (const BatchRefusal& refusal :
         {BatchRefusal {"// TextureSubdir : C:\\textures\r\n",
                        "The texture subdirectory is not allowed to be an absolute path or contain '..\\'.\r\n"
                        "Please specify just a relative subdirectory like 'textures'"},
          BatchRefusal {"// MaxStripLength : 10001\r\n", "Error! The max strip length must be below 10000.\r\n"}}) {
        SCOPED_TRACE(refusal.Options);
        SetOptions(refusal.Options);
        EXPECT_FALSE(ExportAll("refused.qmesh"));
        EXPECT_FALSE(Has("refused.qmesh"));
        ASSERT_FALSE(MessageBoxes.Requests.empty());
        EXPECT_EQ(MessageBoxes.Requests.back().Text, refusal.Message);
    }
    SetOptions("// MaxStripLength : 10000\r\n");
    EXPECT_TRUE(ExportAll("longest.qmesh"));
}

TEST_F(ExportOptions, BatchConfirmationStoresStripsAndTheDialogsMaterialBits)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");

    ASSERT_TRUE(ExportAll("confirmed.qmesh"));
    EXPECT_FALSE(Log.Has("Calculating visibility...\r\n"));
    const std::string stored = Read("confirmed.qmesh_data/_config.Xportel");
    EXPECT_THAT(stored, HasSubstr("// ExportStrips : 1\r\n"));
    EXPECT_THAT(stored, HasSubstr("// StripPerformance : 4\r\n"));
    // 61 less bit 5, which no check box of the dialog shows.
    EXPECT_THAT(stored, HasSubstr("// ExportMaterialSettings : 29\r\n"));
}

TEST_F(ExportOptions, ExtremelyLowScalingIsConfirmedByTheWarningsDefaultAnswer)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    SetOptions("// MeshFactor : 0.00005\r\n");

    EXPECT_TRUE(ExportAll("tiny.qmesh"));
    ASSERT_FALSE(MessageBoxes.Requests.empty());
    EXPECT_EQ(MessageBoxes.Requests.front().Caption, "Warning!");
    EXPECT_THAT(Read("tiny.qmesh_data/_config.Xportel"), HasSubstr("// MeshFactor : 0.000050\r\n"));
}

} // namespace
