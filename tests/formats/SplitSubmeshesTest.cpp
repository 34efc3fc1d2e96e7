#include "TestWorlds.h"

#include "formats/SaveWorld.h"
#include "formats/StaticMeshReader.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr char Target[] = "split.qmesh";

// triangleCount triangles in one tri-list, all on the same three vertices 0 1 2 but listed
// as fresh corners, so that render and shadow lists are equally long.
void AddLongTriList(VMWorld& world, VMMaterial& material, int triangleCount)
{
    const int first = world.Vertices.Count();
    for (int i = 0; i < triangleCount; ++i) {
        AddVertex(world, static_cast<float>(i), 0, 0);
        AddVertex(world, static_cast<float>(i), 1, 0);
        AddVertex(world, static_cast<float>(i), 0, 1);
    }
    VMTriList& triList = AddTriList(world, {}, material);
    for (int i = 0; i < triangleCount * 3; ++i)
        triList.Corners.push_back(world.Vertices[first + i]);
}

class SplitSubmeshesTest : public ::testing::Test {
protected:
    VStaticMeshFile SaveAndRead(VMWorld& world)
    {
        VSaveParams params;
        params.Streams = &m_streams;
        params.Console = [this](const std::string& line) { m_console += line; };
        EXPECT_TRUE(SaveWorld(world, Target, params)) << LastError().Text;
        VStaticMeshFile mesh;
        EXPECT_TRUE(ReadStaticMesh(Target, mesh, &m_streams)) << LastError().Text;
        return mesh;
    }

    VMemoryStreamProvider m_streams;
    std::string m_console;
};

TEST_F(SplitSubmeshesTest, SubmeshOf65532IndicesIsSplitInTwoOf32766)
{
    VMWorld world;
    AddLongTriList(world, AddMaterial(world, "stone"), 65532 / 3);

    const VStaticMeshFile mesh = SaveAndRead(world);

    ASSERT_EQ(mesh.Submeshes.size(), 2u);
    EXPECT_EQ(mesh.Submeshes[0].RenderIndexCount, 32766);
    EXPECT_EQ(mesh.Submeshes[1].RenderIndexCount, 32766);
    EXPECT_EQ(mesh.Submeshes[1].RenderFirstIndex, 32766);
    EXPECT_EQ(mesh.Submeshes[1].ShadowFirstIndex, 32766);
    EXPECT_EQ(m_console, "\n\nReordering of the indices in the submeshes is necessary..\n");
}

TEST_F(SplitSubmeshesTest, SubmeshOf32769IndicesIsSplitInto32766AndThreeWhile32766StaysWhole)
{
    VMWorld whole;
    AddLongTriList(whole, AddMaterial(whole, "stone"), 32766 / 3);
    EXPECT_EQ(SaveAndRead(whole).Submeshes.size(), 1u);
    EXPECT_EQ(m_console, "");

    VMWorld world;
    AddLongTriList(world, AddMaterial(world, "stone"), 32769 / 3);

    const VStaticMeshFile mesh = SaveAndRead(world);

    ASSERT_EQ(mesh.Submeshes.size(), 2u);
    EXPECT_EQ(mesh.Submeshes[0].ShadowIndexCount, 32766);
    EXPECT_EQ(mesh.Submeshes[1].ShadowIndexCount, 3);
    EXPECT_EQ(mesh.Submeshes[1].RenderFirstVertex, 32766);
    EXPECT_EQ(mesh.Submeshes[1].RenderVertexCount, 3);
    // The box of the last piece covers only its own triangle.
    EXPECT_EQ(mesh.Submeshes[1].Box.Min[0], 10922.0f);
    EXPECT_EQ(mesh.Submeshes[0].Box.Max[0], 10921.0f);
}

TEST_F(SplitSubmeshesTest, WideShadowRangeRenumbersVerticesPerSubmesh)
{
    // Two submeshes share vertex 0; their triangles reach far apart in the vertex list.
    VMWorld world;
    world.HasColours = 1;
    VMMaterial& stone = AddMaterial(world, "stone");
    VMMaterial& wood = AddMaterial(world, "wood");
    for (int i = 0; i < 40000; ++i)
        AddVertex(world, static_cast<float>(i), 0, 0);
    world.Vertices[39999]->BaseUV[0] = 0.5f;
    world.Vertices[39998]->Colour[1] = 9;
    AddPolygon(world, {0, 39998, 39999}, stone);
    AddPolygon(world, {0, 1, 2}, wood);

    const VStaticMeshFile mesh = SaveAndRead(world);

    // Each submesh walks its shadow list, then its render list; vertex 0 gets one copy each.
    ASSERT_EQ(mesh.Vertices.size(), 6u);
    const std::vector<uint32_t> indices = {0, 1, 2, 3, 4, 5};
    EXPECT_EQ(mesh.Indices, indices);
    EXPECT_EQ(mesh.Vertices[2].Position[0], 39999.0f);
    EXPECT_EQ(mesh.Vertices[2].BaseUV[0], 0.5f);
    EXPECT_EQ(mesh.Vertices[1].Colour[1], 9);
    EXPECT_EQ(mesh.Vertices[3].Position[0], 0.0f);
    ASSERT_EQ(mesh.Submeshes.size(), 2u);
    EXPECT_EQ(mesh.Submeshes[0].RenderFirstVertex, 0);
    EXPECT_EQ(mesh.Submeshes[0].RenderVertexCount, 3);
    EXPECT_EQ(mesh.Submeshes[1].ShadowFirstVertex, 3);
    EXPECT_EQ(mesh.Submeshes[1].ShadowVertexCount, 3);
    EXPECT_EQ(mesh.IndexWidth, 16);
}

TEST_F(SplitSubmeshesTest, ShadowVertexBehindItsWeldTargetComesFirstInTheSubmesh)
{
    // The shadow list of triangle 0 1 2 reads 0 3 2 (vertex 1 was welded into 3); the render
    // list then adds vertex 1 as the fourth number.
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    for (int i = 0; i < 40000; ++i)
        AddVertex(world, static_cast<float>(i % 7), static_cast<float>(i / 7), 0);
    world.Vertices[1]->MergeLink = world.Vertices[3];
    AddPolygon(world, {0, 1, 39999}, stone);

    const VStaticMeshFile mesh = SaveAndRead(world);

    const std::vector<int32_t> shadow = {0, 1, 2};
    const std::vector<uint32_t> render = {0, 3, 2};
    EXPECT_EQ(mesh.ShadowIndices, shadow);
    EXPECT_EQ(mesh.Indices, render);
    EXPECT_EQ(mesh.Vertices[1].Position[0], 3.0f);
    EXPECT_EQ(mesh.Vertices[3].Position[0], 1.0f);
}

TEST_F(SplitSubmeshesTest, DifferentRenderAndShadowCountsSkipTheSplit)
{
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    AddLongTriList(world, stone, 32769 / 3);
    AddLongTriList(world, stone, 1);
    world.TriLists[0]->Visible = 0;

    const VStaticMeshFile mesh = SaveAndRead(world);

    EXPECT_EQ(mesh.Submeshes.size(), 2u);
    EXPECT_EQ(m_console,
              "\n\nReordering of the indices in the submeshes is necessary..\n"
              "\nERROR! RenderIndexCount != ShadowIndexCount!\nSkipped submesh splitting.\n");
}

} // namespace
