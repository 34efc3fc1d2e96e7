#include "model/SortPrimitives.h"

#include "model/VMWorld.h"

#include "WorldBuilder.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(SortPrimitivesTest, PolygonsSortByMaterialWithinVisAreaOrder)
{
    VMWorld world;
    VMMaterial* m0 = AddMaterial(world, "m0");
    VMMaterial* m1 = AddMaterial(world, "m1");
    VMVisArea* area0 = AddVisArea(world, "a0");
    VMVisArea* area1 = AddVisArea(world, "a1");
    VMVertex* v = AddVertex(world, 0, 0, 0);
    // Keys: material + 65536 * first owner area (0 without one).
    VMPolygon* m1InArea1 = AddTriangle(world, v, v, v, m1);
    area1->Link(*m1InArea1);
    VMPolygon* m1Outside = AddTriangle(world, v, v, v, m1);
    VMPolygon* m0InArea1 = AddTriangle(world, v, v, v, m0);
    area1->Link(*m0InArea1);
    VMPolygon* m0InArea0 = AddTriangle(world, v, v, v, m0);
    area0->Link(*m0InArea0);

    EXPECT_EQ(SortPrimitives(world), 0);

    std::vector<VMPolygon*> order(world.Polygons.begin(), world.Polygons.end());
    ASSERT_EQ(order.size(), 4u);
    // Keys: m0InArea0 0, m1Outside 1, m0InArea1 65536, m1InArea1 65537.
    EXPECT_EQ(order[0], m0InArea0);
    EXPECT_EQ(order[1], m1Outside);
    EXPECT_EQ(order[2], m0InArea1);
    EXPECT_EQ(order[3], m1InArea1);
    EXPECT_EQ(area1->Index, 1);
    EXPECT_EQ(m1->Index, 1);
}

TEST(SortPrimitivesTest, TriListsArePutInMaterialOrderToo)
{
    VMWorld world;
    EXPECT_EQ(SortPrimitives(world), 0) << "an empty world sorts";
    VMMaterial* m0 = AddMaterial(world, "m0");
    VMMaterial* m1 = AddMaterial(world, "m1");
    VMTriList* late = VMWorld::NewTriList().release();
    late->SetMaterial(m1);
    world.TriLists.Add(late);
    VMTriList* early = VMWorld::NewTriList().release();
    early->SetMaterial(m0);
    world.TriLists.Add(early);

    EXPECT_EQ(SortPrimitives(world), 0);

    EXPECT_EQ(world.TriLists[0], early);
    EXPECT_EQ(world.TriLists[1], late);
}

} // namespace
