#include "geometry/BuildConnectivity.h"
#include "report/GeometryLog.h"

#include "LogRecorder.h"
#include "StripTestWorlds.h"

#include <gtest/gtest.h>

namespace {

std::vector<int> NeighbourNumbers(const VMWorld& world, const VMPolygon& polygon)
{
    std::vector<int> numbers;
    for (const VMPolygon* neighbour : polygon.Neighbours)
        numbers.push_back(neighbour == nullptr ? -1 : world.Polygons.Find(neighbour));
    return numbers;
}

//   3---4---5
//   | / | / |     triangles (0 1 4) (0 4 3) (1 2 5) (1 5 4), and vertex 6 used by none
//   0---1---2
TEST(BuildConnectivity, FindsThePolygonAcrossEachEdgeAndCountsTheCornersOfEachVertex)
{
    VMWorld world;
    AddGrid(world, 2, 1, AddStripMaterial(world));
    AddStripVertex(world, 9, 9);

    ASSERT_EQ(BuildConnectivity(world, false), 0);

    EXPECT_EQ(NeighbourNumbers(world, *world.Polygons.Get(0)), (std::vector<int>{-1, 3, 1}));
    EXPECT_EQ(NeighbourNumbers(world, *world.Polygons.Get(1)), (std::vector<int>{0, -1, -1}));
    EXPECT_EQ(NeighbourNumbers(world, *world.Polygons.Get(2)), (std::vector<int>{-1, -1, 3}));
    EXPECT_EQ(NeighbourNumbers(world, *world.Polygons.Get(3)), (std::vector<int>{2, -1, 0}));
    std::vector<uint32_t> counts;
    for (const VMVertex* vertex : world.Vertices)
        counts.push_back(vertex->UseCount);
    EXPECT_EQ(counts, (std::vector<uint32_t>{2, 3, 1, 1, 3, 2, 0}));
    EXPECT_EQ(world.Vertices.Get(6)->Index, 6u);

    // A corner outside the vertex list is refused.
    VMVertex stray;
    world.Polygons.Get(0)->Corners[1] = &stray;
    EXPECT_EQ(BuildConnectivity(world, false), -1);
}

TEST(BuildConnectivity, LastPolygonSharingAnEdgeWins)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    for (int k = 0; k < 5; ++k)
        AddStripVertex(world, static_cast<float>(k), static_cast<float>(k * k));
    AddStripTriangle(world, {0, 1, 2}, material);
    AddStripTriangle(world, {1, 0, 3}, material);
    AddStripTriangle(world, {1, 0, 4}, material);

    ASSERT_EQ(BuildConnectivity(world, false), 0);

    EXPECT_EQ(world.Polygons.Get(0)->Neighbours[0], world.Polygons.Get(2));
    EXPECT_EQ(world.Polygons.Get(1)->Neighbours[0], world.Polygons.Get(2));
    EXPECT_EQ(world.Polygons.Get(2)->Neighbours[0], world.Polygons.Get(1));
}

TEST(BuildConnectivity, IdLinksJoinTrianglesAcrossASeam)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    AddStripVertex(world, 0, 0);
    AddStripVertex(world, 1, 0);
    AddStripVertex(world, 0, 1);
    AddStripVertex(world, 1, 0);
    AddStripVertex(world, 0, 1);
    AddStripVertex(world, 1, 1);
    world.Vertices.Get(3)->MergeLink = world.Vertices.Get(1);
    world.Vertices.Get(4)->MergeLink = world.Vertices.Get(2);
    AddStripTriangle(world, {0, 1, 2}, material);
    AddStripTriangle(world, {4, 3, 5}, material);

    ASSERT_EQ(BuildConnectivity(world, false), 0);
    EXPECT_EQ(world.Polygons.Get(0)->Neighbours[1], nullptr);

    ASSERT_EQ(BuildConnectivity(world, true), 0);
    EXPECT_EQ(world.Polygons.Get(0)->Neighbours[1], world.Polygons.Get(1));
    EXPECT_EQ(world.Polygons.Get(1)->Neighbours[0], world.Polygons.Get(0));
}

TEST(BuildConnectivity, OverflowingLinkTargetAnswersMinusOneWithoutNeighbours)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    AddStripVertex(world, 0, 0);
    // Vertex 0 has one use and room for three polygons; four more corners link to it.
    for (int k = 0; k < 4; ++k) {
        VMVertex* seam = AddStripVertex(world, 0, 0);
        seam->MergeLink = world.Vertices.Get(0);
    }
    for (int k = 0; k < 10; ++k)
        AddStripVertex(world, static_cast<float>(k + 1), 1);
    AddStripTriangle(world, {0, 5, 6}, material);
    for (int k = 1; k <= 4; ++k)
        AddStripTriangle(world, {k, 5 + k, 6 + k}, material);
    LogRecorder sink;

    EXPECT_EQ(BuildConnectivity(world, true), -1);

    EXPECT_EQ(sink.StartingWith("connectivity: bad: overflow!\r\n").size(), 2u);
    EXPECT_EQ(sink.Lines.back(), "connectivity: returning error due to overflow\r\n");
    for (const VMPolygon* polygon : world.Polygons)
        EXPECT_EQ(polygon->Neighbours, (std::vector<VMPolygon*>(3, nullptr)));
}

TEST(BuildConnectivity, BatchNeighboursMatchThoseOfTheWorld)
{
    VMWorld world;
    AddGrid(world, 6, 5, AddStripMaterial(world));
    std::vector<VMPolygon*> batch(world.Polygons.begin(), world.Polygons.end());

    std::vector<int> neighbours;
    ASSERT_EQ(BuildBatchConnectivity(batch, world.Vertices.Count(), neighbours), 0);
    ASSERT_EQ(BuildConnectivity(world, false), 0);

    for (size_t triangle = 0; triangle < batch.size(); ++triangle)
        for (size_t edge = 0; edge < 3; ++edge) {
            const VMPolygon* expected = batch[triangle]->Neighbours[edge];
            const int found = neighbours[triangle * 3 + edge];
            EXPECT_EQ(found < 0 ? nullptr : batch[static_cast<size_t>(found)], expected);
        }
}

} // namespace
