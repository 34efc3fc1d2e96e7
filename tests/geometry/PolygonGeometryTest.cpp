#include "geometry/PolygonArea.h"
#include "geometry/PolygonPlane.h"

#include "TestWorlds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(PolygonArea, SumsTheFanTrianglesAndIsZeroBelowThreeCorners)
{
    //  d(0,2) --- c(2,2)
    //    |          |
    //  a(0,0) --- b(2,0)
    VMWorld world;
    const VMVertex* corners[4] = {AddVertex(world, 0, 0, 0), AddVertex(world, 2, 0, 0), AddVertex(world, 2, 2, 0),
                                  AddVertex(world, 0, 2, 0)};
    EXPECT_DOUBLE_EQ(PolygonArea(corners, 4), 4.0);
    EXPECT_EQ(PolygonArea(corners, 2), 0.0);
}

TEST(PolygonPlane, GivesUnitNormalAndDistanceOfTheFirstCornerAndIsAbsentForCollinearCorners)
{
    //  c(0,1,3)
    //  a(0,0,3) --- b(1,0,3)      counter-clockwise seen from +z
    VMWorld world;
    VMPolygon* polygon = AddTriangle(world, AddVertex(world, 0, 0, 3), AddVertex(world, 1, 0, 3),
                                     AddVertex(world, 0, 1, 3), AddMaterial(world));
    double plane[4];
    ASSERT_TRUE(PolygonPlane(*polygon, plane));
    EXPECT_THAT(plane, ::testing::ElementsAre(0.0, 0.0, 1.0, 3.0));
    EXPECT_TRUE(polygon->HasValidPlane());

    VMPolygon* line = AddTriangle(world, AddVertex(world, 0, 0, 0), AddVertex(world, 1, 0, 0),
                                  AddVertex(world, 2, 0, 0), AddMaterial(world));
    EXPECT_FALSE(PolygonPlane(*line, plane));
    EXPECT_FALSE(line->HasValidPlane());
}

TEST(PolygonPlane, AnswersTheCachedPlaneUntilTheFlagIsCleared)
{
    VMWorld world;
    VMVertex* moved = AddVertex(world, 0, 1, 0);
    VMPolygon* polygon =
        AddTriangle(world, AddVertex(world, 0, 0, 0), AddVertex(world, 1, 0, 0), moved, AddMaterial(world));
    double plane[4];
    ASSERT_TRUE(PolygonPlane(*polygon, plane));
    moved->Position[1] = 0.0f;
    moved->Position[2] = 1.0f;
    ASSERT_TRUE(PolygonPlane(*polygon, plane));
    EXPECT_EQ(plane[2], 1.0);
    polygon->InvalidatePlane();
    ASSERT_TRUE(PolygonPlane(*polygon, plane));
    EXPECT_EQ(plane[1], -1.0);
}

TEST(PolygonPlane, TakesTheLongestCrossProductOfAQuad)
{
    // A quad whose last corner rises out of the plane of the first three: the cross product
    // of (a, b, c) is the longest and decides the normal (+z).
    VMWorld world;
    VMPolygon* polygon = AddPolygon(world,
                                    {AddVertex(world, 0, 0, 0), AddVertex(world, 4, 0, 0), AddVertex(world, 4, 4, 0),
                                     AddVertex(world, 3.9f, 0.1f, 1)},
                                    AddMaterial(world));
    double plane[4];
    ASSERT_TRUE(PolygonPlane(*polygon, plane));
    EXPECT_THAT(std::vector<double>(plane, plane + 3), ::testing::ElementsAre(0.0, 0.0, 1.0));
}

}
