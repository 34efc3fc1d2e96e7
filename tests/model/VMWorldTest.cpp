#include "model/VMWorld.h"

#include "WorldBuilder.h"

#include <gtest/gtest.h>

namespace {

TEST(VMWorldTest, EnumerationNumbersEveryListAndCountsCornerReferences)
{
    VMWorld world;
    VMMaterial* stone = AddMaterial(world, "stone");
    VMMaterial* wood = AddMaterial(world, "wood");
    VMVertex* a = AddVertex(world, 0, 0, 0);
    VMVertex* b = AddVertex(world, 1, 0, 0);
    VMVertex* c = AddVertex(world, 0, 1, 0);
    VMPolygon* first = AddTriangle(world, a, b, c, stone);
    VMPolygon* second = AddTriangle(world, c, b, a, wood);
    VMTriList* triList = VMWorld::NewTriList().release();
    triList->Corners = {a, b, c, c, b, a};
    world.TriLists.Add(triList);
    VMPatch* patch = VMWorld::NewPatch(false).release();
    VMPatch* triangularPatch = VMWorld::NewPatch(true).release();
    world.Patches.Add(patch);
    world.Patches.Add(triangularPatch);
    VMHeightfield* heightfield = VMWorld::NewHeightfield().release();
    world.Heightfields.Add(heightfield);
    VMLight* light = VMWorld::NewLight().release();
    world.Lights.Add(VMWorld::NewLight().release());
    world.Lights.Add(light);
    world.CornerReferenceCount = 99;

    EXPECT_EQ(world.Enumerate(), 0);

    EXPECT_EQ(stone->Index, 0);
    EXPECT_EQ(wood->Index, 1);
    EXPECT_EQ(c->Index, 2u);
    EXPECT_EQ(first->Index, 0u);
    EXPECT_EQ(second->Index, 1u);
    EXPECT_EQ(first->PrimitiveNumber, 0);
    EXPECT_EQ(second->PrimitiveNumber, 1);
    EXPECT_EQ(triList->Index, 0u);
    EXPECT_EQ(triList->PrimitiveNumber, 2);
    EXPECT_EQ(patch->PrimitiveNumber, 3);
    EXPECT_EQ(triangularPatch->Index, 1u);
    EXPECT_EQ(triangularPatch->PrimitiveNumber, 4);
    EXPECT_EQ(heightfield->PrimitiveNumber, 5);
    EXPECT_EQ(light->Index, 1);
    // 3 + 3 polygon corners, 6 tri-list corners, 16 and 10 patch controls, 4 heightfield corners.
    EXPECT_EQ(world.CornerReferenceCount, 42);
}

TEST(VMWorldTest, EnumerationRecountsTheVisAreaElements)
{
    VMWorld world;
    VMVertex* a = AddVertex(world, 0, 0, 0);
    VMPolygon* polygon = AddTriangle(world, a, a, a, nullptr);
    VMVisArea* area = AddVisArea(world, "hall");
    area->Link(*polygon);
    world.Enumerate();
    EXPECT_EQ(area->ElementCount(), 1);
    EXPECT_EQ(area->Index, 0);
}

TEST(VMWorldTest, RemovingAPolygonTakesItOutOfEveryVisAreaFirst)
{
    VMWorld world;
    VMVertex* a = AddVertex(world, 0, 0, 0);
    VMPolygon* kept = AddTriangle(world, a, a, a, nullptr);
    VMPolygon* removed = AddTriangle(world, a, a, a, nullptr);
    VMVisArea* hall = AddVisArea(world, "hall");
    VMVisArea* cellar = AddVisArea(world, "cellar");
    hall->Link(*kept);
    hall->Link(*removed);
    cellar->Link(*removed);

    EXPECT_EQ(world.Polygons.Remove(1), 0);

    EXPECT_EQ(hall->Polygons().Count(), 1);
    EXPECT_EQ(hall->Polygons()[0], kept);
    EXPECT_EQ(hall->ElementCount(), 1);
    EXPECT_TRUE(cellar->Polygons().IsEmpty());
    EXPECT_EQ(cellar->ElementCount(), 0);
}

TEST(VMWorldTest, DestroyingAPolygonGivesItsMaterialUseBack)
{
    VMWorld world;
    VMMaterial* stone = AddMaterial(world, "stone");
    VMVertex* a = AddVertex(world, 0, 0, 0);
    AddTriangle(world, a, a, a, stone);
    AddTriangle(world, a, a, a, stone);
    ASSERT_EQ(stone->UseCount, 2u);
    world.Polygons.RemoveLeaveEmpty(0);
    EXPECT_EQ(stone->UseCount, 1u);
}

TEST(VMWorldTest, ClearDestroysEveryRecordAndResetsTheBounds)
{
    VMWorld world;
    VMMaterial* stone = AddMaterial(world, "stone");
    VMVertex* a = AddVertex(world, 0, 0, 0);
    VMPolygon* polygon = AddTriangle(world, a, a, a, stone);
    AddVisArea(world, "hall")->Link(*polygon);
    world.Portals.Add(VMWorld::NewPortal(4));
    world.Bounds.Grow(a->Position);
    world.HasTangents = 1;

    world.Clear();

    EXPECT_EQ(world.Materials.Count(), 0);
    EXPECT_EQ(world.Vertices.Count(), 0);
    EXPECT_EQ(world.Polygons.Count(), 0);
    EXPECT_EQ(world.VisAreas.Count(), 0);
    EXPECT_EQ(world.Portals.Count(), 0);
    EXPECT_EQ(world.HasTangents, 0);
    EXPECT_TRUE(world.Bounds.IsEmpty());
}

TEST(VMWorldTest, FactoriesMakeTrianglesWithEmptyNeighboursAndRefuseCorruptCornerCounts)
{
    VMVertex a, b, c;
    const auto triangle = VMWorld::NewTriangle(&a, &b, &c);
    ASSERT_NE(triangle, nullptr);
    EXPECT_EQ(triangle->Corners, (std::vector<VMVertex*> {&a, &b, &c}));
    EXPECT_EQ(triangle->Neighbours, (std::vector<VMPolygon*> {nullptr, nullptr, nullptr}));
    const auto portal = VMWorld::NewPortal(4);
    ASSERT_NE(portal, nullptr);
    EXPECT_EQ(portal->Corners.size(), 4u);
    EXPECT_EQ(VMWorld::NewPortal(-1), nullptr);
    EXPECT_EQ(VMWorld::NewAntiPortal(1 << 30), nullptr);
}

} // namespace
