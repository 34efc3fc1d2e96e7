#include "geometry/visibility/PortalContact.h"
#include "geometry/visibility/VBState.h"
#include "geometry/visibility/VBVisBuilder.h"
#include "model/Validate.h"
#include "report/KestrelReportMessage.h"
#include "tests/UniqueTempFolder.h"

#include "VisTestWorlds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

template <class T>
std::vector<T*> Listed(const VPListT<T>& list)
{
    return {list.begin(), list.end()};
}

// A closed box, 20 long on x, 10 wide and high, cut at x = 10 by a portal a little larger
// than the box's cross-section: its front (x > 10) is "East", its back "West".
//
//        y
//   10 +----:----+
//      | West:East|
//    0 +----:----+ x
//      0    10   20
class VisBox : public ::testing::Test {
protected:
    VisBox()
    {
        AddVisBox(World, {0, 0, 0}, {20, 10, 10});
        AddPortalAcrossX(Builder, 10, -1, -1, 11, 11, "door", "East", "West");
        Builder.SetLogger(&Log);
    }

    int Build(int mode = VBModeWellConnected)
    {
        Builder.SetPolygons(World);
        const int result = Builder.Build(mode, false, {}, Report);
        if (result == 1)
            Builder.ExportToWorld(World);
        Report.Finalize(SeverityInformation);
        return result;
    }

    const VMVisArea* AreaNamed(const std::string& name) const
    {
        for (const VMVisArea* area : World.VisAreas)
            if (area->Name == name)
                return area;
        return nullptr;
    }

    std::vector<std::string> EntryTitles() const
    {
        std::vector<std::string> titles;
        for (const VReportEntry& entry : Report.Entries())
            titles.push_back(entry.Title);
        return titles;
    }

    // A small closed tetrahedron-like prop of four triangles around centre, touching nothing.
    void AddProp(const VBVector& centre)
    {
        const VBVector a {centre.X - 0.5, centre.Y - 0.5, centre.Z};
        const VBVector b {centre.X + 0.5, centre.Y - 0.5, centre.Z};
        const VBVector c {centre.X, centre.Y + 0.5, centre.Z};
        const VBVector top {centre.X, centre.Y, centre.Z + 0.5};
        AddVisTriangle(World, a, b, c);
        AddVisTriangle(World, a, b, top);
        AddVisTriangle(World, b, c, top);
        AddVisTriangle(World, c, a, top);
    }

    VMWorld World;
    VBVisBuilder Builder;
    RecordingLogger Log;
    KestrelReportMessage Report;
};

TEST_F(VisBox, OnePortalSplitsTheBoxIntoTwoAreasJoinedByTwoPortalRecords)
{
    ASSERT_EQ(Build(), 1);

    // The floor, ceiling and both long walls are cut: 16 pieces, 8 on each side, beside the
    // two triangles of each end wall.
    const VBState& state = Builder.State();
    ASSERT_EQ(state.Areas.size(), 2u);
    EXPECT_EQ(state.Areas[0].Name, "East");
    EXPECT_EQ(state.Areas[0].Elements, 10);
    EXPECT_EQ(state.Areas[1].Name, "West");
    EXPECT_EQ(state.Areas[1].Elements, 10);
    EXPECT_TRUE(Log.Has("  VBVisBuilder: Total splits generated: 8;\r\n"));

    ASSERT_EQ(World.VisAreas.Count(), 2);
    const VMVisArea* east = AreaNamed("East");
    const VMVisArea* west = AreaNamed("West");
    ASSERT_TRUE(east && west);
    // A cut world triangle belongs to both areas; the end walls only to their own.
    EXPECT_EQ(east->Polygons().Count(), 10);
    EXPECT_EQ(west->Polygons().Count(), 10);
    EXPECT_TRUE(east->Lists(World.Polygons[0]) && west->Lists(World.Polygons[0]));
    EXPECT_TRUE(west->Lists(World.Polygons[8]) && !east->Lists(World.Polygons[8]));
    EXPECT_TRUE(east->Lists(World.Polygons[10]) && !west->Lists(World.Polygons[10]));
    // Boxes: each side's geometry, enlarged by 0.1.
    EXPECT_FLOAT_EQ(east->Box.Min[0], 9.9f);
    EXPECT_FLOAT_EQ(east->Box.Max[0], 20.1f);
    EXPECT_FLOAT_EQ(west->Box.Min[0], -0.1f);
    EXPECT_FLOAT_EQ(west->Box.Max[2], 10.1f);
    EXPECT_EQ(east->Planes.Count(), 6);

    ASSERT_EQ(World.Portals.Count(), 2);
    const VMVisPortal* front = World.Portals[0];
    const VMVisPortal* back = World.Portals[1];
    EXPECT_EQ(front->Name, "door");
    EXPECT_EQ(front->Front, east);
    EXPECT_EQ(front->Back, west);
    EXPECT_EQ(back->Front, west);
    EXPECT_EQ(back->Back, east);
    EXPECT_EQ(front->Opposite, back);
    EXPECT_EQ(back->Opposite, front);
    EXPECT_THAT(Listed(east->Portals), ElementsAre(front));
    EXPECT_THAT(Listed(west->Portals), ElementsAre(back));
    // Seen from the west the corners run the other way round.
    EXPECT_THAT(front->Corners[1]->Position, ElementsAre(10.0f, 11.0f, -1.0f));
    EXPECT_THAT(back->Corners[1]->Position, ElementsAre(10.0f, 11.0f, 11.0f));
    EXPECT_EQ(front->LeadsOutside, 0);

    EXPECT_TRUE(Report.Entries().empty());
    EXPECT_TRUE(Validate(World).empty());
}

TEST_F(VisBox, PortalThatTouchesNoGeometryIsReportedAndNotExported)
{
    AddPortalAcrossX(Builder, 100, 0, 0, 5, 5, "lost");

    ASSERT_EQ(Build(), 1);

    EXPECT_EQ(World.Portals.Count(), 2);
    ASSERT_THAT(EntryTitles(), ElementsAre("Portal error"));
    const VReportEntry& entry = Report.Entries().front();
    EXPECT_EQ(entry.Explanation, "Some portals did not touch any geometry. Either the portal doesn't cut geometry, "
                                 "or the geometry has already been assigned to a different portal");
    EXPECT_EQ(entry.Detail, "The following portals were affected:\r\nlost\r\n");
    EXPECT_EQ(entry.Severity, SeverityError);
}

TEST_F(VisBox, PortalsThatMakeNoAreaWithGeometryFailTheBuild)
{
    VBVisBuilder lonely;
    AddPortalAcrossX(lonely, 100, 0, 0, 5, 5, "lost");
    lonely.SetPolygons(World);

    EXPECT_EQ(lonely.Build(VBModeWellConnected, false, {}, Report), 0);
    Report.Finalize(SeverityInformation);
    EXPECT_THAT(EntryTitles(), ElementsAre("Portal error", "Portals didn't generate any visibility areas."));
    EXPECT_EQ(Report.Entries()[1].Explanation, "Portals were found, but they didn't generate any valid visibility areas.");
}

TEST_F(VisBox, NothingToDoWithoutPortalsPolygonsOrMode)
{
    VBVisBuilder noPortals;
    noPortals.SetPolygons(World);
    EXPECT_EQ(noPortals.Build(VBModeQuick, false, {}, Report), 1);
    noPortals.ExportToWorld(World);
    EXPECT_EQ(World.VisAreas.Count(), 0);

    Builder.SetPolygons(World);
    EXPECT_EQ(Builder.Build(VBModeOff, false, {}, Report), 1);
    EXPECT_TRUE(Builder.State().Areas.empty());
    EXPECT_TRUE(Log.Lines.empty());
}

TEST_F(VisBox, PortalTooSmallLeaksAndItsSidesMerge)
{
    VMWorld world;
    AddVisBox(world, {0, 0, 0}, {20, 10, 10});
    VBVisBuilder builder;
    builder.SetLogger(&Log);
    // Covers the middle of the floor only: the floor is cut, the walls connect both sides.
    AddPortalAcrossX(builder, 10, 4, -1, 6, 3, "keyhole");
    builder.SetPolygons(world);

    ASSERT_EQ(builder.Build(VBModeWellConnected, false, {}, Report), 1);
    builder.ExportToWorld(world);
    Report.Finalize(SeverityInformation);

    const VBState& state = builder.State();
    ASSERT_EQ(state.Areas.size(), 2u);
    // Both unnamed: the back side's own area absorbs the one the front's fill made.
    EXPECT_EQ(state.Areas[0].MergedInto, 1);
    EXPECT_EQ(state.Areas[1].MergedInto, -1);
    EXPECT_TRUE(Log.Has("  VBVisBuilder: Merging Vis Areas: 2 and 1 \r\n"));
    EXPECT_TRUE(Log.Has("  VBVisBuilder: 1 VisAreas after merging (before: 2) \r\n"));
    EXPECT_TRUE(state.Portals[0].Bad);
    EXPECT_EQ(world.VisAreas.Count(), 1);
    EXPECT_EQ(world.VisAreas[0]->Polygons().Count(), 12);
    EXPECT_EQ(world.Portals.Count(), 0);
    ASSERT_THAT(EntryTitles(), ElementsAre("Portal leak detected"));
    EXPECT_EQ(Report.Entries()[0].Detail, "The following portals were affected:\r\nkeyhole\r\n");
}

TEST_F(VisBox, SameAreaOnBothSidesIsABadPortal)
{
    Builder.Portals()[0]->BackName = "east";

    ASSERT_EQ(Build(), 1);

    EXPECT_TRUE(Log.Has("Bad portal detected: 0 (door). Same named area on both sides of the portal! \r\n"));
    EXPECT_EQ(World.Portals.Count(), 0);
    ASSERT_THAT(EntryTitles(), ElementsAre("Bad portal detected"));
    EXPECT_EQ(Report.Entries()[0].Explanation, "Same named area on both sides of the portal.");
}

TEST_F(VisBox, SidesNamingOneAreaShareItAndMergingTwoNamedAreasIsReported)
{
    // A second wall portal at x = 15 whose back names the first one's front: East is reached
    // twice. Its front names a third area, which the geometry east of x = 15 then joins.
    AddPortalAcrossX(Builder, 15, -1, -1, 11, 11, "arch", "Hall", "EAST");

    ASSERT_EQ(Build(), 1);

    EXPECT_TRUE(Log.Has("  VBVisBuilder: Matched vis area 'EAST'to existing by name.\r\n"));
    const VBState& state = Builder.State();
    ASSERT_EQ(state.Areas.size(), 3u);
    EXPECT_EQ(state.Areas[0].References, 2);
    EXPECT_EQ(state.Areas[2].Name, "Hall");
    EXPECT_EQ(World.VisAreas.Count(), 3);
    EXPECT_EQ(World.Portals.Count(), 4);
    EXPECT_TRUE(Report.Entries().empty());
}

TEST_F(VisBox, AntiPortalsGoIntoTheAreaTheyNameOrThatHoldsThem)
{
    VMVisAntiPortal* inEast = World.AntiPortals.Add(VMWorld::NewAntiPortal(4)) == 0 ? World.AntiPortals[0] : nullptr;
    World.AntiPortals.Add(VMWorld::NewAntiPortal(4));
    World.AntiPortals.Add(VMWorld::NewAntiPortal(4));
    World.AntiPortals.Add(VMWorld::NewAntiPortal(4));
    VBPlacementItem& held = Builder.AddItem();
    held.AntiPortal = inEast;
    held.Box = {{17, 4, 0}, {19, 6, 2}};
    VBPlacementItem& named = Builder.AddItem();
    named.AntiPortal = World.AntiPortals[1];
    named.Box = {{14, 4, 0}, {16, 6, 12}};
    named.AreaName = "west";
    VBPlacementItem& nowhere = Builder.AddItem();
    nowhere.AntiPortal = World.AntiPortals[2];
    nowhere.AreaName = "Attic";
    VBPlacementItem& outside = Builder.AddItem();
    outside.AntiPortal = World.AntiPortals[3];
    outside.Box = {{30, 4, 0}, {32, 6, 2}};
    outside.Flags = VBPlacementItem::PlaceInNearestArea;

    ASSERT_EQ(Build(), 1);

    const VMVisArea* east = AreaNamed("East");
    const VMVisArea* west = AreaNamed("West");
    EXPECT_THAT(Listed(east->AntiPortals), ElementsAre(World.AntiPortals[0], World.AntiPortals[3]));
    EXPECT_THAT(Listed(west->AntiPortals), ElementsAre(World.AntiPortals[1]));
    EXPECT_TRUE(Log.Has("  VBVisBuilder: Couldn't force item into non existing vis area 'Attic';\r\n"));
    // The named item stands in the east and reaches above the ceiling, yet widens West's box;
    // East grows to the item placed by nearness.
    EXPECT_FLOAT_EQ(west->Box.Max[0], 16.1f);
    EXPECT_FLOAT_EQ(west->Box.Max[2], 12.1f);
    EXPECT_FLOAT_EQ(east->Box.Max[0], 32.0f);
}

struct FloatingCase {
    int Mode;
    // The areas of the prop inside East's box only, of the one inside both boxes, and of the
    // ones outside every box, east and west of the box.
    std::vector<std::string> Areas;
    std::string Counts;
};

class VisFloating : public VisBox, public ::testing::WithParamInterface<FloatingCase> {};

TEST_P(VisFloating, PropsTakeTheAreaOfTheirBoxOrOfTheNearestPolygon)
{
    // An item named after East that spans the whole box stretches East's box over West's.
    VBPlacementItem& stretch = Builder.AddItem();
    stretch.Box = {{0, 0, 0}, {20, 10, 10}};
    stretch.AreaName = "East";
    AddProp({15, 5, 5});
    // Nearest to the western floor, 3 below it.
    AddProp({4, 5, 3});
    AddProp({26, 5, 5});
    AddProp({-7, 5, 5});
    const int propStart = World.Polygons.Count() - 16;

    ASSERT_EQ(Build(GetParam().Mode), 1);

    std::vector<std::string> areas;
    for (int prop = 0; prop < 4; ++prop) {
        std::string names;
        for (const VMVisArea* owner : World.Polygons[propStart + 4 * prop]->Owners)
            names += owner->Name;
        // Every triangle of a prop lands where its first one does.
        for (int k = 1; k < 4; ++k) {
            std::string other;
            for (const VMVisArea* owner : World.Polygons[propStart + 4 * prop + k]->Owners)
                other += owner->Name;
            EXPECT_EQ(other, names) << "prop " << prop;
        }
        areas.push_back(names);
    }
    EXPECT_EQ(areas, GetParam().Areas);
    EXPECT_TRUE(Log.Has("  VBVisBuilder: Floating geometry assigned: " + GetParam().Counts + " cases.\r\n"));
}

INSTANTIATE_TEST_SUITE_P(Modes, VisFloating,
                         ::testing::Values(
                             // Quick copies a prop into every area whose box holds it and never
                             // spreads from one triangle to the next.
                             FloatingCase {VBModeQuick, {"East", "EastWest", "East", "West"}, "4 simple, 4 hard, 8 impossible"},
                             FloatingCase {VBModeWellConnected, {"East", "West", "East", "West"}, "1 simple, 4 hard, 8 impossible"},
                             FloatingCase {VBModeIntersections, {"East", "West", "East", "West"}, "1 simple, 4 hard, 8 impossible"},
                             FloatingCase {VBModeArbitrary, {"East", "West", "East", "West"}, "1 simple, 4 hard, 8 impossible"}));

// The plane x = d, its front towards +x.
VBPlane PlaneAcrossX(double d)
{
    VBPlane plane;
    plane.Normal = {1, 0, 0};
    plane.D = d;
    plane.Valid = true;
    return plane;
}

TEST(VisCut, ATriangleAcrossThePlaneGivesATriangleAndAQuadWithTheSharedCrossingPoints)
{
    const VBPlane plane = PlaneAcrossX(1);
    const VBVector triangle[3] = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}};
    std::vector<VBVector> front;
    std::vector<VBVector> back;
    CutAlongPortal(triangle, 3, plane, front, back);
    ASSERT_EQ(front.size(), 4u);
    ASSERT_EQ(back.size(), 3u);
    const auto same = [](const VBVector& a, const VBVector& b) { return a.X == b.X && a.Y == b.Y && a.Z == b.Z; };
    EXPECT_TRUE(same(front[0], {1, 0, 0}) && same(front[1], {2, 0, 0}) && same(front[2], {2, 2, 0}) &&
                same(front[3], {1, 1, 0}));
    EXPECT_TRUE(same(back[0], {0, 0, 0}) && same(back[1], {1, 0, 0}) && same(back[2], {1, 1, 0}));
}

TEST(VisCut, OfTwoCornersNearThePlaneInARowOnlyTheNearerJoinsBothPieces)
{
    const VBPlane plane = PlaneAcrossX(0);
    //      d(0.08)   c(-0.05)
    //   a(3) ......... b(-3)     a in front, b behind, d and c within 0.1 of the plane
    const VBVector quad[4] = {{3, 0, 0}, {-3, 0, 0}, {-0.05, 2, 0}, {0.08, 2, 0}};
    std::vector<VBVector> front;
    std::vector<VBVector> back;
    CutAlongPortal(quad, 4, plane, front, back);
    // a -> b crosses at the origin; the run c, d goes from the back to the front: c, the
    // nearer, joins both, d only the front.
    ASSERT_EQ(front.size(), 4u);
    ASSERT_EQ(back.size(), 3u);
    EXPECT_EQ(front[0].X, 3);
    EXPECT_EQ(front[1].X, 0);
    EXPECT_EQ(front[2].X, -0.05);
    EXPECT_EQ(front[3].X, 0.08);
    EXPECT_EQ(back[0].X, 0);
    EXPECT_EQ(back[1].X, -3);
    EXPECT_EQ(back[2].X, -0.05);
}

TEST(VisDebugFile, EveryStageIsDumpedUnderItsTitle)
{
    VMWorld world;
    AddVisBox(world, {0, 0, 0}, {20, 10, 10});
    VBVisBuilder builder;
    AddPortalAcrossX(builder, 10, -1, -1, 11, 11, "door");
    builder.SetPolygons(world);
    const UniqueTempFolder folder("kestrel_vis");
    const std::string path = folder.Native("debug.VISINFO").string();
    KestrelReportMessage report;

    ASSERT_EQ(builder.Build(VBModeWellConnected, true, path, report), 1);

    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const auto u32 = [&](size_t at) {
        uint32_t value = 0;
        for (int k = 3; k >= 0; --k)
            value = value * 256 + static_cast<uint8_t>(bytes.at(at + static_cast<size_t>(k)));
        return value;
    };
    ASSERT_GT(bytes.size(), 16u);
    EXPECT_EQ(bytes.substr(0, 8), std::string("VISINFO\0", 8));
    EXPECT_EQ(u32(8), 2u);
    const uint32_t count = u32(bytes.size() - 4);
    ASSERT_EQ(count, 5u);
    std::vector<std::string> titles;
    for (uint32_t stage = 0; stage < count; ++stage) {
        const uint32_t offset = u32(bytes.size() - 4 - 4 * (count - stage));
        const uint32_t length = u32(offset);
        titles.push_back(bytes.substr(offset + 4, length));
    }
    EXPECT_THAT(titles, ElementsAre(std::string("1. Before visibility calculations (original data)\0", 50),
                                    std::string("2. After the polygons crossing the portals have been splitted\0", 62),
                                    std::string("3. After the scene has been floodfilled\0", 40),
                                    std::string("4. After the visibility areas have been merged (whenever possible)\0", 67),
                                    std::string("5. After the remaining floating geometry has been assigned to zones\t(Final "
                                                "Result)\0",
                                                83)));
    // Stage 1: no areas, one portal (not yet bad, no areas), then the 12 triangles.
    const uint32_t first = u32(bytes.size() - 4 - 4 * count);
    const size_t areas = first + 4 + 50;
    EXPECT_EQ(u32(areas), 0u);
    const size_t portals = areas + 4;
    EXPECT_EQ(u32(portals), 1u);
    EXPECT_EQ(static_cast<uint8_t>(bytes[portals + 4]), 0);
    EXPECT_EQ(u32(portals + 5), 0xFFFFFFFFu);
    EXPECT_EQ(u32(portals + 9), 0xFFFFFFFFu);
    EXPECT_EQ(u32(portals + 13), 4u);
    const size_t polygons = portals + 17 + 48;
    EXPECT_EQ(u32(polygons), 12u);
    EXPECT_EQ(u32(polygons + 4), 0u);
}

} // namespace
