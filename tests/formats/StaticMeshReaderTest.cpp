#include "GoldenBytes.h"
#include "TestWorlds.h"

#include "formats/CollisionMeshReader.h"
#include "formats/DescribeAssetFile.h"
#include "formats/SaveCollisionMesh.h"
#include "formats/SaveWorld.h"
#include "formats/StaticMeshChunks.h"
#include "formats/StaticMeshReader.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class StaticMeshReaderTest : public ::testing::Test {
protected:
    std::string SavedMesh()
    {
        VMWorld world;
        VMMaterial& brick = AddMaterial(world, "brick");
        brick.DiffuseTexture = "brick.dds";
        brick.Transparency = 2;
        AddGrid(world, 2, brick);
        world.Polygons[0]->Group = 3;
        VSaveParams params;
        params.Streams = &m_streams;
        EXPECT_TRUE(SaveWorld(world, "level.qmesh", params));
        return *m_streams.FindFile("level.qmesh");
    }

    bool ReadBytes(const std::string& bytes)
    {
        m_streams.SetFile("damaged.qmesh", bytes);
        VStaticMeshFile mesh;
        return ReadStaticMesh("damaged.qmesh", mesh, &m_streams);
    }

    VMemoryStreamProvider m_streams;
};

TEST_F(StaticMeshReaderTest, DescriptionNamesChunksCountsMaterialsAndSubmeshes)
{
    SavedMesh();
    VStaticMeshFile mesh;
    ASSERT_TRUE(ReadStaticMesh("level.qmesh", mesh, &m_streams));

    EXPECT_EQ(DescribeStaticMesh(mesh),
              "Static mesh\n"
              "Chunks: VMSH MTRS SMSH SUBM SMPG\n"
              "Vertices: 9 (stride 44: position, normal, uv, tangent)\n"
              "Indices: 24 (16-bit), triangles 8\n"
              "Bounds: (0, 0, 0) - (2, 2, 0)\n"
              "Materials: 1\n"
              "  0 \"brick\": diffuse \"brick.dds\", transparency alpha, 0 shader(s)\n"
              "Shadow triangles: 8\n"
              "Submeshes: 2\n"
              "  0: material 0, render indices 0+3 vertices 0+5, shadow indices 0+3 vertices 0+5, group 3,"
              " box (0, 0, 0) - (1, 1, 0)\n"
              "  1: material 0, render indices 3+21 vertices 0+9, shadow indices 3+21 vertices 0+9, group 0,"
              " box (0, 0, 0) - (2, 2, 0)\n");
}

TEST_F(StaticMeshReaderTest, DescriptionGivesTheRangeOfTheSecondUVSet)
{
    VMWorld world;
    AddGrid(world, 1, AddMaterial(world, "brick"));
    world.HasSecondUV = 1;
    for (VMVertex* vertex : world.Vertices) {
        vertex->SecondUV[0] = 0.25f + 0.5f * vertex->Position[0];
        vertex->SecondUV[1] = 0.125f * vertex->Position[1];
    }
    VSaveParams params;
    params.Streams = &m_streams;
    ASSERT_TRUE(SaveWorld(world, "lit.qmesh", params));
    VStaticMeshFile mesh;
    ASSERT_TRUE(ReadStaticMesh("lit.qmesh", mesh, &m_streams));

    EXPECT_NE(DescribeStaticMesh(mesh).find("(stride 52: position, normal, uv, second uv, tangent)\n"
                                            "Second UV: (0.25, 0) - (0.75, 0.125)\n"),
              std::string::npos);
}

TEST_F(StaticMeshReaderTest, EveryTruncationFailsCleanly)
{
    const std::string bytes = SavedMesh();
    for (size_t length = 0; length < bytes.size(); length += 7)
        EXPECT_FALSE(ReadBytes(bytes.substr(0, length))) << length;
}

TEST_F(StaticMeshReaderTest, HugeVertexCountOrAnIndexBeyondTheVerticesIsRefused)
{
    const std::string saved = SavedMesh();
    // The vertex count follows the second descriptor magic.
    const size_t count = saved.find(GoldenBytes().U32(0x01020A0B).Str(), 60) + 4;
    std::string bytes = saved;
    bytes.replace(count, 4, GoldenBytes().I32(0x7FFFFFFF).Str());
    EXPECT_FALSE(ReadBytes(bytes));
    EXPECT_NE(LastError().Text.find("Vertex count exceeds the chunk in chunk VMSH"), std::string::npos);

    // The first index lies right after the 9 vertex records of 44 bytes.
    bytes = saved;
    bytes[count + 4 + 1 + 4 * 4 + 3 + 4 + 2 + 2 + 9 * 44] = 9;
    EXPECT_FALSE(ReadBytes(bytes));
    EXPECT_NE(LastError().Text.find("Index outside the vertices"), std::string::npos);
}

TEST_F(StaticMeshReaderTest, UnknownChunksAreSkipped)
{
    std::string bytes = SavedMesh();
    bytes.insert(bytes.size() - 4, GoldenBytes().Chunk(0, 0x41424344, GoldenBytes().I32(5)).Str());
    m_streams.SetFile("odd.qmesh", bytes);
    VStaticMeshFile mesh;
    ASSERT_TRUE(ReadStaticMesh("odd.qmesh", mesh, &m_streams)) << LastError().Text;
    EXPECT_EQ(mesh.Chunks.size(), 6u);
    EXPECT_EQ(mesh.Submeshes.size(), 2u);
}

TEST_F(StaticMeshReaderTest, FileWithoutTheMeshChunksOrMissingIsRefusedByName)
{
    EXPECT_FALSE(ReadBytes(GoldenBytes().FileHeader().Chunk(0, ChunkSMPG, GoldenBytes().I32(0)).FileEnd().Str()));
    EXPECT_EQ(LastError().Text, "File 'damaged.qmesh' is not a readable static mesh: Missing chunk VMSH");
    VStaticMeshFile mesh;
    EXPECT_FALSE(ReadStaticMesh("none.qmesh", mesh, &m_streams));
    EXPECT_EQ(LastError().Text.rfind("Failed to open file 'none.qmesh'", 0), 0u);
}

TEST(CollisionMeshReaderTest, DescriptionGivesCountsAndBounds)
{
    VMemoryStreamProvider streams;
    VMWorld world;
    AddGrid(world, 1, AddMaterial(world, "brick"));
    VSaveParams params;
    params.Streams = &streams;
    ASSERT_TRUE(SaveCollisionMesh(world, "level.qcolmesh", params));
    VCollisionMeshFile mesh;
    ASSERT_TRUE(ReadCollisionMesh("level.qcolmesh", mesh, &streams));

    EXPECT_EQ(DescribeCollisionMesh(mesh),
              "Collision mesh\nChunks: COLM VIND\nVersion: 1\nVertices: 4\nTriangles: 2\nBounds: (0, 0, 0) - (1, 1, 0)\n");
}

TEST(CollisionMeshReaderTest, IndexBeyondTheVerticesOrHugeCountsAreRefused)
{
    VMemoryStreamProvider streams;
    VCollisionMeshFile mesh;
    const auto read = [&](const GoldenBytes& content) {
        streams.SetFile("bad.qcolmesh", GoldenBytes().FileHeader().Chunk(0, ChunkVIND, content).FileEnd().Str());
        return ReadCollisionMesh("bad.qcolmesh", mesh, &streams);
    };
    EXPECT_FALSE(read(GoldenBytes().I32(1).I32(3).F32({0, 0, 0}).I32s({0, 0, 1})));
    EXPECT_EQ(LastError().Text, "File 'bad.qcolmesh' is not a readable collision mesh: Index outside the vertices in chunk VIND");
    // Refused without allocating.
    EXPECT_FALSE(read(GoldenBytes().I32(0x40000000).I32(0x7FFFFFFE)));
}

TEST_F(StaticMeshReaderTest, AssetDescriptionIsChosenByExtensionIgnoringCase)
{
    SavedMesh();
    m_streams.SetFile("LEVEL.QMESH", *m_streams.FindFile("level.qmesh"));
    std::string text;
    ASSERT_TRUE(DescribeAssetFile("LEVEL.QMESH", text, &m_streams)) << LastError().Text;
    EXPECT_EQ(text.rfind("Static mesh\n", 0), 0u);
    EXPECT_FALSE(DescribeAssetFile("level.mesh", text, &m_streams));
    EXPECT_EQ(LastError().Text, "Unknown asset file type '.mesh': expected .qmesh, .qcolmesh, .model or .anim");
}

} // namespace
