#include "GoldenBytes.h"
#include "TestWorlds.h"

#include "formats/CollisionMeshReader.h"
#include "formats/SaveCollisionMesh.h"
#include "formats/StaticMeshChunks.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr char Target[] = "level.qcolmesh";

class SaveCollisionMeshTest : public ::testing::Test {
protected:
    std::string Save(const VMWorld& world)
    {
        VSaveParams params;
        params.Streams = &m_streams;
        EXPECT_TRUE(SaveCollisionMesh(world, Target, params)) << LastError().Text;
        const std::string* bytes = m_streams.FindFile(Target);
        return bytes ? *bytes : std::string();
    }

    VCollisionMeshFile SaveAndRead(const VMWorld& world)
    {
        Save(world);
        VCollisionMeshFile mesh;
        EXPECT_TRUE(ReadCollisionMesh(Target, mesh, &m_streams)) << LastError().Text;
        return mesh;
    }

    VMemoryStreamProvider m_streams;
};

TEST_F(SaveCollisionMeshTest, WorldWithoutCollisionPrimitivesWritesEmptyTriangleChunk)
{
    VMWorld world;
    AddGrid(world, 1, AddMaterial(world, "stone"));
    // Only the low sixteen collision bits count.
    world.Polygons[0]->CollisionFlags = 0x10000;
    world.Polygons[1]->CollisionFlags = 0;

    const GoldenBytes expected = GoldenBytes().FileHeader()
        .Chunk(0, ChunkCOLM, GoldenBytes()
            .U8({0x4C, 0x4F, 0x43, 0x56})                 // "LOCV"
            .I32(1)                                       // version
            .I32(0))
        .Chunk(0, ChunkVIND, GoldenBytes()
            .I32(0)                                       // vertex count
            .I32(0))                                      // index count
        .FileEnd();
    EXPECT_EQ(Save(world), expected.Str());
}

TEST_F(SaveCollisionMeshTest, OneTriangleIsWrittenByteForByte)
{
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    AddVertex(world, 0, 0, 0);
    AddVertex(world, 1, 2, 3);
    AddVertex(world, 4, 5, 6);
    AddPolygon(world, {0, 1, 2}, stone);

    const GoldenBytes expected = GoldenBytes().FileHeader()
        .Chunk(0, ChunkCOLM, GoldenBytes().U32(0x56434F4C).I32(1).I32(0))
        .Chunk(0, ChunkVIND, GoldenBytes()
            .I32(3).I32(3)                                // vertex and index count
            .F32({0, 0, 0, 1, 2, 3, 4, 5, 6})             // positions
            .I32s({0, 1, 2}))                             // indices
        .FileEnd();
    EXPECT_EQ(Save(world), expected.Str());
}

TEST_F(SaveCollisionMeshTest, PolygonsAreFannedAndUnusedVerticesRemovedWithTheRestRenumberedInOrder)
{
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    for (int i = 0; i < 7; ++i)
        AddVertex(world, static_cast<float>(i), 0, 0);
    AddPolygon(world, {6, 1, 3, 4, 5}, stone);

    const VCollisionMeshFile mesh = SaveAndRead(world);

    const std::vector<float> positions = {1, 0, 0, 3, 0, 0, 4, 0, 0, 5, 0, 0, 6, 0, 0};
    const std::vector<int32_t> indices = {4, 0, 1, 4, 1, 2, 4, 2, 3};
    EXPECT_EQ(mesh.Positions, positions);
    EXPECT_EQ(mesh.Indices, indices);
}

TEST_F(SaveCollisionMeshTest, PolygonCornersFollowTheWeldButTriListCornersStandAsTheyAre)
{
    VMWorld world;
    VMMaterial& stone = AddMaterial(world, "stone");
    for (int i = 0; i < 4; ++i)
        AddVertex(world, static_cast<float>(i), 0, 0);
    world.Vertices[3]->MergeLink = world.Vertices[0];
    AddPolygon(world, {3, 1, 2}, stone);
    AddTriList(world, {3, 2, 1}, stone);

    const VCollisionMeshFile mesh = SaveAndRead(world);

    const std::vector<int32_t> indices = {0, 1, 2, 3, 2, 1};
    EXPECT_EQ(mesh.Indices, indices);
}

TEST_F(SaveCollisionMeshTest, UncreatableFileOrACornerOutsideTheVertexListFails)
{
    VMWorld world;
    EXPECT_FALSE(SaveCollisionMesh(world, "\\no\\such\\folder\\level.qcolmesh"));
    EXPECT_EQ(LastError().Text, "Failed to create file '/no/such/folder/level.qcolmesh'");

    AddGrid(world, 1, AddMaterial(world, "stone"));
    VMVertex stray;
    world.Polygons[1]->Corners[2] = &stray;
    VSaveParams params;
    params.Streams = &m_streams;
    EXPECT_FALSE(SaveCollisionMesh(world, Target, params));
    EXPECT_EQ(m_streams.FindFile(Target), nullptr);
}

} // namespace
