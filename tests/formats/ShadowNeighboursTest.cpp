#include "formats/ShadowNeighbours.h"
#include "formats/ShadowPlane.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(ShadowNeighboursTest, TwoTrianglesSharingAnEdgeNameEachOther)
{
    //  2---3
    //  | \ |
    //  0---1     0 1 2 and 1 3 2 share the edge 1-2 in opposite directions
    const std::vector<int32_t> indices = {0, 1, 2, 1, 3, 2};
    const std::vector<int32_t> expected = {-1, 1, -1, -1, -1, 0};
    EXPECT_EQ(ComputeShadowNeighbours(indices, 4), expected);
}

TEST(ShadowNeighboursTest, EdgeInTheSameDirectionIsNoNeighbour)
{
    const std::vector<int32_t> indices = {0, 1, 2, 0, 1, 3};
    const std::vector<int32_t> expected = {-1, -1, -1, -1, -1, -1};
    EXPECT_EQ(ComputeShadowNeighbours(indices, 4), expected);
}

TEST(ShadowNeighboursTest, EdgeSharedByThreeTrianglesKeepsOnlyTheMutualPair)
{
    // Triangle 0 holds A-B (0-1); triangles 1 and 2 both hold B-A. Triangle 0 finds triangle 1
    // first and triangle 1 finds triangle 0; triangle 2 also finds 0, which does not point back.
    const std::vector<int32_t> indices = {0, 1, 2, 1, 0, 3, 1, 0, 4};
    const std::vector<int32_t> expected = {1, -1, -1, 0, -1, -1, -1, -1, -1};
    EXPECT_EQ(ComputeShadowNeighbours(indices, 5), expected);
}

TEST(ShadowNeighboursTest, ClosedTetrahedronLinksEveryEdge)
{
    const std::vector<int32_t> indices = {0, 1, 2, 0, 3, 1, 1, 3, 2, 2, 3, 0};
    const std::vector<int32_t> neighbours = ComputeShadowNeighbours(indices, 4);
    for (size_t entry = 0; entry < neighbours.size(); ++entry) {
        ASSERT_GE(neighbours[entry], 0) << entry;
        const int32_t back = neighbours[entry];
        const int32_t self = static_cast<int32_t>(entry / 3);
        EXPECT_TRUE(neighbours[back * 3] == self || neighbours[back * 3 + 1] == self || neighbours[back * 3 + 2] == self);
    }
}

TEST(ShadowNeighboursTest, IndexOutsideTheVerticesTakesPartInNoEdge)
{
    const std::vector<int32_t> indices = {0, 1, 7, 1, 0, 2};
    const std::vector<int32_t> expected = {1, -1, -1, 0, -1, -1};
    EXPECT_EQ(ComputeShadowNeighbours(indices, 3), expected);
}

TEST(ShadowNeighboursTest, EmptyListGivesEmptyTable)
{
    EXPECT_TRUE(ComputeShadowNeighbours({}, 0).empty());
}

TEST(ShadowPlaneTest, NormalIsTheUnitCrossProductOfCMinusAAndBMinusA)
{
    const float a[3] = {0, 0, 2};
    const float b[3] = {4, 0, 2};
    const float c[3] = {0, 4, 2};
    float plane[4];
    ComputeShadowPlane(a, b, c, plane);
    EXPECT_FLOAT_EQ(plane[0], 0.0f);
    EXPECT_FLOAT_EQ(plane[1], 0.0f);
    EXPECT_FLOAT_EQ(plane[2], -1.0f);
    EXPECT_FLOAT_EQ(plane[3], 2.0f);
}

TEST(ShadowPlaneTest, DegenerateTriangleKeepsTheUnnormalisedProduct)
{
    // Nearly collinear: the cross product's length is 1e-8, below FLT_EPSILON.
    const float a[3] = {0, 0, 0};
    const float b[3] = {1e-4f, 0, 0};
    const float c[3] = {0, 1e-4f, 0};
    float plane[4];
    ComputeShadowPlane(a, b, c, plane);
    EXPECT_FLOAT_EQ(plane[2], -1e-8f);
    EXPECT_FLOAT_EQ(plane[0], 0.0f);
    EXPECT_FLOAT_EQ(plane[3], 0.0f);
}

TEST(ShadowPlaneTest, CollinearPointsGiveAZeroNormal)
{
    const float a[3] = {1, 1, 1};
    const float b[3] = {2, 2, 2};
    const float c[3] = {3, 3, 3};
    float plane[4];
    ComputeShadowPlane(a, b, c, plane);
    EXPECT_EQ(plane[0], 0.0f);
    EXPECT_EQ(plane[1], 0.0f);
    EXPECT_EQ(plane[2], 0.0f);
    EXPECT_EQ(plane[3], 0.0f);
}

} // namespace
