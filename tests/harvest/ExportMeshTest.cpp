#include "HarvestTestScene.h"

#include "harvest/ExportMesh.h"
#include "harvest/MeshAccess.h"
#include "harvest/PolygonStep.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"
#include "report/VIssueKind.h"

#include <maya/MFnDependencyNode.h>

#include <cmath>

namespace {

using namespace harvesttest;
using namespace standin;

float Length(const float v[3]) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

class ExportMeshTest : public HarvestTest {
protected:
    MObject MakeCube(const std::string& name, bool hardEdges)
    {
        const MObject transform = CreateNode("transform", name);
        const MObject shape = CreateMesh(name + "Shape", transform, Cube());
        if (hardEdges)
            SetHardEdges(shape, CubeEdges());
        return shape;
    }

    void AssignNewShader(const MObject& shape, const std::string& name, const std::vector<int>& faces = {})
    {
        Assign(CreateShader("lambert", name), shape, 0, faces);
    }

    // A texture keeps the material from being a colour material, whose UVs go to the atlas.
    void AssignTexturedShader(const MObject& shape, const std::string& name)
    {
        Assign(CreateShader("lambert", name), shape);
        CreateFileTexture(name + "File", "C:/textures/" + name + ".tga", name + ".color");
    }

    VMWorld world;
};

TEST_F(ExportMeshTest, CubeWithPerFaceNormalsGetsALinkedCopyForEveryCornerBeyondTheFirst)
{
    const MObject shape = MakeCube("box", true);
    AssignNewShader(shape, "grey");
    ASSERT_TRUE(ExportMesh(State(), PathTo("boxShape"), world, 0));
    EXPECT_EQ(world.Vertices.Count(), 24);
    ASSERT_EQ(world.Polygons.Count(), 6);
    for (const VMPolygon* polygon : world.Polygons)
        EXPECT_EQ(polygon->CornerCount(), 4);
    EXPECT_EQ(State().RunningVertexBase, 24);
    EXPECT_EQ(State().RunningPolygonCount, 6);
    EXPECT_EQ(report.Issues().size(), 0u);
    // Each copy links to its source and keeps its position.
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(world.Vertices[i]->MergeLink, nullptr);
    for (int i = 8; i < world.Vertices.Count(); ++i) {
        const VMVertex* copy = world.Vertices[i];
        ASSERT_NE(copy->MergeLink, nullptr);
        EXPECT_LT(world.Vertices.Find(copy->MergeLink), 8);
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(copy->Position[c], copy->MergeLink->Position[c]);
        EXPECT_EQ(copy->Index, 0xFFFFFFFFu);
    }
}

TEST_F(ExportMeshTest, PositionsAndNormalsEnterInEngineAxes)
{
    const MObject transform = CreateNode("transform", "tri");
    CreateMesh("triShape", transform, MeshDescription{{MPoint(1, 2, 3), MPoint(2, 2, 3), MPoint(1, 2, 4)}, {3}, {0, 2, 1}});
    AssignNewShader(PathTo("triShape").node(), "grey");
    ASSERT_TRUE(ExportMesh(State(), PathTo("triShape"), world, 0));
    ASSERT_EQ(world.Vertices.Count(), 3);
    const VMVertex* v = world.Vertices[0];
    EXPECT_FLOAT_EQ(v->Position[0], 1.0f);
    EXPECT_FLOAT_EQ(v->Position[1], -3.0f);
    EXPECT_FLOAT_EQ(v->Position[2], 2.0f);
    // The triangle faces Maya +y (corners 0, 2, 1 wind counter-clockwise seen from above),
    // which is engine +z.
    EXPECT_NEAR(v->Normal[0], 0.0f, 1e-6);
    EXPECT_NEAR(v->Normal[1], 0.0f, 1e-6);
    EXPECT_NEAR(v->Normal[2], 1.0f, 1e-6);
}

// Maya corners 3 4 1 0 of the first quad, reversed on the mirrored node (vertices 6 on).
TEST_F(ExportMeshTest, MirroredNodeHasItsCornerOrderReversed)
{
    AssignNewShader(CreateMesh("quadShape", CreateNode("transform", "quad"), TwoQuads()), "grey");
    AssignNewShader(CreateMesh("mirrorShape", CreateNode("transform", "mirror"), TwoQuads()), "grey2");
    SetAttr("mirror.scaleX", -1.0);
    ASSERT_TRUE(ExportMesh(State(), PathTo("quadShape"), world, 0));
    ASSERT_TRUE(ExportMesh(State(), PathTo("mirrorShape"), world, 0));
    ASSERT_EQ(world.Polygons.Count(), 4);
    const auto cornersOf = [&](int polygon) {
        std::vector<int> corners;
        for (const VMVertex* corner : world.Polygons[polygon]->Corners)
            corners.push_back(world.Vertices.Find(corner));
        return corners;
    };
    EXPECT_EQ(cornersOf(0), (std::vector<int> {3, 4, 1, 0}));
    EXPECT_EQ(cornersOf(2), (std::vector<int> {6, 7, 10, 9}));
    EXPECT_FLOAT_EQ(world.Vertices[7]->Position[0], -1.0f);
}

TEST_F(ExportMeshTest, BaseUVsAreFlippedInV)
{
    const MObject shape = CreateMesh("quadShape", CreateNode("transform", "quad"), TwoQuads());
    AssignTexturedShader(shape, "grey");
    SetUVs(shape, UVSpec{"map1", {0.0f, 0.5f, 1.0f, 0.0f, 0.5f, 1.0f}, {1.0f, 1.0f, 1.0f, 0.25f, 0.25f, 0.25f},
                         {3, 4, 1, 0, 4, 5, 2, 1}});
    ASSERT_TRUE(ExportMesh(State(), PathTo("quadShape"), world, 0));
    ASSERT_EQ(world.Vertices.Count(), 6);
    EXPECT_FLOAT_EQ(world.Vertices[4]->BaseUV[0], 0.5f);
    EXPECT_FLOAT_EQ(world.Vertices[4]->BaseUV[1], 0.75f);
    EXPECT_FLOAT_EQ(world.Vertices[0]->BaseUV[1], 0.0f);
}

TEST_F(ExportMeshTest, DifferentUVsOnASharedVertexSplitIt)
{
    const MObject shape = CreateMesh("quadShape", CreateNode("transform", "quad"), TwoQuads());
    AssignTexturedShader(shape, "grey");
    // The right quad has UVs of its own on the shared edge (1, 4).
    SetUVs(shape, UVSpec{"map1", {0, 1, 0, 1, 0, 1, 0, 1}, {1, 1, 0, 0, 1, 1, 0, 0}, {2, 3, 1, 0, 6, 7, 5, 4}});
    ASSERT_TRUE(ExportMesh(State(), PathTo("quadShape"), world, 0));
    EXPECT_EQ(world.Vertices.Count(), 8);
}

TEST_F(ExportMeshTest, MirroredUVsGiveTangentsOfLengthRootThree)
{
    parameters.Options.ExportTangents = true;
    const MObject shape = CreateMesh("quadShape", CreateNode("transform", "quad"), TwoQuads());
    AssignNewShader(shape, "grey");
    // Left quad mapped left to right, right quad mapped right to left.
    SetUVs(shape, UVSpec{"map1", {0, 1, 0, 1, 1, 0, 1, 0}, {1, 1, 0, 0, 1, 1, 0, 0}, {2, 3, 1, 0, 6, 7, 5, 4}});
    ASSERT_TRUE(ExportMesh(State(), PathTo("quadShape"), world, 0));
    EXPECT_EQ(world.HasTangents, 1);
    ASSERT_EQ(world.Polygons.Count(), 2);
    for (const VMVertex* corner : world.Polygons[0]->Corners)
        EXPECT_NEAR(Length(corner->Tangent), 1.0f, 1e-5);
    for (const VMVertex* corner : world.Polygons[1]->Corners)
        EXPECT_NEAR(Length(corner->Tangent), 1.7320508f, 1e-5);
}

TEST_F(ExportMeshTest, MeshWithoutUVsGetsZeroUVsAndNoTangentsWithoutAnIssue)
{
    parameters.Options.ExportTangents = true;
    const MObject shape = MakeCube("box", false);
    AssignTexturedShader(shape, "grey");
    ASSERT_TRUE(ExportMesh(State(), PathTo("boxShape"), world, 0));
    EXPECT_EQ(world.HasTangents, 0);
    ASSERT_EQ(world.Vertices.Count(), 8);
    for (const VMVertex* vertex : world.Vertices) {
        EXPECT_EQ(vertex->Tangent[0], 0.0f);
        EXPECT_EQ(vertex->BaseUV[0], 0.0f);
        EXPECT_EQ(vertex->BaseUV[1], 0.0f);
    }
    EXPECT_EQ(report.Count(IssueInvalidTextureUVs), 0);
    EXPECT_EQ(report.Count(IssueVertexWithoutUV), 0);
    EXPECT_EQ(report.Count(IssueInvalidTangents), 0);
}

TEST_F(ExportMeshTest, NodeWithoutMaterialRaisesItsIssueAndOneIssuePerUnusedVertex)
{
    MakeCube("box", false);
    ASSERT_TRUE(ExportMesh(State(), PathTo("boxShape"), world, 0));
    EXPECT_EQ(report.Details(IssueNodeWithoutMaterial), (std::vector<std::string>{"|box|boxShape"}));
    EXPECT_EQ(report.Count(IssueVertexWithoutUV), 8);
    EXPECT_EQ(world.Polygons.Count(), 0);
    ASSERT_EQ(world.Vertices.Count(), 8);
    for (const VMVertex* vertex : world.Vertices) {
        EXPECT_EQ(vertex->BaseUV[0], 0.0f);
        EXPECT_EQ(vertex->BaseUV[1], 0.0f);
        EXPECT_EQ(vertex->Normal[0], 1.0f);
        EXPECT_EQ(vertex->Normal[1], 0.0f);
    }
    EXPECT_NE(DebugText().find("No shaders at all!\r\n"), std::string::npos);

    // A node that cannot be opened as a mesh is refused and not recorded.
    CreateNode("transform", "empty");
    EXPECT_FALSE(ExportMesh(State(), PathTo("empty"), world, 0));
    EXPECT_EQ(State().MeshNodes.Count(), 1);
}

TEST_F(ExportMeshTest, VertexThatNoPolygonUsesRaisesVertexWithNoUVMapping)
{
    const MObject shape = CreateMesh(
        "triShape", CreateNode("transform", "tri"),
        MeshDescription{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0), MPoint(5, 5, 5)}, {3}, {0, 1, 2}});
    AssignNewShader(shape, "grey");
    ASSERT_TRUE(ExportMesh(State(), PathTo("triShape"), world, 0));
    EXPECT_EQ(report.Details(IssueVertexWithoutUV), (std::vector<std::string>{"|tri|triShape"}));
    EXPECT_EQ(world.Vertices[3]->Normal[0], 1.0f);
}

TEST_F(ExportMeshTest, PolygonsAreGroupedBySetInAscendingOrderWithTheirSetsMaterial)
{
    const MObject shape = MakeCube("box", true);
    AssignNewShader(shape, "first", {1, 3, 5});
    AssignNewShader(shape, "second", {0, 2, 4});
    ASSERT_TRUE(ExportMesh(State(), PathTo("boxShape"), world, 0));
    ASSERT_EQ(world.Polygons.Count(), 6);
    ASSERT_EQ(world.Materials.Count(), 2);
    const VMMaterial* first = world.Polygons[0]->Material();
    const VMMaterial* second = world.Polygons[3]->Material();
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->Name, "first");
    EXPECT_EQ(second->Name, "second");
    EXPECT_EQ(first->UseCount, 3u);
    EXPECT_EQ(second->UseCount, 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(world.Polygons[i]->Material(), first);
        EXPECT_EQ(world.Polygons[i + 3]->Material(), second);
    }
    // Face 1 (top: 2 3 5 4) is the first polygon of the first set.
    EXPECT_FLOAT_EQ(world.Polygons[0]->Corners[0]->Position[2], 0.5f);
}

TEST_F(ExportMeshTest, MeshNodeTableRecordsEachNodeAndPolygonsCarryTheNodeNumber)
{
    AssignNewShader(MakeCube("a", false), "grey");
    AssignNewShader(MakeCube("b", true), "grey2");
    ASSERT_TRUE(ExportMesh(State(), PathTo("aShape"), world, 0));
    ASSERT_TRUE(ExportMesh(State(), PathTo("bShape"), world, 0));
    const MeshNodeTable& table = State().MeshNodes;
    ASSERT_EQ(table.Count(), 2);
    EXPECT_EQ(table[0].Name, "|a|aShape");
    EXPECT_EQ(table[0].VertexCount, 8);
    EXPECT_EQ(table[0].VertexBase, 0);
    EXPECT_EQ(table[1].Name, "|b|bShape");
    EXPECT_EQ(table[1].VertexBase, 8);
    EXPECT_EQ(table.Find("|b|bShape"), 1);
    EXPECT_EQ(table.Find("|c|cShape"), -1);
    EXPECT_EQ(world.Polygons[0]->SourceNode, 1u);
    EXPECT_EQ(world.Polygons[6]->SourceNode, 2u);
    EXPECT_EQ(State().RunningVertexBase, 32);
}

// Without attributes a node casts shadows, is visible and collides with everything; a smooth cube keeps
// every corner on its vertex.
TEST_F(ExportMeshTest, StaticExportStoresTheNodesRenderAttributesOnItsPolygons)
{
    AssignNewShader(MakeCube("plain", false), "grey");
    AssignNewShader(MakeCube("box", false), "grey");
    SetAttr("boxShape.castsShadows", 0.0);
    AddAttr(NodeByName("box"), "Visible", AttrType::Int, 0);
    AddAttr(NodeByName("box"), "CollisionFlags", AttrType::Int, 0x10005);
    ASSERT_TRUE(ExportMesh(State(), PathTo("plainShape"), world, 0));
    EXPECT_EQ(world.Vertices.Count(), 8);
    ASSERT_TRUE(ExportMesh(State(), PathTo("boxShape"), world, 0));
    const VMPolygon* plain = world.Polygons[0];
    EXPECT_EQ(plain->CastShadows, 1);
    EXPECT_EQ(plain->Visible, 1);
    EXPECT_EQ(plain->CollisionFlags, 0xFFFF);
    const VMPolygon* box = world.Polygons[6];
    EXPECT_EQ(box->CastShadows, 0);
    EXPECT_EQ(box->Visible, 0);
    EXPECT_EQ(box->CollisionFlags, 5);
}

TEST_F(ExportMeshTest, ModelExportMakesFacesOfSkinVertices)
{
    parameters.FormatKind = kFormatKindModel;
    AssignNewShader(MakeCube("box", true), "grey");
    VMModel model;
    ASSERT_TRUE(ExportMesh(State(), PathTo("boxShape"), model, ExportMeshPreSkin));
    EXPECT_EQ(model.Vertices.Count(), 24);
    ASSERT_EQ(model.Faces.Count(), 6);
    EXPECT_EQ(model.Faces[0]->CornerCount(), 4);
    EXPECT_NE(model.Vertices[20]->Source, nullptr);
    EXPECT_EQ(model.Vertices[3]->Source, nullptr);
    ASSERT_EQ(model.Materials.Count(), 1);
    EXPECT_EQ(model.Materials[0]->ModelFlag, 1);
    EXPECT_EQ(model.Materials[0]->UseCount, 6u);
}

TEST_F(ExportMeshTest, MuscleAnimationCopiesEveryReuseOfAVertex)
{
    parameters.MuscleAnimation = true;
    AssignNewShader(MakeCube("box", false), "grey");
    ASSERT_TRUE(ExportMesh(State(), PathTo("boxShape"), world, 0));
    EXPECT_EQ(world.Vertices.Count(), 24);
}

TEST_F(ExportMeshTest, SkinnedMeshIsReadBeforeSkinningWithTheShapesSets)
{
    parameters.FormatKind = kFormatKindModel;
    const MObject shape = MakeCube("box", false);
    AssignNewShader(shape, "grey");
    const MObject joint = CreateNode("joint", "root");
    SkinMesh(shape, {joint}, std::vector<std::vector<double>>(8, std::vector<double>{1.0}));
    VMModel model;
    ASSERT_TRUE(ExportMesh(State(), PathTo("|box|boxShape"), model, ExportMeshPreSkin));
    EXPECT_EQ(model.Faces.Count(), 6);
    EXPECT_EQ(report.Count(IssueSkinCountMismatch), 0);
}

// One skin cluster deforms two meshes; the pre-skin mesh is its first input, so the second
// mesh's counts differ from those of the mesh it is read from.
TEST_F(ExportMeshTest, PreSkinAndFinalCountsThatDifferRaiseTheIssueBeforeAnyMaterialIsRead)
{
    parameters.FormatKind = kFormatKindModel;
    const MObject joint = CreateNode("joint", "root");
    const std::string skin =
        MFnDependencyNode(SkinMesh(MakeCube("box", false), {joint}, std::vector<std::vector<double>>(8, {1.0})))
            .name()
            .asChar();
    const MeshDescription triangle{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0)}, {3}, {0, 1, 2}};
    CreateMesh("leafOrigShape", CreateNode("transform", "leafOrig"), triangle);
    const MObject leaf = CreateMesh("leafShape", CreateNode("transform", "leaf"), triangle);
    ASSERT_TRUE(ConnectAttr("leafOrigShape.outMesh", skin + ".input[1].inputGeometry"));
    ASSERT_TRUE(ConnectAttr(skin + ".outputGeometry[1]", "leafShape.inMesh"));
    AssignTexturedShader(leaf, "bark");
    VMModel model;

    ASSERT_TRUE(ExportMesh(State(), PathTo("leafShape"), model, ExportMeshPreSkin));

    EXPECT_EQ(report.Details(IssueSkinCountMismatch),
              (std::vector<std::string>{"Node: |leaf|leafShape:\r\n  Polycount  Preskin:6  Postskin:1\r\n"
                                        "  Vertcount  Preskin:8  Postskin:3\r\n\r\n"}));
    EXPECT_EQ(model.Faces.Count(), 0);
    EXPECT_EQ(model.Vertices.Count(), 8);
    EXPECT_EQ(model.Materials.Count(), 0);
    const std::string trace = DebugText();
    EXPECT_NE(trace.find("Vertcount  Preskin:8 Postskin:3\r\nPolycount  Preskin:6 Postskin:1\r\n"), std::string::npos);
    EXPECT_EQ(trace.find("Set 0:"), std::string::npos);
}

TEST_F(ExportMeshTest, UVIndexBeyondTheTableIsFlaggedAndLeavesAZeroUV)
{
    const MObject shape = CreateMesh("quadShape", CreateNode("transform", "quad"), TwoQuads());
    AssignTexturedShader(shape, "grey");
    ASSERT_TRUE(SetUVs(shape, UVSpec{"map1", {0, 0.5f, 1, 0, 0.5f, 1}, {0, 0, 0, 1, 1, 1}, {3, 4, 1, 0, 4, 5, 2, 1}}));
    MeshAccess access;
    ASSERT_TRUE(OpenMeshAccess(access, PathTo("quadShape"), false));
    // A table read before the mesh lost its last UVs: ids 4 and 5 lie beyond it.
    access.BaseUVs = {0, 1, 0.5f, 1, 1, 1, 0, 0};
    for (int i = 0; i < 6; ++i) {
        auto vertex = VMWorld::NewVertex();
        vertex->BaseUV[0] = vertex->BaseUV[1] = kUnsetVertexValue;
        world.Vertices.Add(std::move(vertex));
    }
    int polygons = 0;
    int added = 0;

    ExportMesh_GetPolygons(State(), access, world, 0, NodeRenderAttributes(), polygons, added);

    EXPECT_EQ(access.InvalidUVIndexSeen, 1);
    EXPECT_EQ(polygons, 2);
    const VMVertex* beyond = world.Vertices[5];
    EXPECT_EQ(beyond->BaseUV[0], 0.0f);
    EXPECT_EQ(beyond->BaseUV[1], 0.0f);
    EXPECT_FLOAT_EQ(world.Vertices[1]->BaseUV[0], 0.5f);
}

TEST_F(ExportMeshTest, CornerWithoutUVsMakesTheTangentsInvalidForTheRestOfTheNode)
{
    parameters.Options.ExportTangents = true;
    const MObject shape = CreateMesh("quadShape", CreateNode("transform", "quad"), TwoQuads());
    AssignTexturedShader(shape, "grey");
    ASSERT_TRUE(SetUVs(shape, UVSpec{"map1", {0, 0.5f, 1, 0}, {0, 0, 0, 1}, {0, 1, 2, 3, -1, 1, 2, 0}}));

    ASSERT_TRUE(ExportMesh(State(), PathTo("quadShape"), world, 0));

    EXPECT_EQ(report.Details(IssueInvalidTangents), (std::vector<std::string>{"|quad|quadShape"}));
    EXPECT_EQ(report.Count(IssueInvalidTextureUVs), 0);
    EXPECT_NE(DebugText().find("Mesh had invalid tangents!\r\n"), std::string::npos);
}

}
