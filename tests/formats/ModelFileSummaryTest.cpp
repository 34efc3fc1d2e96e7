#include "GoldenBytes.h"

#include "formats/MaterialChunk.h"
#include "formats/ModelFileSummary.h"
#include "formats/chunk/ChunkId.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string MaterialChunkBytes(const std::string& name, const std::string& diffuse)
{
    VMMaterial material;
    material.Name = name;
    material.DiffuseTexture = diffuse;
    VMemoryStreamProvider streams;
    VChunkedFile file;
    EXPECT_TRUE(file.Create("m", &streams));
    // Inside MODL and GEOM, so at depth 2.
    EXPECT_TRUE(file.StartChunk(MakeChunkId("MODL")));
    EXPECT_TRUE(file.StartChunk(MakeChunkId("GEOM")));
    EXPECT_TRUE(WriteMaterialChunk(file, material));
    EXPECT_TRUE(file.EndChunk());
    EXPECT_TRUE(file.EndChunk());
    EXPECT_TRUE(file.Close());
    const std::string bytes = *streams.FindFile("m");
    return bytes.substr(8 + 2 * 12, bytes.size() - 8 - 2 * 12 - 2 * 8 - 4);
}

GoldenBytes Geometry(int32_t vertexCount)
{
    GoldenBytes geometry;
    geometry.U16(0)                                       // version
            .I32(1)                                       // material count
            .Bytes(MaterialChunkBytes("skin", "skin.dds"))
            .I32(vertexCount)
            .U16(0x031F);                                 // position, normal, tangent, uv, uv2, skin, link
    for (int32_t v = 0; v < 2; ++v)
        geometry.F32({1, 2, 3, 0, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0}).I32(0).I32(-1);
    geometry.I32(1)                                       // triangle count
            .I32s({0, 1, 1}).U16(0);
    return geometry;
}

std::string ModelBytes(int32_t vertexCount)
{
    return GoldenBytes().FileHeader()
        .Chunk(0, MakeChunkId("MODL"), GoldenBytes()
            .U16(0)
            .Chunk(1, MakeChunkId("GEOM"), Geometry(vertexCount))
            .Chunk(1, MakeChunkId("BNDS"), GoldenBytes()
                .F32({-1, -2, -3, 1, 2, 3})               // box
                .F32({0, 0, 0, 3.5f})                     // sphere
                .F32({-1, -2, -3, 1, 2, 3})))             // second box
        .FileEnd().Str();
}

TEST(ModelFileSummaryTest, DescriptionNamesChunksMaterialsCountsAndBounds)
{
    VMemoryStreamProvider streams;
    streams.SetFile("hero.model", ModelBytes(2));
    VModelFileSummary summary;
    ASSERT_TRUE(ReadModelFileSummary("hero.model", summary, &streams)) << LastError().Text;

    EXPECT_EQ(DescribeModelFile(summary),
              "Model file, version 0\n"
              "Chunks: MODL (GEOM BNDS)\n"
              "Bones: 0\n"
              "Materials: 1\n"
              "  0 \"skin\": diffuse \"skin.dds\"\n"
              "Vertices: 2 (flags 0x31F)\n"
              "Triangles: 1\n"
              "Weights: 0\n"
              "Bounds: (-1, -2, -3) - (1, 2, 3), radius 3.5\n");
}

TEST(ModelFileSummaryTest, VertexCountBeyondTheChunkIsRefused)
{
    VMemoryStreamProvider streams;
    streams.SetFile("hero.model", ModelBytes(0x7FFFFFFF));
    VModelFileSummary summary;
    EXPECT_FALSE(ReadModelFileSummary("hero.model", summary, &streams));
    EXPECT_EQ(LastError().Text,
              "File 'hero.model' is not a readable model file: Vertex count exceeds the chunk in chunk GEOM");
}

TEST(ModelFileSummaryTest, EveryTruncationFailsCleanly)
{
    const std::string bytes = ModelBytes(2);
    VMemoryStreamProvider streams;
    for (size_t length = 0; length + 4 < bytes.size(); ++length) {
        streams.SetFile("cut.model", bytes.substr(0, length));
        VModelFileSummary summary;
        EXPECT_FALSE(ReadModelFileSummary("cut.model", summary, &streams)) << length;
    }
}

} // namespace
