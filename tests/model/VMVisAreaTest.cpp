#include "model/VMVisArea.h"

#include "WorldBuilder.h"

#include <gtest/gtest.h>

namespace {

class VMVisAreaTest : public testing::Test {
protected:
    VMVisAreaTest()
    {
        VMVertex* a = AddVertex(world, 0, 0, 0);
        polygon = AddTriangle(world, a, a, a, nullptr);
        area = AddVisArea(world, "hall");
    }

    VMWorld world;
    VMPolygon* polygon = nullptr;
    VMVisArea* area = nullptr;
};

TEST_F(VMVisAreaTest, PrimitivesAreListedOnceAndTheElementCountFollowsEveryList)
{
    EXPECT_EQ(area->RemovePolygon(polygon), -1);
    VMTriList* triList = VMWorld::NewTriList().release();
    world.TriLists.Add(triList);
    VMHeightfield* heightfield = VMWorld::NewHeightfield().release();
    world.Heightfields.Add(heightfield);
    EXPECT_EQ(area->AddPolygon(polygon), 0);
    EXPECT_EQ(area->AddPolygon(polygon), 0);
    EXPECT_EQ(area->Polygons().Count(), 1);
    area->AddTriList(triList);
    area->AddHeightfield(heightfield);
    EXPECT_EQ(area->ElementCount(), 3);
    area->RemoveTriList(triList);
    EXPECT_EQ(area->ElementCount(), 2);
}

TEST_F(VMVisAreaTest, LinkAndUnlinkKeepBothSidesInStep)
{
    EXPECT_EQ(area->Link(*polygon), 0);
    EXPECT_EQ(polygon->Owners.Count(), 1);
    EXPECT_EQ(polygon->Owners[0], area);
    EXPECT_TRUE(area->Lists(polygon));

    EXPECT_EQ(area->Unlink(*polygon), 0);
    EXPECT_TRUE(polygon->Owners.IsEmpty());
    EXPECT_FALSE(area->Lists(polygon));
}

TEST_F(VMVisAreaTest, ARemovedAreaLeavesTheOwnerListsOfItsPrimitives)
{
    VMVisArea* cellar = AddVisArea(world, "cellar");
    area->Link(*polygon);
    cellar->Link(*polygon);
    world.VisAreas.Remove(0);
    ASSERT_EQ(polygon->Owners.Count(), 1);
    EXPECT_EQ(polygon->Owners[0], cellar);
}

} // namespace
