#include "formats/PrefabShapes.h"
#include "formats/PrefabXml.h"
#include "formats/SaveVisibility.h"
#include "model/VMWorld.h"

#include "TempDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <initializer_list>
#include <string>

namespace {

VMVisArea* AddArea(VMWorld& world, const std::string& name, const float (&low)[3], const float (&high)[3])
{
    VMVisArea* area = VMWorld::NewVisArea().release();
    area->Name = name;
    std::copy(low, low + 3, area->Box.Min);
    std::copy(high, high + 3, area->Box.Max);
    world.VisAreas.Add(area);
    return area;
}

VMVisPortal* AddPortal(VMWorld& world, VMVisArea* front, VMVisArea* back, std::initializer_list<std::array<float, 3>> corners)
{
    VMVisPortal* portal = VMWorld::NewPortal(static_cast<int>(corners.size())).release();
    int k = 0;
    for (const auto& corner : corners)
        std::copy(corner.begin(), corner.end(), portal->Corners[static_cast<size_t>(k++)]->Position);
    portal->Front = front;
    portal->Back = back;
    front->Portals.Add(portal);
    world.Portals.Add(portal);
    return portal;
}

void AddSubmeshes(VMWorld& world, int count)
{
    for (int n = 0; n < count; ++n) {
        VMSubmesh* submesh = VMWorld::NewSubmesh().release();
        submesh->Number = n;
        world.Submeshes.Add(submesh);
    }
}

// Two rooms side by side joined by one door, seen from each room: the record of room A holds the
// corners in drawing order, that of room B the other way round.
TEST(SaveVisibility, TwoRoomsJoinedByADoorAreTwoZonesWithTheirPortalsLinked)
{
    VMWorld world;
    AddSubmeshes(world, 3);
    VMVisArea* roomA = AddArea(world, "RoomA", {0, 0, 0}, {4, 6, 3});
    VMVisArea* roomB = AddArea(world, "RoomB", {4, 0, 0}, {10, 6, 3});
    roomA->Submeshes.Add(world.Submeshes[0]);
    roomA->Submeshes.Add(world.Submeshes[2]);
    roomB->Submeshes.Add(world.Submeshes[1]);
    roomB->Submeshes.Add(world.Submeshes[2]);
    VMVisPortal* fromA = AddPortal(world, roomA, roomB, {{0, 0, 0}, {3, 0, 0}, {0, 3, 0}});
    VMVisPortal* fromB = AddPortal(world, roomB, roomA, {{0, 3, 0}, {3, 0, 0}, {0, 0, 0}});
    fromA->Opposite = fromB;
    fromB->Opposite = fromA;
    TempDirectory folder;

    // The default seed of the generator: its first eight numbers modulo 255 are 122 (dropped),
    // 102, 179, 50 and 4 (dropped), 151, 194, 95.
    ASSERT_TRUE(SaveVisibility(world, folder.Path("house.qmesh_data"), 5489u));

    // IDs count up depth first from a base made from the file's name.
    const std::string expected =
        "<root>\r\n"
        "    <header version=\"0\" convertible=\"FALSE\" />\r\n"
        "    <info generatedby=\"Gemvor Version 7, 6, 3, 0\" />\r\n"
        "    <shape class=\"VisibilityZoneShape\">\r\n"
        "        <property name=\"ShapeName\" value=\"VisZone_RoomA\" />\r\n"
        "        <property name=\"UniqueID\" value=\"16052541321087287297\" />\r\n"
        "        <property name=\"ExportShape\" value=\"TRUE\" />\r\n"
        "        <property name=\"Visible\" value=\"TRUE\" />\r\n"
        "        <property name=\"Position\" value=\"2.0000,3.0000,1.5000\" />\r\n"
        "        <property name=\"Orientation\" value=\"0.0000,0.0000,0.0000\" />\r\n"
        "        <property name=\"Scaling\" value=\"1.0000,1.0000,1.0000\" />\r\n"
        "        <property name=\"BoundingBoxMin\" value=\"-2.0000,-3.0000,-1.5000\" />\r\n"
        "        <property name=\"BoundingBoxMax\" value=\"2.0000,3.0000,1.5000\" />\r\n"
        "        <property name=\"DebugColor\" value=\"50,179,102,255\" />\r\n"
        "        <property name=\"SubMeshIndices\" value=\"0,2\" />\r\n"
        "        <property name=\"MergeWithOutside\" value=\"FALSE\" />\r\n"
        "        <shape class=\"PortalShape\">\r\n"
        "            <property name=\"ShapeName\" value=\"Portal_RoomA_000\" />\r\n"
        "            <property name=\"UniqueID\" value=\"16052541321087287298\" />\r\n"
        "            <property name=\"ExportShape\" value=\"TRUE\" />\r\n"
        "            <property name=\"Visible\" value=\"TRUE\" />\r\n"
        "            <property name=\"Position\" value=\"1.0000,1.0000,0.0000\" />\r\n"
        "            <property name=\"Orientation\" value=\"0.0000,0.0000,0.0000\" />\r\n"
        "            <property name=\"Scaling\" value=\"1.0000,1.0000,1.0000\" />\r\n"
        "            <property name=\"TargetPortalID\" value=\"16052541321087287300\" />\r\n"
        "            <property name=\"TargetZoneID\" value=\"16052541321087287299\" />\r\n"
        "            <property name=\"VertexCount\" value=\"3\" />\r\n"
        "            <property name=\"LocalVertexPositions\" value=\"-1.0000,2.0000,0.0000,2.0000,-1.0000,0.0000,-1.0000,-1.0000,0.0000\" />\r\n"
        "            <property name=\"LeadsToOutside\" value=\"FALSE\" />\r\n"
        "        </shape>\r\n"
        "    </shape>\r\n"
        "    <shape class=\"VisibilityZoneShape\">\r\n"
        "        <property name=\"ShapeName\" value=\"VisZone_RoomB\" />\r\n"
        "        <property name=\"UniqueID\" value=\"16052541321087287299\" />\r\n"
        "        <property name=\"ExportShape\" value=\"TRUE\" />\r\n"
        "        <property name=\"Visible\" value=\"TRUE\" />\r\n"
        "        <property name=\"Position\" value=\"7.0000,3.0000,1.5000\" />\r\n"
        "        <property name=\"Orientation\" value=\"0.0000,0.0000,0.0000\" />\r\n"
        "        <property name=\"Scaling\" value=\"1.0000,1.0000,1.0000\" />\r\n"
        "        <property name=\"BoundingBoxMin\" value=\"-3.0000,-3.0000,-1.5000\" />\r\n"
        "        <property name=\"BoundingBoxMax\" value=\"3.0000,3.0000,1.5000\" />\r\n"
        "        <property name=\"DebugColor\" value=\"95,194,151,255\" />\r\n"
        "        <property name=\"SubMeshIndices\" value=\"1,2\" />\r\n"
        "        <property name=\"MergeWithOutside\" value=\"FALSE\" />\r\n"
        "        <shape class=\"PortalShape\">\r\n"
        "            <property name=\"ShapeName\" value=\"Portal_RoomB_000\" />\r\n"
        "            <property name=\"UniqueID\" value=\"16052541321087287300\" />\r\n"
        "            <property name=\"ExportShape\" value=\"TRUE\" />\r\n"
        "            <property name=\"Visible\" value=\"TRUE\" />\r\n"
        "            <property name=\"Position\" value=\"1.0000,1.0000,0.0000\" />\r\n"
        "            <property name=\"Orientation\" value=\"0.0000,0.0000,0.0000\" />\r\n"
        "            <property name=\"Scaling\" value=\"1.0000,1.0000,1.0000\" />\r\n"
        "            <property name=\"TargetPortalID\" value=\"16052541321087287298\" />\r\n"
        "            <property name=\"TargetZoneID\" value=\"16052541321087287297\" />\r\n"
        "            <property name=\"VertexCount\" value=\"3\" />\r\n"
        "            <property name=\"LocalVertexPositions\" value=\"-1.0000,-1.0000,0.0000,2.0000,-1.0000,0.0000,-1.0000,2.0000,0.0000\" />\r\n"
        "            <property name=\"LeadsToOutside\" value=\"FALSE\" />\r\n"
        "        </shape>\r\n"
        "    </shape>\r\n"
        "</root>\r\n";
    EXPECT_EQ(folder.Read("house.qmesh_data/visibility.xml"), expected);
}

TEST(SaveVisibility, UnnamedAreasAreNamedByNumberAndPortalsLeadingOutsideMarkTheirZone)
{
    VMWorld world;
    for (int a = 0; a < 8; ++a)
        AddArea(world, a == 7 ? "" : "room" + std::to_string(a), {0, 0, 0}, {1, 1, 1});
    VMVisArea* seventh = world.VisAreas[7];
    AddPortal(world, seventh, world.VisAreas[0], {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}})->LeadsOutside = 1;
    VMVisPortal* back = AddPortal(world, world.VisAreas[0], seventh, {{0, 1, 0}, {1, 0, 0}, {0, 0, 0}});
    AddPortal(world, seventh, nullptr, {{5, 0, 0}, {6, 0, 0}, {5, 1, 0}});
    world.Portals[0]->Opposite = back;
    back->Opposite = world.Portals[0];
    TempDirectory folder;
    ASSERT_TRUE(SaveVisibility(world, folder.Path("data"), 1u));

    VMWShapeInstance3DCollection shapes;
    std::string error;
    ASSERT_EQ(LoadPrefabXML(folder.Path("data\\visibility.xml"), shapes, error), 0) << error;
    ASSERT_EQ(shapes.Shapes.size(), 8u);
    const auto& zone = *shapes.Shapes[7];
    EXPECT_EQ(zone.Name, "VisZone_007");
    ASSERT_EQ(zone.Children.size(), 2u);
    EXPECT_EQ(zone.Children[0]->Name, "Portal_007_000");
    EXPECT_EQ(zone.Children[1]->Name, "Portal_007_001");
    const auto& outward = static_cast<const VMWPortalInstance&>(*zone.Children[0]);
    EXPECT_TRUE(outward.LeadsToOutside);
    EXPECT_EQ(outward.TargetZone, shapes.Shapes[0].get());
    EXPECT_TRUE(static_cast<const VMWVisibilityZoneInstance&>(*shapes.Shapes[0]).MergeWithOutside);
    const auto& dangling = static_cast<const VMWPortalInstance&>(*zone.Children[1]);
    EXPECT_EQ(dangling.TargetZoneID, 0u);
    EXPECT_EQ(dangling.TargetPortalID, 0u);
}

TEST(SaveVisibility, WithoutPortalsNoFileIsWrittenAndAnOldOneGoes)
{
    VMWorld world;
    AddArea(world, "hall", {0, 0, 0}, {1, 1, 1});
    TempDirectory folder;
    folder.Write("data/visibility.xml", "<root/>");

    ASSERT_TRUE(SaveVisibility(world, folder.Path("data"), 1u));

    EXPECT_FALSE(std::filesystem::exists(folder.Native("data/visibility.xml")));
    EXPECT_TRUE(std::filesystem::exists(folder.Native("data")));
}

} // namespace
