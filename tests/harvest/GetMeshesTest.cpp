#include "HarvestTestScene.h"

#include "harvest/CountTriangles.h"
#include "harvest/ModelMeshExporter.h"
#include "harvest/StaticSceneVisitor.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"

#include <cmath>
#include <string>
#include <vector>

namespace {

using namespace harvesttest;
using namespace standin;

class GetMeshesTest : public HarvestTest {
protected:
    MObject MeshNode(const std::string& name, const MObject& parent = MObject::kNullObj, double size = 1.0)
    {
        const MObject transform = CreateNode("transform", name, parent);
        const MObject shape = CreateMesh(name + "Shape", transform, Cube(size));
        Assign(NodeByName("greySG").isNull() ? CreateShader("lambert", "grey") : NodeByName("greySG"), shape);
        return transform;
    }

    std::vector<std::string> Names(const std::vector<MDagPath>& paths)
    {
        std::vector<std::string> names;
        for (const MDagPath& path : paths)
            names.push_back(path.partialPathName().asChar());
        return names;
    }
};

TEST_F(GetMeshesTest, PrecalculationCountsTrianglesVerticesJointsAndBounds)
{
    MeshNode("a");
    const MObject b = MeshNode("b", MObject::kNullObj, 4.0);
    SetAttr("b.translateX", 10.0);
    CreateNode("joint", "hip");
    CreateNode("joint", "knee", NodeByName("hip"));
    (void)b;
    EXPECT_EQ(CountTriangles(State()), 0);
    const PrecalcStats& stats = State().Stats;
    EXPECT_EQ(stats.MeshNodeCount, 2);
    EXPECT_EQ(stats.VertexCount, 16);
    EXPECT_EQ(stats.JointCount, 2);
    EXPECT_EQ(std::string(stats.FirstJoint.partialPathName().asChar()), "hip");
    EXPECT_FLOAT_EQ(stats.Min[0], -0.5f);
    EXPECT_FLOAT_EQ(stats.Max[0], 12.0f);
    EXPECT_FLOAT_EQ(stats.Max[1], 2.0f);
    EXPECT_EQ(stats.InPrecalculation, 0);
    const std::string text = DebugText();
    EXPECT_NE(text.find("\r\n***\r\n*** Precalculation Phase\r\n***\r\n\r\n"), std::string::npos);
    EXPECT_NE(text.find("Mesh: 12 faces, 8 vertices\r\n"), std::string::npos);
}

TEST_F(GetMeshesTest, InvisibleMeshCountsNoTrianglesButCountsAsAMeshNodeAndASelectionCountsOnlyItsSubtrees)
{
    MeshNode("hidden");
    SetAttr("hidden.visibility", 0.0);
    CountTriangles(State());
    EXPECT_EQ(State().Stats.MeshNodeCount, 1);
    EXPECT_EQ(State().Stats.VertexCount, 0);
    EXPECT_NE(DebugText().find("Mesh: 0 faces, 0 vertices\r\n"), std::string::npos);

    MeshNode("b");
    Select({PathTo("b")});
    parameters.SelectionOnly = true;
    HarvestState selected(parameters, report);
    CountTriangles(selected);
    EXPECT_EQ(selected.Stats.MeshNodeCount, 1);
    EXPECT_EQ(selected.Stats.VertexCount, 8);
}

TEST_F(GetMeshesTest, StaticWalkSortsMeshesPortalsAndLightsAndSkipsSkippedSubtrees)
{
    parameters.Options.ExportLights = true;
    MeshNode("floor");
    const MObject door = MeshNode("door");
    AddAttr(door, "ExportAs", AttrType::Int, 2);
    const MObject skipped = CreateNode("transform", "skipped");
    AddAttr(skipped, "ExportSkip", AttrType::Int, 1);
    MeshNode("inner", skipped);
    CreateNode("pointLight", "lampShape", CreateNode("transform", "lamp"));
    StaticSceneVisitor visitor(State());
    visitor.Iterate(MDagPath(), false, true);
    EXPECT_EQ(Names(visitor.WorldMeshes), (std::vector<std::string>{"floorShape"}));
    EXPECT_EQ(Names(visitor.Portals), (std::vector<std::string>{"doorShape"}));
    EXPECT_EQ(Names(visitor.Lights), (std::vector<std::string>{"lamp"}));
    EXPECT_EQ(visitor.PlacementTaken, 0);

    visitor.Reset();
    EXPECT_TRUE(visitor.WorldMeshes.empty());
    EXPECT_TRUE(visitor.Portals.empty());
    EXPECT_TRUE(visitor.Lights.empty());
}

TEST_F(GetMeshesTest, FirstWorldMeshDefinesThePlacementWithPivotCentring)
{
    parameters.Options.CenterMethod = 4;
    MeshNode("first");
    SetAttr("first.translate", 1.0, 2.0, 3.0);
    MeshNode("second");
    SetAttr("second.translate", 9.0, 9.0, 9.0);
    StaticSceneVisitor visitor(State());
    visitor.Iterate(MDagPath(), false, true);
    ASSERT_EQ(visitor.PlacementTaken, 1);
    // The inverse of a move to engine (1, -3, 2).
    const float* t = visitor.Placement.Translation();
    EXPECT_FLOAT_EQ(t[0], -1.0f);
    EXPECT_FLOAT_EQ(t[1], 3.0f);
    EXPECT_FLOAT_EQ(t[2], -2.0f);
    EXPECT_FLOAT_EQ(visitor.Placement.At(0, 0), 1.0f);
    EXPECT_FLOAT_EQ(visitor.Placement.At(1, 1), 1.0f);
}

// An ambient light is walked and counted, but gives no light record.
TEST_F(GetMeshesTest, StaticPassExportsEveryWorldMeshAndLightAndTracesEachOutcome)
{
    MeshNode("a");
    MeshNode("b");
    CreateNode("ambientLight", "fillShape");
    CreateNode("pointLight", "bulbShape");
    parameters.Options.ExportLights = true;
    StaticSceneVisitor visitor(State());
    visitor.Iterate(MDagPath(), false, true);
    VMWorld world;
    EXPECT_TRUE(GetMeshes(State(), world, visitor));
    EXPECT_EQ(world.Polygons.Count(), 12);
    EXPECT_EQ(State().MeshNodes.Count(), 2);
    ASSERT_EQ(world.Lights.Count(), 1);
    EXPECT_EQ(world.Lights[0]->Name, "bulb");
    const std::string text = DebugText();
    EXPECT_NE(text.find("#meshnodes=2\r\n"), std::string::npos);
    EXPECT_NE(text.find("1. OK.\r\n#lights=2\r\n0  Error.\r\n1  OK.\r\n#portals=0\r\n"), std::string::npos);
}

TEST_F(GetMeshesTest, ModelPassExportsMeshesAndJointsWhenBonesAreExportedAndOnlyTheSelectedWhenAsked)
{
    parameters.FormatKind = kFormatKindModel;
    MeshNode("body");
    CreateNode("joint", "root");
    VMModel model;
    EXPECT_TRUE(GetMeshes(State(), model, 3));
    EXPECT_EQ(model.Faces.Count(), 6);
    EXPECT_EQ(model.Skeleton, nullptr);
    EXPECT_EQ(State().ModelBounds.BoxGiven, 0);
    EXPECT_NE(DebugText().find("GetMeshes()\n<Node: "), std::string::npos);

    parameters.Options.ExportBones = true;
    VMModel withBones;
    HarvestState state(parameters, report);
    GetMeshes(state, withBones, 3);
    ASSERT_NE(withBones.Skeleton, nullptr);
    ASSERT_EQ(withBones.Skeleton->Bones.Count(), 1);
    EXPECT_EQ(withBones.Skeleton->Bones[0]->Name, "root");

    // A selection's pass exports only the selected meshes.
    MeshNode("other");
    Select({PathTo("body")});
    parameters.SelectionOnly = true;
    VMModel selected;
    HarvestState selection(parameters, report);
    GetMeshes(selection, selected, 3);
    ASSERT_EQ(selection.MeshNodes.Count(), 1);
    EXPECT_EQ(selection.MeshNodes[0].Name, "|body|bodyShape");
}

TEST_F(GetMeshesTest, NurbsSurfaceIsSkippedWithItsOwnLineEndingPerExport)
{
    CreateNode("nurbsSurface", "sheetShape", CreateNode("transform", "sheet"));
    VMModel model;
    GetMeshes(State(), model, 3);
    StaticSceneVisitor visitor(State());
    visitor.Iterate(MDagPath(), false, true);
    const std::string text = DebugText();
    EXPECT_NE(text.find("Skipping NURBS surface\n<"), std::string::npos);
    EXPECT_NE(text.find("Skipping NURBS surface\r\n"), std::string::npos);
}

TEST_F(GetMeshesTest, BoundsNodeGivesTheModelsCollisionBoxAndIsNotExported)
{
    parameters.FormatKind = kFormatKindModel;
    parameters.UnitFactor = 100.0;
    MeshNode("body");
    const MObject bounds = MeshNode("bounds");
    AddAttr(bounds, "ExportAs", AttrType::Int, 1);
    SetAttr("bounds.translate", 1.0, 2.0, 3.0);
    SetAttr("bounds.scale", 2.0, 4.0, 6.0);
    VMModel model;
    GetMeshes(State(), model, 3);
    EXPECT_EQ(model.Faces.Count(), 6);
    const ModelBoundsBox& box = State().ModelBounds;
    ASSERT_EQ(box.BoxGiven, 1);
    // Engine axes: x = 1 +- 1 * 100, y = -3 +- 3 * 100, z = 2 +- 2 * 100.
    EXPECT_FLOAT_EQ(box.Min[0], -99.0f);
    EXPECT_FLOAT_EQ(box.Max[0], 101.0f);
    EXPECT_FLOAT_EQ(box.Min[1], -303.0f);
    EXPECT_FLOAT_EQ(box.Max[1], 297.0f);
    EXPECT_FLOAT_EQ(box.Min[2], -198.0f);
    EXPECT_FLOAT_EQ(box.Max[2], 202.0f);
    EXPECT_NE(DebugText().find("Using node 'boundsShape' for model bounding box (-99.000000,-303.000000,-198.000000)-(101.000000,297.000000,202.000000)\r\n"), std::string::npos);
}

}
