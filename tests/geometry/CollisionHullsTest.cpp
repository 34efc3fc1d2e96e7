#include "geometry/CollisionHulls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <set>

namespace {

using Vector = std::array<double, 3>;

Vector Point(const std::vector<float>& positions, int32_t number)
{
    const float* p = &positions[static_cast<size_t>(number) * 3];
    return {p[0], p[1], p[2]};
}

Vector Normal(const std::vector<float>& positions, const int32_t* triangle)
{
    const Vector a = Point(positions, triangle[0]);
    const Vector b = Point(positions, triangle[1]);
    const Vector c = Point(positions, triangle[2]);
    const Vector u {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const Vector v {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    return {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
}

// How far the point lies in front of the triangle's plane, the front being where its corners
// turn counter-clockwise.
double InFront(const std::vector<float>& positions, const int32_t* triangle, const Vector& point)
{
    const Vector n = Normal(positions, triangle);
    const Vector a = Point(positions, triangle[0]);
    const double length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    return ((point[0] - a[0]) * n[0] + (point[1] - a[1]) * n[1] + (point[2] - a[2]) * n[2]) / length;
}

// Every edge of a closed, consistently wound surface is run once each way.
bool IsClosed(const std::vector<int32_t>& indices)
{
    std::map<std::pair<int32_t, int32_t>, int> edges;
    for (size_t t = 0; t + 2 < indices.size(); t += 3)
        for (size_t k = 0; k < 3; ++k)
            ++edges[{indices[t + k], indices[t + (k + 1) % 3]}];
    for (const auto& [edge, count] : edges)
        if (count != 1 || edges.count({edge.second, edge.first}) == 0)
            return false;
    return true;
}

//     6-------7      the unit cube's corners 0..7 (bit 0 x, bit 1 y, bit 2 z) and its centre 8,
//    /|      /|      held by triangles that are not its faces
//   4-------5 |
//   | 2-----|-3
//   |/      |/
//   0-------1
std::vector<float> CubeAndCentre()
{
    std::vector<float> positions;
    for (int corner = 0; corner < 8; ++corner)
        positions.insert(positions.end(), {static_cast<float>(corner & 1), static_cast<float>((corner >> 1) & 1),
                                           static_cast<float>((corner >> 2) & 1)});
    positions.insert(positions.end(), {0.5f, 0.5f, 0.5f});
    return positions;
}

TEST(CollisionHulls, ObjectBecomesItsClosedOutwardHullWithoutInnerPoints)
{
    const std::vector<float> positions = CubeAndCentre();
    std::vector<int32_t> indices {0, 1, 8, 2, 3, 8, 4, 5, 8, 6, 7, 8};
    std::vector<uint32_t> objects(4, 7);

    EXPECT_TRUE(ReplaceByConvexHulls(positions, indices, objects).empty());

    ASSERT_EQ(indices.size(), 12u * 3u);
    EXPECT_EQ(objects, std::vector<uint32_t>(12, 7));
    EXPECT_TRUE(IsClosed(indices));
    EXPECT_EQ(std::set<int32_t>(indices.begin(), indices.end()), (std::set<int32_t> {0, 1, 2, 3, 4, 5, 6, 7}));
    double area = 0.0;
    for (size_t t = 0; t < indices.size(); t += 3) {
        const Vector n = Normal(positions, &indices[t]);
        area += std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]) / 2.0;
        EXPECT_LT(InFront(positions, &indices[t], {0.5, 0.5, 0.5}), 0.0);
    }
    EXPECT_NEAR(area, 6.0, 1e-9);
}

TEST(CollisionHulls, ObjectsWithoutVolumeKeepTheirTrianglesAndAreNamed)
{
    // Object 3: two triangles of the cube's bottom face, flat. Object 5: one triangle, three
    // points. Object 7: the cube, between them.
    const std::vector<float> positions = CubeAndCentre();
    std::vector<int32_t> indices {0, 1, 3, 0, 3, 2, 0, 1, 8, 7, 6, 4, 4, 5, 8};
    std::vector<uint32_t> objects {3, 3, 7, 5, 7};

    EXPECT_EQ(ReplaceByConvexHulls(positions, indices, objects), (std::vector<uint32_t> {3, 5}));

    ASSERT_EQ(objects.size(), 2u + 6u + 1u);
    EXPECT_EQ(std::vector<int32_t>(indices.begin(), indices.begin() + 6), (std::vector<int32_t> {0, 1, 3, 0, 3, 2}));
    EXPECT_EQ(std::vector<int32_t>(indices.end() - 3, indices.end()), (std::vector<int32_t> {7, 6, 4}));
    EXPECT_EQ(objects.front(), 3u);
    EXPECT_EQ(objects.back(), 5u);
    // Object 7 holds corners 0, 1, 4, 5 and the centre, a pyramid of 6 triangles, between them.
    EXPECT_EQ(std::vector<uint32_t>(objects.begin() + 2, objects.end() - 1), std::vector<uint32_t>(6, 7));
}

class CollisionHullProperties : public ::testing::TestWithParam<unsigned> {};

TEST_P(CollisionHullProperties, EveryPointLiesInsideTheClosedHull)
{
    std::mt19937 random(GetParam());
    std::uniform_real_distribution<float> coordinate(-50.0f, 50.0f);
    std::vector<float> positions;
    std::vector<int32_t> indices;
    const int count = 4 + static_cast<int>(random() % 200);
    for (int point = 0; point < count; ++point) {
        positions.insert(positions.end(), {coordinate(random), coordinate(random), coordinate(random)});
        indices.push_back(point);
    }
    while (indices.size() % 3 != 0)
        indices.push_back(0);
    std::vector<uint32_t> objects(indices.size() / 3, 1);

    ASSERT_TRUE(ReplaceByConvexHulls(positions, indices, objects).empty());

    EXPECT_TRUE(IsClosed(indices));
    for (size_t t = 0; t < indices.size(); t += 3)
        for (int point = 0; point < count; ++point)
            EXPECT_LT(InFront(positions, &indices[t], Point(positions, point)), 1e-3);
}

INSTANTIATE_TEST_SUITE_P(RandomClouds, CollisionHullProperties, ::testing::Range(1u, 9u));

} // namespace
