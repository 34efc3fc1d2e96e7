#include "model/ComputeWorldBounds.h"
#include "model/ScaleWorld.h"
#include "model/Translate.h"

#include "WorldBuilder.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace {

class CountingShape : public VMWShapeInstance3D {
public:
    bool ExchangeXML(VMWShapeInstance3DCollection&, tinyxml2::XMLElement&, bool) override { return true; }
    const char* GetClassName() const override { return "StaticMeshShape"; }
};

VMVisArea* AddBoxArea(VMWorld& world, float minX, float minY, float minZ, float maxX, float maxY, float maxZ)
{
    VMVisArea* area = AddVisArea(world, "hall");
    const float lower[3] = {minX, minY, minZ};
    const float upper[3] = {maxX, maxY, maxZ};
    area->Box.Grow(lower);
    area->Box.Grow(upper);
    return area;
}

void ExpectPlane(const VMVisPlane* plane, double nx, double ny, double nz, double d)
{
    ASSERT_NE(plane, nullptr);
    EXPECT_EQ(plane->Normal[0], nx);
    EXPECT_EQ(plane->Normal[1], ny);
    EXPECT_EQ(plane->Normal[2], nz);
    EXPECT_EQ(plane->D, d);
}

TEST(WorldPlacementTest, BoxPlanesRunLowerThenUpperFaceForXYAndZ)
{
    VMWorld world;
    VMVisArea* area = AddBoxArea(world, -1, -2, -3, 4, 5, 6);

    EXPECT_EQ(world.RebuildBoxPlanes(*area), 0);

    ASSERT_EQ(area->Planes.Count(), 6);
    ExpectPlane(area->Planes[0], 1, 0, 0, 1);
    ExpectPlane(area->Planes[1], -1, 0, 0, 4);
    ExpectPlane(area->Planes[2], 0, 1, 0, 2);
    ExpectPlane(area->Planes[3], 0, -1, 0, 5);
    ExpectPlane(area->Planes[4], 0, 0, 1, 3);
    ExpectPlane(area->Planes[5], 0, 0, -1, 6);
    EXPECT_EQ(world.VisPlanes.Count(), 6);
    EXPECT_EQ(world.VisPlanes[0], area->Planes[0]);
    EXPECT_EQ(area->Planes[3]->Area, area);
}

TEST(WorldPlacementTest, RebuildingReplacesTheOldPlanesInTheWorldList)
{
    VMWorld world;
    VMVisArea* first = AddBoxArea(world, 0, 0, 0, 1, 1, 1);
    VMVisArea* second = AddBoxArea(world, 0, 0, 0, 2, 2, 2);
    world.RebuildBoxPlanes(*first);
    world.RebuildBoxPlanes(*second);
    world.RebuildBoxPlanes(*first);
    EXPECT_EQ(world.VisPlanes.Count(), 12);
    EXPECT_EQ(world.VisPlanes[0], second->Planes[0]);
    EXPECT_EQ(world.VisPlanes[6], first->Planes[0]);
}

TEST(WorldPlacementTest, TranslateMovesEverythingPositionedIncludingBoundsAndLights)
{
    VMWorld world;
    VMVertex* vertex = AddVertex(world, 1, 2, 3);
    VMLight* light = VMWorld::NewLight().release();
    world.Lights.Add(light);
    VMVisPortal* portal = VMWorld::NewPortal(3).release();
    world.Portals.Add(portal);
    VMVisAntiPortal* antiPortal = VMWorld::NewAntiPortal(1).release();
    world.AntiPortals.Add(antiPortal);
    VMVisArea* area = AddBoxArea(world, 0, 0, 0, 1, 1, 1);
    world.Bounds.Grow(vertex->Position);

    const float offset[3] = {10, 20, 30};
    EXPECT_EQ(Translate(world, offset), 0);

    EXPECT_EQ(vertex->Position[0], 11.0f);
    EXPECT_EQ(vertex->Position[2], 33.0f);
    EXPECT_EQ(light->Position[1], 20.0f);
    EXPECT_EQ(portal->Corners[2]->Position[2], 30.0f);
    EXPECT_EQ(antiPortal->Corners[0]->Position[0], 10.0f);
    EXPECT_EQ(world.Bounds.Min[0], 11.0f);
    EXPECT_EQ(world.Bounds.Max[1], 22.0f);
    EXPECT_EQ(area->Box.Min[2], 30.0f);
    EXPECT_EQ(area->Box.Max[0], 11.0f);
    ASSERT_EQ(area->Planes.Count(), 6);
    ExpectPlane(area->Planes[0], 1, 0, 0, -10);
    ExpectPlane(area->Planes[5], 0, 0, -1, 31);
}

TEST(WorldPlacementTest, ScaleWorldByTwoLeavesLightsAndTheWorldBoundsAlone)
{
    VMWorld world;
    VMVertex* vertex = AddVertex(world, 1, -2, 3);
    VMLight* light = VMWorld::NewLight().release();
    light->Position[0] = 5.0f;
    world.Lights.Add(light);
    VMVisPortal* portal = VMWorld::NewPortal(1).release();
    portal->Corners[0]->Position[1] = 4.0f;
    world.Portals.Add(portal);
    VMVisArea* area = AddBoxArea(world, -1, -1, -1, 1, 2, 3);
    world.Bounds.Grow(vertex->Position);
    auto shape = std::make_unique<CountingShape>();
    shape->Position[0] = 7.0f;
    shape->Children.push_back(std::make_unique<CountingShape>());
    shape->Children[0]->Position[2] = 1.5f;
    world.Shapes.Shapes.push_back(std::move(shape));

    EXPECT_EQ(ScaleWorld(world, 2.0f), 0);

    EXPECT_EQ(vertex->Position[0], 2.0f);
    EXPECT_EQ(vertex->Position[1], -4.0f);
    EXPECT_EQ(vertex->Position[2], 6.0f);
    EXPECT_EQ(portal->Corners[0]->Position[1], 8.0f);
    EXPECT_EQ(area->Box.Min[0], -2.0f);
    EXPECT_EQ(area->Box.Max[2], 6.0f);
    ExpectPlane(area->Planes[1], -1, 0, 0, 2);
    EXPECT_EQ(light->Position[0], 5.0f);
    EXPECT_EQ(world.Bounds.Min[0], 1.0f);
    EXPECT_EQ(world.Bounds.Max[2], 3.0f);
    EXPECT_EQ(world.Shapes.Shapes[0]->Position[0], 14.0f);
    EXPECT_EQ(world.Shapes.Shapes[0]->Children[0]->Position[2], 3.0f);
}

TEST(WorldPlacementTest, WorldBoundsCoverTheVerticesAndTheHeightfieldRange)
{
    VMWorld world;
    ComputeWorldBounds(world);
    EXPECT_EQ(world.Bounds.Min[0], 1e8f) << "an empty world has inverted bounds";
    EXPECT_EQ(world.Bounds.Max[0], -1e8f);
    AddVertex(world, -1, 0, 2);
    VMVertex* corner = AddVertex(world, 3, 4, 0);
    VMHeightfield* heightfield = VMWorld::NewHeightfield().release();
    heightfield->Corners[0] = corner;
    heightfield->HeightScale = 0.5f;
    world.Heightfields.Add(heightfield);
    world.Bounds.Grow(std::array<float, 3> {100, 100, 100}.data());

    ComputeWorldBounds(world);

    EXPECT_EQ(world.Bounds.Min[0], -1.0f);
    EXPECT_EQ(world.Bounds.Max[0], 3.0f);
    EXPECT_EQ(world.Bounds.Max[1], 4.0f);
    EXPECT_EQ(world.Bounds.Min[2], -63.5f);
    EXPECT_EQ(world.Bounds.Max[2], 64.0f);
}

} // namespace
