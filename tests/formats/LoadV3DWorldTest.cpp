// The older world text files: their version line, the vertex and polygon records the mesh import
// needs, and the failures of files it cannot take.

#include "formats/LoadV3DWorld.h"
#include "model/VMWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

TEST(V3DVersion, DigitsAroundThePointGiveTheVersionWithOrWithoutBrackets)
{
    EXPECT_EQ(V3DVersion("VNUM=1.76"), 176);
    EXPECT_EQ(V3DVersion("[vnum=1.2]"), 120);
    EXPECT_EQ(V3DVersion("VNUM=1.5x"), 150);
    EXPECT_EQ(V3DVersion("VNUM=176"), -1);
    EXPECT_EQ(V3DVersion("NUMVERTICES=3"), -1);
}

TEST(ReadV3DWorld, ReadsVerticesAndPolygonsSkipsTheOtherRecordsAndAMissingFileCannotBeOpened)
{
    const std::string text = "[HEADER_START]\r\n"
                             "// exported by hand\r\n"
                             "[VNUM=1.76]\r\n"
                             "[HEADER_END]\r\n"
                             "[NUMVERTICES=4]\r\n"
                             "NUMPOLYGONS=1\r\n"
                             "SRF, \"stone, rough\", 1\r\n"
                             "d,\t100, -200 , 350, 1024, 512, 0, 0, 0, 0, 256, 0, 0, 0, 1\r\n"
                             "D, 0, 0, 0, 0, 0, 0, 0, 0, 0, 256, 0, 0, 0, 1\r\n"
                             "D, 0, 100, 0, 0, 0, 0, 0, 0, 0, 256, 0.5, 0, 0, 1\r\n"
                             "D, 0, 0, 100, 0, 0, 0, 0, 0, 0, 256, 0, 0, 0, 0\r\n"
                             "P, 1, 4, 0, 1, 2, 3\r\n";
    VMWorld world;
    std::string error;
    ASSERT_EQ(ReadV3DWorld(text, world, error), 0) << error;

    ASSERT_EQ(world.Vertices.Count(), 4);
    const VMVertex& first = *world.Vertices[0];
    EXPECT_THAT(first.Position, ::testing::Pointwise(::testing::FloatEq(), {1.0f, -2.0f, 3.5f}));
    EXPECT_THAT(first.BaseUV, ::testing::Pointwise(::testing::FloatEq(), {1.0f, 0.5f}));
    EXPECT_FLOAT_EQ(first.Normal[2], 1.0f);
    EXPECT_FLOAT_EQ(first.SecondUV[0], -1.0f);
    EXPECT_EQ(world.HasTangents, 1);
    ASSERT_EQ(world.Polygons.Count(), 1);
    ASSERT_EQ(world.Polygons[0]->CornerCount(), 4);
    EXPECT_EQ(world.Polygons[0]->Corners[3], world.Vertices[3]);

    EXPECT_EQ(LoadV3DWorld("no\\such\\folder\\level.v3d", world, error), V3DCannotOpen);
    EXPECT_FALSE(error.empty());
}

struct BadFile {
    const char* Text;
    int32_t Code;
    const char* Error;
};

class ReadV3DWorldFailure : public ::testing::TestWithParam<BadFile> {};

TEST_P(ReadV3DWorldFailure, FailsWithTheCodeAndTheLine)
{
    VMWorld world;
    std::string error;
    EXPECT_EQ(ReadV3DWorld(GetParam().Text, world, error), GetParam().Code);
    EXPECT_EQ(error, GetParam().Error);
}

INSTANTIATE_TEST_SUITE_P(
    Files, ReadV3DWorldFailure,
    ::testing::Values(
        BadFile {"VNUM=1.19\nD, 0, 0, 0, 0, 0, 0, 0, 0\n", V3DOldVersion,
                 "line 1 gives the version 119; files before 120 are not read"},
        BadFile {"D, 0, 0, 0, 0, 0, 0, 0, 0\n", V3DOldVersion, "line 1 holds a record before the version line"},
        BadFile {"VNUM=1.20\nQ, 1\n", V3DBadRecord, "line 2 has the unknown record \"Q\""},
        BadFile {"VNUM=1.50\nD, 0, 0, 0, 0, 0, 0, 0, 0\n", V3DBadRecord,
                 "line 2 has a vertex with 9 fields; version 150 needs 12"},
        BadFile {"VNUM=1.20\nD, 0, 0, 0, 0, 0, 0, 0, 0\nP, 0, 3, 0, 0, 1\n", V3DBadRecord,
                 "line 3 has a polygon corner that names no vertex read before it"},
        BadFile {"VNUM=1.20\nD, 0, 0, 0, 0, 0, 0, 0, 0\nP, 0, 3, 0, 0\n", V3DBadRecord,
                 "line 3 has a polygon that is not \"P, material, n\" and n >= 3 vertex numbers"}));

} // namespace
