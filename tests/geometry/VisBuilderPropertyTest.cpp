#include "geometry/visibility/VBState.h"
#include "geometry/visibility/VBVisBuilder.h"
#include "model/Validate.h"
#include "report/KestrelReportMessage.h"

#include "VisTestWorlds.h"

#include <gtest/gtest.h>

#include <cmath>
#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <set>

namespace {

double FanArea(const VBVector* corners, uint32_t count)
{
    double area = 0.0;
    for (uint32_t k = 2; k < count; ++k)
        area += 0.5 * Length(Cross(corners[k - 1] - corners[0], corners[k] - corners[0]));
    return area;
}

VBVector RandomPoint(std::mt19937& random, double extent)
{
    std::uniform_real_distribution<double> coordinate(-extent, extent);
    return {coordinate(random), coordinate(random), coordinate(random)};
}

// A unit vector and two unit vectors across it.
void RandomFrame(std::mt19937& random, VBVector& normal, VBVector& across, VBVector& up)
{
    std::normal_distribution<double> gauss;
    do
        normal = {gauss(random), gauss(random), gauss(random)};
    while (Length(normal) < 1e-3);
    // Often along an axis, as walls mostly are.
    if (random() % 2 == 0)
        normal = random() % 3 == 0 ? VBVector {1, 0, 0} : random() % 2 == 0 ? VBVector {0, 1, 0} : VBVector {0, 0, 1};
    normal = normal * (1.0 / Length(normal));
    across = Cross(normal, std::fabs(normal.X) < 0.9 ? VBVector {1, 0, 0} : VBVector {0, 1, 0});
    across = across * (1.0 / Length(across));
    up = Cross(normal, across);
}

// The convex hull of points in the plane z = height, counter-clockwise (monotone chain).
std::vector<VBVector> ConvexHull(std::vector<VBVector> points, double height)
{
    std::sort(points.begin(), points.end(), [](const VBVector& a, const VBVector& b) {
        return a.X < b.X || (a.X == b.X && a.Y < b.Y);
    });
    const auto turn = [](const VBVector& o, const VBVector& a, const VBVector& b) {
        return (a.X - o.X) * (b.Y - o.Y) - (a.Y - o.Y) * (b.X - o.X);
    };
    std::vector<VBVector> hull(2 * points.size());
    size_t k = 0;
    for (size_t i = 0; i < points.size(); ++i) {
        while (k >= 2 && turn(hull[k - 2], hull[k - 1], points[i]) <= 0)
            --k;
        hull[k++] = points[i];
    }
    for (size_t i = points.size() - 1, lower = k + 1; i > 0; --i) {
        while (k >= lower && turn(hull[k - 2], hull[k - 1], points[i - 1]) <= 0)
            --k;
        hull[k++] = points[i - 1];
    }
    hull.resize(k - 1);
    for (VBVector& point : hull)
        point.Z = height;
    return hull;
}

// Level convex polygons across a wall portal at x = at, each with a run of corners within the
// portal's tolerance of its plane at its far end: the cut must share only one of them.
void AddShelves(VMWorld& world, VBVisBuilder& builder, std::mt19937& random)
{
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const double at = -10.0 + 20.0 * unit(random);
    AddPortalAcrossX(builder, at, -40, -40, 40, 40, "shelf wall");
    const int shelves = 1 + static_cast<int>(random() % 3);
    for (int s = 0; s < shelves; ++s) {
        std::vector<VBVector> points;
        for (int k = 0; k < 6; ++k) {
            const double side = k % 2 == 0 ? 1.0 : -1.0;
            points.push_back({at + side * (0.2 + 5.0 * unit(random)), 8.0 * unit(random), 0});
        }
        const int run = 2 + static_cast<int>(random() % 2);
        for (int k = 0; k < run; ++k)
            points.push_back({at - 0.099 + 0.198 * unit(random), 9.0 + 0.3 * k - 0.1 * k * k, 0});
        const std::vector<VBVector> hull = ConvexHull(points, -5.0 + 10.0 * unit(random));
        VMPolygon* polygon = VMWorld::NewPolygon().release();
        for (const VBVector& corner : hull)
            polygon->Corners.push_back(AddVisVertex(world, corner));
        world.Polygons.Add(polygon);
    }
}

// A jittered grid sheet, loose triangles of every size, and portals of random position,
// orientation and size, some that do not cut, sides named from a small pool so that names
// repeat.
void AddRandomWorld(VMWorld& world, VBVisBuilder& builder, std::mt19937& random)
{
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const int columns = 2 + static_cast<int>(random() % 12);
    const int rows = 2 + static_cast<int>(random() % 12);
    const double step = 1.0 + 3.0 * unit(random);
    const auto at = [&](int c, int r) {
        return VBVector {-20 + c * step, -20 + r * step, 2.0 * std::sin(c * 0.7) + 0.3 * std::cos(r * 1.3)};
    };
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c)
            AddVisQuad(world, at(c, r), at(c + 1, r), at(c + 1, r + 1), at(c, r + 1));
    const int loose = static_cast<int>(random() % 200);
    for (int t = 0; t < loose; ++t) {
        const VBVector centre = RandomPoint(random, 25);
        const double size = std::pow(10.0, -1.5 + 3.0 * unit(random));
        AddVisTriangle(world, centre + RandomPoint(random, size), centre + RandomPoint(random, size),
                       centre + RandomPoint(random, size));
    }
    AddShelves(world, builder, random);
    const char* names[] = {"", "", "hall", "Hall", "kitchen", "outside"};
    const int portals = 1 + static_cast<int>(random() % 8);
    for (int p = 0; p < portals; ++p) {
        VBVector normal;
        VBVector across;
        VBVector up;
        RandomFrame(random, normal, across, up);
        const VBVector centre = RandomPoint(random, 20);
        const double width = 1.0 + 30.0 * unit(random);
        const double height = 1.0 + 30.0 * unit(random);
        VBPortal& portal = builder.AddPortal(4);
        portal.Corners = {centre - across * width - up * height, centre + across * width - up * height,
                          centre + across * width + up * height, centre - across * width + up * height};
        portal.Name = "portal" + std::to_string(p);
        portal.FrontName = names[random() % 6];
        portal.BackName = names[random() % 6];
        portal.CutGeometry = random() % 5 != 0;
    }
}

struct Snapshot {
    std::vector<std::array<float, 3>> Positions;
    std::vector<std::vector<const VMVertex*>> Corners;

    explicit Snapshot(const VMWorld& world)
    {
        for (const VMVertex* vertex : world.Vertices)
            Positions.push_back({vertex->Position[0], vertex->Position[1], vertex->Position[2]});
        for (const VMPolygon* polygon : world.Polygons)
            Corners.emplace_back(polygon->Corners.begin(), polygon->Corners.end());
    }
    bool operator==(const Snapshot& other) const
    {
        return Corners == other.Corners && Positions.size() == other.Positions.size() &&
               std::memcmp(Positions.data(), other.Positions.data(), Positions.size() * sizeof(Positions[0])) == 0;
    }
};

int32_t RootOf(const VBState& state, int32_t number)
{
    while (state.Polygons[static_cast<size_t>(number)].Source >= 0)
        number = state.Polygons[static_cast<size_t>(number)].Source;
    return number;
}

bool DerivesFromCopy(const VBState& state, int32_t number)
{
    for (; number >= 0; number = state.Polygons[static_cast<size_t>(number)].Source)
        if (state.Polygons[static_cast<size_t>(number)].Copy)
            return true;
    return false;
}

TEST(VisBuilderProperties, RandomWorldsKeepAreaGeometryAndConnectedAreas)
{
    for (uint32_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        VMWorld world;
        VBVisBuilder builder;
        AddRandomWorld(world, builder, random);
        const int mode = static_cast<int>(random() % 5);
        const Snapshot before(world);
        KestrelReportMessage report;
        builder.SetPolygons(world);
        const int result = builder.Build(mode, false, {}, report);
        if (result == 1)
            builder.ExportToWorld(world);
        ASSERT_TRUE(Snapshot(world) == before) << "the world's geometry changed";
        EXPECT_TRUE(Validate(world).empty());

        const VBState& state = builder.State();
        // Every listed polygon once; the pieces of each world polygon (copies aside) cover it.
        std::set<int32_t> listed(state.List.begin(), state.List.end());
        ASSERT_EQ(listed.size(), state.List.size());
        std::map<int32_t, double> pieceArea;
        for (const int32_t number : state.List)
            if (!DerivesFromCopy(state, number)) {
                const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
                pieceArea[RootOf(state, number)] += FanArea(state.CornersOf(polygon), polygon.CornerCount);
            }
        ASSERT_EQ(pieceArea.size(), static_cast<size_t>(world.Polygons.Count())) << "a world polygon was lost";
        for (const auto& [root, area] : pieceArea) {
            const VBPolygon& original = state.Polygons[static_cast<size_t>(root)];
            const double expected = FanArea(state.CornersOf(original), original.CornerCount);
            EXPECT_NEAR(area, expected, 1e-9 * expected + 1e-10) << "world polygon " << root;
        }
        if (result != 1)
            continue;

        // Polygons that a fill reached: connected ones share their area, and each is reached
        // from a side of a portal leading into its area through polygons of that area.
        std::set<int32_t> floating(state.Floating.begin(), state.Floating.end());
        const auto connections = [&](int32_t number, auto visit) {
            const auto p = static_cast<size_t>(number);
            if (p + 1 < state.ConnectionStart.size())
                for (uint32_t k = state.ConnectionStart[p]; k < state.ConnectionStart[p + 1]; ++k)
                    visit(state.ConnectionTargets[k]);
        };
        std::vector<int32_t> stack;
        std::set<int32_t> reached;
        for (const VBPortalState& portal : state.Portals)
            for (const auto* touching : {&portal.FrontTouching, &portal.BackTouching})
                for (const int32_t number : *touching) {
                    const int32_t side = touching == &portal.FrontTouching ? portal.FrontArea : portal.BackArea;
                    if (state.Polygons[static_cast<size_t>(number)].Area == side && reached.insert(number).second)
                        stack.push_back(number);
                }
        while (!stack.empty()) {
            const int32_t number = stack.back();
            stack.pop_back();
            connections(number, [&](int32_t next) {
                if (state.Polygons[static_cast<size_t>(next)].Area == state.Polygons[static_cast<size_t>(number)].Area &&
                    reached.insert(next).second)
                    stack.push_back(next);
            });
        }
        int32_t withArea = 0;
        for (const int32_t number : state.List) {
            const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
            if (polygon.Area < 0)
                continue;
            ++withArea;
            ASSERT_LT(state.Areas[static_cast<size_t>(polygon.Area)].MergedInto, 0);
            // Floating polygons, and the copies the quick mode makes of them, came by other rules.
            if (floating.contains(number) || (polygon.Copy && floating.contains(polygon.Source)))
                continue;
            EXPECT_TRUE(reached.contains(number)) << "polygon " << number << " not reachable from its area's portals";
            connections(number, [&](int32_t next) {
                if (!floating.contains(next)) {
                    EXPECT_EQ(state.Polygons[static_cast<size_t>(next)].Area, polygon.Area);
                }
            });
        }
        int32_t elements = 0;
        for (const VBArea& area : state.Areas)
            elements += area.Elements;
        EXPECT_EQ(elements, withArea);
    }
}

// Rooms in a row along x, each a closed box with door holes in its end walls; between two
// rooms a tunnel through the wall, cut half way by a portal a little larger than the opening;
// props standing in the rooms.
void AddRoomsWorld(VMWorld& world, VBVisBuilder& builder, std::mt19937& random, int rooms)
{
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const double depth = 8.0 + 8.0 * unit(random);
    const double height = 4.0 + 4.0 * unit(random);
    const double wall = 0.5 + unit(random);
    const double doorLow = 1.0 + unit(random) * (depth - 4.0);
    const double doorHigh = doorLow + 1.5 + unit(random);
    const double doorTop = 2.0 + unit(random) * (height - 2.5);
    // The end wall at x with a hole from doorLow to doorHigh (y) and 0 to doorTop (z), facing
    // into the room on the side facing says.
    const auto endWall = [&](double x, bool hole) {
        if (!hole) {
            AddVisQuad(world, {x, 0, 0}, {x, depth, 0}, {x, depth, height}, {x, 0, height});
            return;
        }
        AddVisQuad(world, {x, 0, 0}, {x, doorLow, 0}, {x, doorLow, height}, {x, 0, height});
        AddVisQuad(world, {x, doorHigh, 0}, {x, depth, 0}, {x, depth, height}, {x, doorHigh, height});
        AddVisQuad(world, {x, doorLow, doorTop}, {x, doorHigh, doorTop}, {x, doorHigh, height}, {x, doorLow, height});
    };
    double x = 0.0;
    for (int room = 0; room < rooms; ++room) {
        const double length = 6.0 + 10.0 * unit(random);
        const double x0 = x;
        const double x1 = x + length;
        AddVisQuad(world, {x0, 0, 0}, {x1, 0, 0}, {x1, depth, 0}, {x0, depth, 0});
        AddVisQuad(world, {x0, 0, height}, {x0, depth, height}, {x1, depth, height}, {x1, 0, height});
        AddVisQuad(world, {x0, 0, 0}, {x0, 0, height}, {x1, 0, height}, {x1, 0, 0});
        AddVisQuad(world, {x0, depth, 0}, {x1, depth, 0}, {x1, depth, height}, {x0, depth, height});
        endWall(x0, room > 0);
        endWall(x1, room + 1 < rooms);
        const int props = static_cast<int>(random() % 4);
        for (int p = 0; p < props; ++p) {
            const VBVector at {x0 + 1 + unit(random) * (length - 2), 1 + unit(random) * (depth - 2), unit(random) * (height - 1)};
            AddVisTriangle(world, at, at + VBVector {0.5, 0, 0}, at + VBVector {0, 0.5, 0.5});
            AddVisTriangle(world, at, at + VBVector {0, 0.5, 0.5}, at + VBVector {0, 0, 0.5});
        }
        if (room + 1 < rooms) {
            const double t0 = x1;
            const double t1 = x1 + wall;
            AddVisQuad(world, {t0, doorLow, 0}, {t1, doorLow, 0}, {t1, doorHigh, 0}, {t0, doorHigh, 0});
            AddVisQuad(world, {t0, doorLow, doorTop}, {t0, doorHigh, doorTop}, {t1, doorHigh, doorTop}, {t1, doorLow, doorTop});
            AddVisQuad(world, {t0, doorLow, 0}, {t0, doorLow, doorTop}, {t1, doorLow, doorTop}, {t1, doorLow, 0});
            AddVisQuad(world, {t0, doorHigh, 0}, {t1, doorHigh, 0}, {t1, doorHigh, doorTop}, {t0, doorHigh, doorTop});
            AddPortalAcrossX(builder, (t0 + t1) / 2, doorLow - 0.2, -0.2, doorHigh + 0.2, doorTop + 0.2,
                             "door" + std::to_string(room));
            x = t1;
        }
    }
}

TEST(VisBuilderProperties, RandomRoomsBecomeOneAreaEachJoinedByTheirDoors)
{
    for (uint32_t seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const int rooms = 2 + static_cast<int>(random() % 5);
        VMWorld world;
        VBVisBuilder builder;
        AddRoomsWorld(world, builder, random, rooms);
        KestrelReportMessage report;
        builder.SetPolygons(world);
        ASSERT_EQ(builder.Build(static_cast<int>(random() % 5), false, {}, report), 1);
        builder.ExportToWorld(world);
        report.Finalize(SeverityInformation);

        EXPECT_TRUE(report.Entries().empty());
        ASSERT_EQ(world.VisAreas.Count(), rooms);
        ASSERT_EQ(world.Portals.Count(), 2 * (rooms - 1));
        // Every world polygon lies in exactly one area, except the tunnel floors, ceilings and
        // jambs that the portals cut, which lie in two neighbouring ones.
        for (const VMPolygon* polygon : world.Polygons) {
            ASSERT_GE(polygon->Owners.Count(), 1);
            ASSERT_LE(polygon->Owners.Count(), 2);
        }
        // A door's first record faces the room beyond it (larger x), the second the room before.
        for (int door = 0; door + 1 < rooms; ++door) {
            const VMVisPortal* front = world.Portals[2 * door];
            const VMVisPortal* back = world.Portals[2 * door + 1];
            EXPECT_EQ(front->Opposite, back);
            EXPECT_EQ(front->Front, back->Back);
            EXPECT_EQ(front->Back, back->Front);
            const float at = front->Corners[0]->Position[0];
            EXPECT_GT(front->Front->Box.Min[0] + front->Front->Box.Max[0], 2 * at);
            EXPECT_LT(front->Back->Box.Min[0] + front->Back->Box.Max[0], 2 * at);
        }
    }
}

} // namespace
