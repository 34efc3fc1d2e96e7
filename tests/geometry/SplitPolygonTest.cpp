#include "geometry/SplitPolygon.h"
#include "geometry/TessellatePolygons.h"

#include "TestWorlds.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(SplitPolygon, PieceWithinTheLimitIsCopiedWithTheSourceAttributes)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    VMVertex* corners[4] = {AddVertex(world, 0, 0, 0), AddVertex(world, 1, 0, 0), AddVertex(world, 1, 1, 0),
                            AddVertex(world, 0, 1, 0)};
    VMPolygon source;
    source.SetMaterial(material);
    source.Group = 7;
    source.Name = "wall";
    VMVisArea* area = VMWorld::NewVisArea().release();
    world.VisAreas.Add(area);
    area->Link(source);
    ASSERT_EQ(SplitPolygon(world, source, corners, 4, 0, 4), 0);
    ASSERT_EQ(world.Polygons.Count(), 1);
    const VMPolygon* piece = world.Polygons.Get(0);
    EXPECT_EQ(piece->Corners, std::vector<VMVertex*>(corners, corners + 4));
    EXPECT_EQ(piece->Group, 7u);
    EXPECT_EQ(piece->Name, "wall");
    EXPECT_EQ(piece->Material(), material);
    EXPECT_TRUE(area->Lists(piece));
    EXPECT_EQ(piece->Owners.Count(), 1);
}

TEST(SplitPolygon, ScoresDiagonalsByUnsignedFanAreas)
{
    //  4 ------- 3
    //  |    1    |     corner 1 points inwards. The fan areas are unsigned: the whole counts
    //  0 /     \ 2     2 + 4 + 4 = 10, and (0, 3) with a first piece of 6 scores best (|10 - 12|);
    //                  (1, 4) and (2, 4) score as well but come later
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    VMVertex* corners[5] = {AddVertex(world, 0, 0, 0), AddVertex(world, 2, 1, 0), AddVertex(world, 4, 0, 0),
                            AddVertex(world, 4, 2, 0), AddVertex(world, 0, 2, 0)};
    VMPolygon source;
    source.SetMaterial(material);
    ASSERT_EQ(SplitPolygon(world, source, corners, 5, 0, 3), 0);
    world.Enumerate();
    ASSERT_EQ(world.Polygons.Count(), 3);
    EXPECT_EQ(CornerIndices(*world.Polygons.Get(0)), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(CornerIndices(*world.Polygons.Get(1)), (std::vector<int>{2, 3, 0}));
    EXPECT_EQ(CornerIndices(*world.Polygons.Get(2)), (std::vector<int>{3, 4, 0}));
}

TEST(SplitPolygon, CornersWithoutAreaOrFewerThanThreeGiveNothing)
{
    VMWorld world;
    VMVertex* corners[4] = {AddVertex(world, 0, 0, 0), AddVertex(world, 1, 0, 0), AddVertex(world, 2, 0, 0),
                            AddVertex(world, 3, 0, 0)};
    VMPolygon source;
    for (const int count : {4, 2})
        ASSERT_EQ(SplitPolygon(world, source, corners, count, 0, 3), 0);
    EXPECT_EQ(world.Polygons.Count(), 0);
}

//  d ---- c
//  |      |      both diagonals halve the area; (a, c) is found first
//  a ---- b
TEST(TessellatePolygons, ReplacesQuadsByTrianglesAtTheEndAndKeepsTriangles)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    VMVertex* a = AddVertex(world, 0, 0, 0);
    VMVertex* b = AddVertex(world, 1, 0, 0);
    VMVertex* c = AddVertex(world, 1, 1, 0);
    VMVertex* d = AddVertex(world, 0, 1, 0);
    AddPolygon(world, {a, b, c, d}, material);
    VMPolygon* triangle = AddTriangle(world, a, c, d, material);
    ASSERT_EQ(TessellatePolygons(world), 0);
    world.Enumerate();
    ASSERT_EQ(world.Polygons.Count(), 3);
    EXPECT_EQ(world.Polygons.Get(0), triangle);
    EXPECT_EQ(CornerIndices(*world.Polygons.Get(1)), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(CornerIndices(*world.Polygons.Get(2)), (std::vector<int>{2, 3, 0}));
    EXPECT_EQ(material->UseCount, 3u);
}

}
