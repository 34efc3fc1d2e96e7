#include "geometry/RemoveTriLists.h"
#include "model/Validate.h"

#include "StripTestWorlds.h"

#include <gtest/gtest.h>

namespace {

TEST(RemoveTriLists, TriListInAVisAreaComesBackAsItsTrianglesWithItsAttributes)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    for (int k = 0; k < 5; ++k)
        AddStripVertex(world, static_cast<float>(k), static_cast<float>(k % 2));
    world.VisAreas.Add(VMWorld::NewVisArea());
    VMVisArea* area = world.VisAreas.Get(0);
    VMTriList* triList = VMWorld::NewTriList().release();
    for (const int corner : {0, 1, 2, 2, 1, 3, 2, 3, 4})
        triList->Corners.push_back(world.Vertices.Get(corner));
    triList->ListKind = VMTriListKind::StripOddStart;
    triList->SetMaterial(material);
    triList->Group = 5;
    triList->SourceNode = 9;
    triList->CollisionFlags = 0x1234;
    triList->Name = "floor";
    world.TriLists.Add(triList);
    area->Link(*triList);

    ASSERT_EQ(RemoveTriLists(world), 0);

    EXPECT_EQ(world.TriLists.Count(), 0);
    EXPECT_EQ(area->TriLists().Count(), 0);
    ASSERT_EQ(world.Polygons.Count(), 3);
    const std::vector<std::vector<int>> expected{{0, 1, 2}, {2, 1, 3}, {2, 3, 4}};
    for (int index = 0; index < 3; ++index) {
        const VMPolygon& triangle = *world.Polygons.Get(index);
        EXPECT_EQ(CornerNumbers(world, triangle), expected[static_cast<size_t>(index)]);
        EXPECT_EQ(triangle.Group, 5u);
        EXPECT_EQ(triangle.SourceNode, 9u);
        EXPECT_EQ(triangle.CollisionFlags, 0x1234);
        EXPECT_EQ(triangle.Name, "floor");
        EXPECT_EQ(triangle.Material(), material);
        EXPECT_EQ(triangle.Index, static_cast<uint32_t>(index));
        ASSERT_EQ(triangle.Owners.Count(), 1);
        EXPECT_EQ(triangle.Owners.Get(0), area);
    }
    EXPECT_EQ(area->Polygons().Count(), 3);
    EXPECT_EQ(material->UseCount, 3u);
    EXPECT_TRUE(Validate(world).empty());
}

TEST(RemoveTriLists, WorldWithoutTriListsIsLeftAsItIs)
{
    VMWorld world;
    AddGrid(world, 1, 1, AddStripMaterial(world));

    ASSERT_EQ(RemoveTriLists(world), 0);

    EXPECT_EQ(world.Polygons.Count(), 2);
}

} // namespace
