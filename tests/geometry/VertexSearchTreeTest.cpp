#include "geometry/VertexSearchTree.h"

#include "TestWorlds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

std::vector<VMVertex*> Sorted(std::vector<VMVertex*> vertices)
{
    std::sort(vertices.begin(), vertices.end());
    return vertices;
}

TEST(VertexSearchTree, EmptyTreesNegativeOrNaNRadiiAndVerticesPastTheCountFindNothing)
{
    VMWorld world;
    VertexSearchTree tree;
    ASSERT_EQ(tree.Build(0, world.Vertices), 0);
    const float origin[3] = {0.0f, 0.0f, 0.0f};
    EXPECT_TRUE(tree.Query(origin, 100.0f).empty());
    VMVertex* first = AddVertex(world, 0, 0, 0);
    AddVertex(world, 0, 0, 0);
    ASSERT_EQ(tree.Build(1, world.Vertices), 0);
    EXPECT_EQ(tree.Query(origin, 0.0f), std::vector<VMVertex*>{first});
    EXPECT_TRUE(tree.Query(origin, -1.0f).empty());
    EXPECT_TRUE(tree.Query(origin, std::numeric_limits<float>::quiet_NaN()).empty());
}

TEST(VertexSearchTree, QueryVisitsNodeThenUpperThenLowerChild)
{
    // Five vertices on the diagonal, so that every axis orders them alike. The root holds the
    // median 2, its lower child covers {0, 1} (node 1, child 0), its upper child {3, 4}
    // (node 4, child 3).
    VMWorld world;
    std::vector<VMVertex*> v;
    for (float x : {3.0f, 0.0f, 4.0f, 1.0f, 2.0f})
        v.push_back(AddVertex(world, x, x, x));
    VertexSearchTree tree;
    ASSERT_EQ(tree.Build(world.Vertices.Count(), world.Vertices), 0);
    const float centre[3] = {2.0f, 2.0f, 2.0f};
    const std::vector<VMVertex*> expected = {v[4], v[2], v[0], v[3], v[1]};
    EXPECT_EQ(tree.Query(centre, 10.0f), expected);
}

TEST(VertexSearchTree, NaNVerticesNeitherMatchNorHideOthers)
{
    VMWorld world;
    std::vector<VMVertex*> finite;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (int i = 0; i < 20; ++i) {
        AddVertex(world, nan, static_cast<float>(i), 0);
        finite.push_back(AddVertex(world, static_cast<float>(i), 0, 0));
    }
    VertexSearchTree tree;
    ASSERT_EQ(tree.Build(world.Vertices.Count(), world.Vertices), 0);
    const float point[3] = {10.0f, 0.0f, 0.0f};
    EXPECT_EQ(Sorted(tree.Query(point, 100.0f)), Sorted(finite));
}

// Points and radii on a lattice of half units, so that many points lie on the box's faces.
TEST(VertexSearchTree, AnswersTheSameClosedBoxAsAScanOnRandomPoints)
{
    VMWorld world;
    std::mt19937 random(7);
    std::uniform_int_distribution<int> coordinate(0, 20);
    for (int i = 0; i < 2000; ++i)
        AddVertex(world, static_cast<float>(coordinate(random)) * 0.5f, static_cast<float>(coordinate(random)) * 0.5f,
                  static_cast<float>(coordinate(random)) * 0.5f);
    VertexSearchTree tree;
    ASSERT_EQ(tree.Build(world.Vertices.Count(), world.Vertices), 0);
    for (int q = 0; q < 200; ++q) {
        const float point[3] = {static_cast<float>(coordinate(random)) * 0.5f,
                                static_cast<float>(coordinate(random)) * 0.5f,
                                static_cast<float>(coordinate(random)) * 0.5f};
        const float radius = static_cast<float>(q % 4) * 0.5f;
        std::vector<VMVertex*> expected;
        for (VMVertex* vertex : world.Vertices) {
            if (std::fabs(vertex->Position[0] - point[0]) <= radius &&
                std::fabs(vertex->Position[1] - point[1]) <= radius &&
                std::fabs(vertex->Position[2] - point[2]) <= radius)
                expected.push_back(vertex);
        }
        ASSERT_EQ(Sorted(tree.Query(point, radius)), Sorted(expected)) << "query " << q;
    }
}

}
