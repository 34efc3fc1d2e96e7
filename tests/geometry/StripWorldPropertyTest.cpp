#include "geometry/BuildConnectivity.h"
#include "geometry/CheckTriList.h"
#include "geometry/RemoveTriLists.h"
#include "geometry/StripWorld.h"
#include "model/Validate.h"

#include "StripTestWorlds.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace {

// A jittered grid with random holes, a few materials and vis areas, two source nodes, some
// triangles wound the other way round, some with two equal corners and some given twice.
void AddRandomMesh(VMWorld& world, std::mt19937& random)
{
    std::uniform_int_distribution<int> sizes(1, 14);
    const int columns = sizes(random);
    const int rows = sizes(random);
    const int materialCount = 1 + static_cast<int>(random() % 3);
    std::vector<VMMaterial*> materials;
    for (int k = 0; k < materialCount; ++k)
        materials.push_back(AddStripMaterial(world));
    const int areaCount = static_cast<int>(random() % 3);
    for (int k = 0; k < areaCount; ++k)
        world.VisAreas.Add(VMWorld::NewVisArea());

    std::uniform_real_distribution<float> jitter(-0.3f, 0.3f);
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column <= columns; ++column)
            AddStripVertex(world, static_cast<float>(column) + jitter(random), static_cast<float>(row) + jitter(random),
                           jitter(random));
    const auto at = [&](int column, int row) { return row * (columns + 1) + column; };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            if (random() % 7 == 0)
                continue;
            const Triangle cell[2] = {{at(column, row), at(column + 1, row), at(column + 1, row + 1)},
                                      {at(column, row), at(column + 1, row + 1), at(column, row + 1)}};
            for (Triangle triangle : cell) {
                if (random() % 13 == 0)
                    std::swap(triangle[1], triangle[2]);
                VMVisArea* area = areaCount > 0 && random() % 2 == 0
                    ? world.VisAreas.Get(static_cast<int>(random() % static_cast<unsigned>(areaCount)))
                    : nullptr;
                if (random() % 17 == 0)
                    triangle[2] = triangle[1];
                VMMaterial* material = materials[random() % materials.size()];
                VMPolygon* polygon = AddStripTriangle(world, triangle, material, area);
                polygon->SourceNode = static_cast<uint32_t>(column * 2 / std::max(columns, 1));
                polygon->Group = random() % 11 == 0 ? 1u : 0u;
                if (random() % 19 == 0)
                    AddStripTriangle(world, triangle, material, area);
            }
        }
    }
    // A vertex that nothing uses.
    AddStripVertex(world, -5.0f, -5.0f);
}

StripParams RandomParams(std::mt19937& random)
{
    StripParams params;
    params.StripPerformance = 1 + static_cast<int>(random() % 4);
    params.StripObject = random() % 2 == 0;
    params.MaxStripSize = random() % 3 == 0 ? 3.0f : 0.0f;
    params.MaxStripLength = static_cast<int>(random() % 12);
    params.MinStripLength = static_cast<int>(random() % 5);
    return params;
}

// Segments are cut at the clamped maximum length; stitched strips and merged lists stay below
// 2047 corners.
int LongestTriList(const StripParams& params)
{
    const int segment = std::clamp(params.MaxStripLength, 4, 10000);
    const bool joined = (params.StripPerformance == 2 || params.StripPerformance == 3) && params.MaxStripSize <= 0.001f;
    return joined ? std::max(segment, 2046 / 3) : segment;
}

class StripWorldProperties : public ::testing::TestWithParam<unsigned> {};

TEST_P(StripWorldProperties, TrianglesVerticesAndStripsStaySound)
{
    std::mt19937 random(GetParam());
    VMWorld world;
    AddRandomMesh(world, random);
    const StripParams params = RandomParams(random);
    const std::vector<PositionTriangle> before = SurfaceTriangles(world);
    SCOPED_TRACE(testing::Message() << "method " << params.StripPerformance << ", object " << params.StripObject
                                    << ", cube " << params.MaxStripSize << ", length " << params.MaxStripLength
                                    << ", minimum " << params.MinStripLength);

    ASSERT_EQ(StripWorld(world, params), 0);

    EXPECT_EQ(SurfaceTriangles(world), before);
    EXPECT_EQ(Validate(world), std::vector<std::string>{});
    std::set<const VMVertex*> referenced;
    for (const VMPolygon* polygon : world.Polygons)
        referenced.insert(polygon->Corners.begin(), polygon->Corners.end());
    for (const VMTriList* triList : world.TriLists) {
        referenced.insert(triList->Corners.begin(), triList->Corners.end());
        EXPECT_NE(triList->CornerCount(), 3);
        VMTriList copy;
        copy.ListKind = triList->ListKind;
        copy.Corners = triList->Corners;
        // Pieces made only of degenerate triangles stay as empty tri-lists.
        EXPECT_TRUE(copy.Corners.empty() || CheckTriList(copy, false) == 0);
        EXPECT_LE(triList->TriangleCount(), LongestTriList(params));
    }
    EXPECT_EQ(referenced.size(), static_cast<size_t>(world.Vertices.Count()));

    ASSERT_EQ(RemoveTriLists(world), 0);
    EXPECT_EQ(SurfaceTriangles(world), before);
    EXPECT_EQ(Validate(world), std::vector<std::string>{});
}

TEST_P(StripWorldProperties, UseCountsAreExactAfterConnectivity)
{
    std::mt19937 random(GetParam());
    VMWorld world;
    AddRandomMesh(world, random);

    ASSERT_EQ(BuildConnectivity(world, false), 0);

    std::vector<uint32_t> counted(static_cast<size_t>(world.Vertices.Count()), 0);
    for (const VMPolygon* polygon : world.Polygons)
        for (const VMVertex* corner : polygon->Corners)
            ++counted[static_cast<size_t>(world.Vertices.Find(corner))];
    for (int index = 0; index < world.Vertices.Count(); ++index)
        EXPECT_EQ(world.Vertices.Get(index)->UseCount, counted[static_cast<size_t>(index)]);
    for (const VMPolygon* polygon : world.Polygons)
        for (size_t edge = 0; edge < 3; ++edge)
            if (const VMPolygon* neighbour = polygon->Neighbours[edge]) {
                const VMVertex* from = polygon->Corners[edge];
                const VMVertex* to = polygon->Corners[(edge + 1) % 3];
                const auto& corners = neighbour->Corners;
                EXPECT_NE(std::find(corners.begin(), corners.end(), from), corners.end());
                EXPECT_NE(std::find(corners.begin(), corners.end(), to), corners.end());
            }
}

INSTANTIATE_TEST_SUITE_P(RandomMeshes, StripWorldProperties, ::testing::Range(1u, 61u));

} // namespace
