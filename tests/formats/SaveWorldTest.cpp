#include "GoldenBytes.h"
#include "TestWorlds.h"

#include "formats/SaveWorld.h"
#include "formats/StaticMeshChunks.h"
#include "formats/StaticMeshReader.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr char Target[] = "C:\\art\\level.qmesh";

class SaveWorldTest : public ::testing::Test {
protected:
    std::string Save(VMWorld& world)
    {
        VSaveParams params;
        params.Streams = &m_streams;
        params.Console = [this](const std::string& line) { m_console += line; };
        EXPECT_TRUE(SaveWorld(world, Target, params)) << LastError().Text;
        const std::string* bytes = m_streams.FindFile(Target);
        return bytes ? *bytes : std::string();
    }

    VStaticMeshFile SaveAndRead(VMWorld& world)
    {
        Save(world);
        VStaticMeshFile mesh;
        EXPECT_TRUE(ReadStaticMesh(Target, mesh, &m_streams)) << LastError().Text;
        return mesh;
    }

    VMemoryStreamProvider m_streams;
    std::string m_console;
};

TEST_F(SaveWorldTest, OneTriangleWorldIsWrittenByteForByte)
{
    //  C          A(0,0,1) B(1,0,1) C(0,1,1)
    //  | .
    //  A--B
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    AddVertex(world, 0, 0, 1);
    AddVertex(world, 1, 0, 1);
    AddVertex(world, 0, 1, 1);
    for (int i = 0; i < 3; ++i)
        world.Vertices[i]->Normal[2] = 1.0f;
    world.Vertices[1]->BaseUV[0] = 1.0f;
    world.Vertices[2]->BaseUV[1] = 1.0f;
    world.Vertices[0]->Tangent[0] = 1.0f;
    AddPolygon(world, {0, 1, 2}, stone);

    GoldenBytes vertexData;
    vertexData.F32({0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0})     // position, normal, uv, tangent
              .F32({1, 0, 1, 0, 0, 1, 1, 0, 0, 0, 0})
              .F32({0, 1, 1, 0, 0, 1, 0, 1, 0, 0, 0});
    GoldenBytes descriptorWords;
    descriptorWords.U16(44)                               // stride: 32 + tangent 12
                   .U16(0x3000)                           // position
                   .U16(0xFFFF)                           // colour
                   .U16(0x000C)                           // normal
                   .U16(0x2018)                           // uv 0
                   .U16(0xFFFF)                           // uv 1
                   .U16(0x3020);                          // tangent at 32
    for (int word = 7; word < 21; ++word)
        descriptorWords.U16(0xFFFF);
    descriptorWords.U8({0xFF, 0}).I32(0);

    const GoldenBytes expected = GoldenBytes().FileHeader()
        .Chunk(0, ChunkVMSH, GoldenBytes()
            .U8({0x48, 0x53, 0x4D, 0x56})                 // "HSMV"
            .I32(1)                                       // version
            .U8({0xCD, 0xAB, 0x55, 0x44})                 // buffer magic
            .U32(1)                                       // buffer version
            .U8({0x0B, 0x0A, 0x02, 0x01})                 // descriptor magic
            .U32(48)                                      // descriptor size
            .Bytes(descriptorWords.Str())
            .U32(0x01020A0B)                              // descriptor magic again
            .I32(3)                                       // vertex count
            .U8({0}).I32(0)
            .I32(3)                                       // index count
            .I32(16)                                      // index width
            .I32(1)                                       // triangle count
            .U8({0, 1, 1})
            .U8({0x00, 0x00, 0x81, 0x01})
            .U8({1, 0}).U16(0)
            .Bytes(vertexData.Str())
            .U16(0).U16(1).U16(2)                         // indices
            .F32({0, 0, 1, 1, 1, 1})                      // world box
            .I32(0))                                      // reserved
        .Chunk(0, ChunkMTRS, GoldenBytes()
            .I32(1)
            .Bytes(DefaultMaterialChunk("stone").Str()))
        .Chunk(0, ChunkSMSH, GoldenBytes()
            .I32(3)                                       // shadow index count
            .I32s({0, 1, 2})
            .F32({0, 0, -1, 1})                           // (C - A) x (B - A), w = -(n . A)
            .I32s({-1, -1, -1}))                          // no neighbours
        .Chunk(0, ChunkSUBM, GoldenBytes()
            .I32(1)
            .I32s({0, 3})                                 // render first index, count
            .I32s({0, 3})                                 // shadow first index, count
            .I32s({0, 3})                                 // render first vertex, count
            .I32s({0, 3})                                 // shadow first vertex, count
            .F32({0, 0, 1, 1, 1, 1})                      // box
            .I32(0))                                      // material number
        .FileEnd();

    // A successful save also clears an earlier error.
    SetLastError("earlier");
    EXPECT_EQ(Save(world), expected.Str());
    EXPECT_EQ(LastError().Text, "");
}

// Every vertex at z = 1.
//  3---2      the tri-list (wood) covers 0 1 2 / 0 2 3,
//  |  /|\     the polygons (stone) are the quad 1 4 5 2 and the triangle 4 6 5
//  0-1-4-6
void BuildTwoMaterialWorld(VMWorld& world)
{
    VMMaterial& wood = AddMaterial(world, "wood");
    VMMaterial& stone = AddMaterial(world, "stone");
    AddVertex(world, 0, 0, 1);
    AddVertex(world, 1, 0, 1);
    AddVertex(world, 1, 1, 1);
    AddVertex(world, 0, 1, 1);
    AddVertex(world, 2, 0, 1);
    AddVertex(world, 2, 1, 1);
    AddVertex(world, 3, 0, 1);
    AddPolygon(world, {1, 4, 5, 2}, stone);
    AddPolygon(world, {4, 6, 5}, stone);
    AddTriList(world, {0, 1, 2, 0, 2, 3}, wood);
}

TEST_F(SaveWorldTest, TwoMaterialWorldWritesShadowMeshAndSubmeshesByteForByteAndReadsBack)
{
    VMWorld world;
    BuildTwoMaterialWorld(world);

    const std::string bytes = Save(world);

    const GoldenBytes indexData = GoldenBytes()
        .U16(0).U16(1).U16(2).U16(0).U16(2).U16(3)        // the tri-list first
        .U16(1).U16(4).U16(5).U16(1).U16(5).U16(2)        // the quad, fanned from its first corner
        .U16(4).U16(6).U16(5);
    const GoldenBytes tail = GoldenBytes()
        .Chunk(0, ChunkSMSH, GoldenBytes()
            .I32(15)
            .I32s({0, 1, 2, 0, 2, 3, 1, 4, 5, 1, 5, 2, 4, 6, 5})
            .F32({0, 0, -1, 1}).F32({0, 0, -1, 1}).F32({0, 0, -1, 1}).F32({0, 0, -1, 1}).F32({0, 0, -1, 1})
            .I32s({-1, 3, 1})                             // 1-2 is 2-1 of triangle 3, 2-0 is 0-2 of triangle 1
            .I32s({0, -1, -1})
            .I32s({-1, 4, 3})
            .I32s({2, -1, 0})
            .I32s({-1, -1, 2}))
        .Chunk(0, ChunkSUBM, GoldenBytes()
            .I32(2)
            .I32s({0, 6, 0, 6})                           // render, shadow first index and count
            .I32s({0, 4, 0, 4})                           // render, shadow first vertex and count
            .F32({0, 0, 1, 1, 1, 1})
            .I32(0)                                       // wood
            .I32s({6, 9, 6, 9})
            .I32s({1, 6, 1, 6})
            .F32({1, 0, 1, 3, 1, 1})
            .I32(1))                                      // stone
        .FileEnd();
    EXPECT_NE(bytes.find(indexData.Str() + GoldenBytes().F32({0, 0, 1, 3, 1, 1}).I32(0).Str()), std::string::npos);
    ASSERT_GE(bytes.size(), tail.Size());
    EXPECT_EQ(bytes.substr(bytes.size() - tail.Size()), tail.Str());

    VStaticMeshFile mesh;
    ASSERT_TRUE(ReadStaticMesh(Target, mesh, &m_streams)) << LastError().Text;
    const std::vector<uint32_t> chunks = {ChunkVMSH, ChunkMTRS, ChunkSMSH, ChunkSUBM};
    EXPECT_EQ(mesh.Chunks, chunks);
    ASSERT_EQ(mesh.Materials.size(), 2u);
    EXPECT_EQ(mesh.Materials[0]->Name, "wood");
    EXPECT_EQ(mesh.Materials[1]->Name, "stone");
    EXPECT_EQ(mesh.TriangleCount, 5);
    EXPECT_EQ(mesh.Vertices[6].Position[0], 3.0f);
}

TEST_F(SaveWorldTest, PolygonsOfDifferentGroupsOrAreasFormSeparateBatches)
{
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    for (int i = 0; i < 4; ++i)
        AddVertex(world, static_cast<float>(i), static_cast<float>(i % 2), 0);
    auto area = VMWorld::NewVisArea();
    VMVisArea& hall = *area;
    world.VisAreas.Add(std::move(area));
    AddPolygon(world, {0, 1, 2}, stone);
    hall.Link(AddPolygon(world, {1, 2, 3}, stone));
    AddPolygon(world, {0, 2, 3}, stone).Group = 4;
    AddPolygon(world, {0, 1, 3}, stone);

    const VStaticMeshFile mesh = SaveAndRead(world);

    ASSERT_EQ(mesh.Submeshes.size(), 3u);
    EXPECT_EQ(mesh.Submeshes[0].RenderIndexCount, 6);
    EXPECT_EQ(mesh.Submeshes[1].RenderIndexCount, 3);
    EXPECT_EQ(mesh.Submeshes[2].RenderIndexCount, 3);
    const std::vector<int32_t> groups = {0, 0, 4};
    EXPECT_EQ(mesh.Groups, groups);
    ASSERT_EQ(hall.Submeshes.Count(), 1);
    EXPECT_EQ(hall.Submeshes[0], world.Submeshes[1]);
    EXPECT_EQ(world.Submeshes[1]->Area, &hall);
}

TEST_F(SaveWorldTest, GroupZeroWritesGroupChunkWithNegativeGroupsAsZero)
{
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    VMMaterial& wood = AddMaterial(world, "wood");
    for (int i = 0; i < 3; ++i)
        AddVertex(world, static_cast<float>(i), static_cast<float>(i * i), 0);
    AddPolygon(world, {0, 1, 2}, stone);
    AddPolygon(world, {0, 1, 2}, wood).Group = 0;

    const std::string bytes = Save(world);

    const GoldenBytes groupChunk = GoldenBytes().Chunk(0, ChunkSMPG, GoldenBytes().I32s({0, 0}));
    const GoldenBytes tail = GoldenBytes().Bytes(groupChunk.Str()).FileEnd();
    ASSERT_GE(bytes.size(), tail.Size());
    EXPECT_EQ(bytes.substr(bytes.size() - tail.Size()), tail.Str());
}

TEST_F(SaveWorldTest, RenderAndShadowFlagsSelectTheListsAndTheHiddenMaterialKindIsLeftOut)
{
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    VMMaterial& hidden = AddMaterial(world, "hidden");
    hidden.Kind = 80;
    AddGrid(world, 1, stone);
    AddPolygon(world, {0, 1, 2}, hidden);
    world.Polygons[0]->Visible = 0;
    world.Polygons[1]->CastShadows = 0;

    const VStaticMeshFile mesh = SaveAndRead(world);

    ASSERT_EQ(mesh.Submeshes.size(), 1u);
    EXPECT_EQ(mesh.Materials.size(), 2u);

    const std::vector<uint32_t> render = {0, 3, 2};
    const std::vector<int32_t> shadow = {0, 1, 3};
    EXPECT_EQ(mesh.Indices, render);
    EXPECT_EQ(mesh.ShadowIndices, shadow);
}

TEST_F(SaveWorldTest, ShadowListUsesTheVertexEachCornerWasWeldedInto)
{
    //  Vertex 3 sits on vertex 1 with other UVs and is linked to it.
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    AddVertex(world, 0, 0, 0);
    AddVertex(world, 1, 0, 0);
    AddVertex(world, 0, 1, 0);
    AddVertex(world, 1, 0, 0).MergeLink = world.Vertices[1];
    AddVertex(world, 1, 1, 0);
    AddPolygon(world, {0, 1, 2}, stone);
    AddPolygon(world, {2, 3, 4}, stone);

    const VStaticMeshFile mesh = SaveAndRead(world);

    const std::vector<uint32_t> render = {0, 1, 2, 2, 3, 4};
    const std::vector<int32_t> shadow = {0, 1, 2, 2, 1, 4};
    EXPECT_EQ(mesh.Indices, render);
    EXPECT_EQ(mesh.ShadowIndices, shadow);
    // The shared edge 1-2 / 2-1 links the two shadow triangles.
    const std::vector<int32_t> neighbours = {-1, 1, -1, 0, -1, -1};
    EXPECT_EQ(mesh.ShadowNeighbours, neighbours);
}

struct StrideCase {
    bool SecondUV;
    bool Colours;
    uint16_t Stride;
    uint16_t SecondUVWord;
    uint16_t TangentWord;
    uint16_t ColourWord;
};

class SaveWorldStrideTest : public SaveWorldTest, public ::testing::WithParamInterface<StrideCase> {};

TEST_P(SaveWorldStrideTest, DescriptorPlacesOptionalComponentsAfterTheFixedBytes)
{
    const StrideCase& expected = GetParam();
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    AddGrid(world, 1, stone);
    world.HasSecondUV = expected.SecondUV;
    world.HasColours = expected.Colours;
    world.Vertices[1]->SecondUV[0] = 0.25f;
    world.Vertices[1]->Tangent[1] = 0.5f;
    world.Vertices[1]->Colour[0] = 7;

    const VStaticMeshFile mesh = SaveAndRead(world);

    EXPECT_EQ(mesh.DescriptorWords[0], expected.Stride);
    EXPECT_EQ(mesh.DescriptorWords[2], expected.ColourWord);
    EXPECT_EQ(mesh.DescriptorWords[5], expected.SecondUVWord);
    EXPECT_EQ(mesh.DescriptorWords[6], expected.TangentWord);
    EXPECT_EQ(world.HasTangents, 1);
    EXPECT_EQ(mesh.Vertices[1].Tangent[1], 0.5f);
    EXPECT_EQ(mesh.Vertices[1].SecondUV[0], expected.SecondUV ? 0.25f : 0.0f);
    EXPECT_EQ(mesh.Vertices[1].Colour[0], expected.Colours ? 7 : 0);
}

INSTANTIATE_TEST_SUITE_P(Components, SaveWorldStrideTest,
                         ::testing::Values(StrideCase {false, false, 44, 0xFFFF, 0x3020, 0xFFFF},
                                           StrideCase {true, false, 52, 0x2020, 0x3028, 0xFFFF},
                                           StrideCase {false, true, 48, 0xFFFF, 0x3020, 0x002C},
                                           StrideCase {true, true, 56, 0x2020, 0x3028, 0x0034}));

// vertexCount vertices and one triangle over the first and the last two. It casts no shadow,
// since a shadow range that wide would have the vertices renumbered per submesh.
void AddWideTriangle(VMWorld& world, VMMaterial& material, int vertexCount)
{
    world.Vertices.Reserve(vertexCount);
    for (int i = 0; i < vertexCount; ++i)
        AddVertex(world, static_cast<float>(i), static_cast<float>(i % 2), 0);
    AddPolygon(world, {0, vertexCount - 2, vertexCount - 1}, material).CastShadows = 0;
}

TEST_F(SaveWorldTest, IndicesWidenToThirtyTwoBitsFromTheSixtyFiveThousandFiveHundredThirtySixthVertex)
{
    for (const int count : {65535, 65536}) {
        VMWorld world;
        AddWideTriangle(world, AddMaterial(world, "stone"), count);

        const std::string bytes = Save(world);
        VStaticMeshFile mesh;
        ASSERT_TRUE(ReadStaticMesh(Target, mesh, &m_streams));

        EXPECT_EQ(mesh.IndexWidth, count == 65535 ? 16 : 32);
        const std::vector<uint32_t> indices = {0, static_cast<uint32_t>(count) - 2, static_cast<uint32_t>(count) - 1};
        EXPECT_EQ(mesh.Indices, indices);
        // The last index sits right before the world box and the reserved word, in its width.
        const GoldenBytes last = count == 65535 ? GoldenBytes().U16(65534) : GoldenBytes().I32(65535);
        EXPECT_NE(bytes.find(last.Str() + GoldenBytes().F32({0, 0, 0}).Str()), std::string::npos);
    }
}

TEST_F(SaveWorldTest, EmptyWorldWritesEmptyMeshAndNoSubmeshes)
{
    VMWorld world;

    const VStaticMeshFile mesh = SaveAndRead(world);

    EXPECT_TRUE(mesh.Vertices.empty());
    EXPECT_TRUE(mesh.Indices.empty());
    EXPECT_EQ(mesh.IndexWidth, 16);
    EXPECT_TRUE(mesh.ShadowIndices.empty());
    EXPECT_TRUE(mesh.Submeshes.empty());
    EXPECT_EQ(mesh.Bounds.Min[0], 1e8f);
}

TEST_F(SaveWorldTest, UncreatableFileOrACornerOutsideTheVertexListFailsWithoutWritingAFile)
{
    VMWorld world;
    AddGrid(world, 1, AddMaterial(world, "stone"));
    VSaveParams params;
    EXPECT_FALSE(SaveWorld(world, "\\no\\such\\folder\\level.qmesh", params));
    EXPECT_EQ(LastError().Text, "Failed to create file '/no/such/folder/level.qmesh'");

    VMVertex stray;
    world.Polygons[0]->Corners[1] = &stray;
    params.Streams = &m_streams;

    EXPECT_FALSE(SaveWorld(world, Target, params));
    EXPECT_NE(LastError().Text.find("outside the vertex list"), std::string::npos);
    EXPECT_EQ(m_streams.FindFile(Target), nullptr);
}

} // namespace
