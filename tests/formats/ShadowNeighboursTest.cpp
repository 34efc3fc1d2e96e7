#include "formats/ShadowNeighbours.h"
#include "formats/ShadowPlane.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct NeighbourCase {
    const char* Name;
    std::vector<int32_t> Indices;
    int32_t VertexCount;
    std::vector<int32_t> Expected;
};

class ShadowNeighboursTest : public ::testing::TestWithParam<NeighbourCase> {};

TEST_P(ShadowNeighboursTest, EachEdgeNamesTheTriangleHoldingItTheOtherWayRound)
{
    EXPECT_EQ(ComputeShadowNeighbours(GetParam().Indices, GetParam().VertexCount), GetParam().Expected);
}

INSTANTIATE_TEST_SUITE_P(
    Lists, ShadowNeighboursTest,
    ::testing::Values(
        //  2---3
        //  | \ |
        //  0---1     0 1 2 and 1 3 2 share the edge 1-2 in opposite directions
        NeighbourCase {"SharedEdge", {0, 1, 2, 1, 3, 2}, 4, {-1, 1, -1, -1, -1, 0}},
        NeighbourCase {"SameDirection", {0, 1, 2, 0, 1, 3}, 4, {-1, -1, -1, -1, -1, -1}},
        // Triangle 0 holds A-B (0-1); triangles 1 and 2 both hold B-A. Triangle 0 finds triangle 1
        // first and triangle 1 finds triangle 0; triangle 2 also finds 0, which does not point back.
        NeighbourCase {"ThreeOnAnEdge", {0, 1, 2, 1, 0, 3, 1, 0, 4}, 5, {1, -1, -1, 0, -1, -1, -1, -1, -1}},
        NeighbourCase {"IndexOutsideTheVertices", {0, 1, 7, 1, 0, 2}, 3, {1, -1, -1, 0, -1, -1}},
        NeighbourCase {"Empty", {}, 0, {}}),
    [](const auto& test) { return std::string(test.param.Name); });

TEST(ShadowNeighbours, ClosedTetrahedronLinksEveryEdge)
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

struct PlaneCase {
    float A[3];
    float B[3];
    float C[3];
    float Plane[4];
};

class ShadowPlaneTest : public ::testing::TestWithParam<PlaneCase> {};

TEST_P(ShadowPlaneTest, NormalIsTheUnitCrossProductOfCMinusAAndBMinusA)
{
    float plane[4];
    ComputeShadowPlane(GetParam().A, GetParam().B, GetParam().C, plane);
    for (int k = 0; k < 4; ++k)
        EXPECT_FLOAT_EQ(plane[k], GetParam().Plane[k]) << k;
}

INSTANTIATE_TEST_SUITE_P(
    Triangles, ShadowPlaneTest,
    ::testing::Values(PlaneCase {{0, 0, 2}, {4, 0, 2}, {0, 4, 2}, {0, 0, -1, 2}},
                      // Nearly collinear: the cross product's length is 1e-8, below FLT_EPSILON, and stays.
                      PlaneCase {{0, 0, 0}, {1e-4f, 0, 0}, {0, 1e-4f, 0}, {0, 0, -1e-8f, 0}},
                      PlaneCase {{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {0, 0, 0, 0}}));

} // namespace
