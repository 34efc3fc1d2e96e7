// The visibility builder on a row of 51 rooms joined by 50 door portals, 100k, 1M and 4M
// triangles in all: walls, floors and ceilings as grids of shared vertices, door tunnels that
// the portals cut, and a fifth of the triangles in small props standing free in the rooms,
// which the floating stage places. Each iteration runs what the pipeline runs: SetPolygons,
// Build and ExportToWorld on a fresh builder (the world is made once per size).

#include "geometry/visibility/VBVisBuilder.h"
#include "model/VMWorld.h"
#include "report/KestrelReportMessage.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <random>

namespace {

constexpr int Portals = 50;

struct RoomsWorld {
    std::unique_ptr<VMWorld> World = std::make_unique<VMWorld>();
    struct Door {
        double X;
        double Low[2];
        double High[2];
    };
    std::vector<Door> Doors;
};

class GridWriter {
public:
    explicit GridWriter(VMWorld& world) : m_world(world) {}

    // A grid of columns x rows cells over the parallelogram origin + u * i + v * j, leaving out
    // the cells for which skip(i, j) answers true.
    template <class Skip>
    void Add(const double origin[3], const double u[3], const double v[3], int columns, int rows, Skip skip)
    {
        std::vector<VMVertex*> vertices;
        for (int j = 0; j <= rows; ++j)
            for (int i = 0; i <= columns; ++i) {
                VMVertex* vertex = VMWorld::NewVertex().release();
                for (int axis = 0; axis < 3; ++axis)
                    vertex->Position[axis] = static_cast<float>(origin[axis] + u[axis] * i / columns + v[axis] * j / rows);
                m_world.Vertices.Add(vertex);
                vertices.push_back(vertex);
            }
        const auto at = [&](int i, int j) { return vertices[static_cast<size_t>(j * (columns + 1) + i)]; };
        for (int j = 0; j < rows; ++j)
            for (int i = 0; i < columns; ++i) {
                if (skip(i, j))
                    continue;
                m_world.Polygons.Add(VMWorld::NewTriangle(at(i, j), at(i + 1, j), at(i + 1, j + 1)));
                m_world.Polygons.Add(VMWorld::NewTriangle(at(i, j), at(i + 1, j + 1), at(i, j + 1)));
            }
    }
    void Add(const double origin[3], const double u[3], const double v[3], int columns, int rows)
    {
        Add(origin, u, v, columns, rows, [](int, int) { return false; });
    }

private:
    VMWorld& m_world;
};

RoomsWorld MakeRooms(int triangles)
{
    RoomsWorld rooms;
    VMWorld& world = *rooms.World;
    GridWriter grid(world);
    const int roomCount = Portals + 1;
    const double length = 1000.0;
    const double depth = 800.0;
    const double height = 400.0;
    const double wall = 40.0;
    // Cells per metre so that the shells take four fifths of the triangles.
    const double shellArea = 2 * length * depth + 2 * length * height + 2 * depth * height;
    const double cell = std::sqrt(shellArea * 2.0 * roomCount / (0.8 * triangles));
    const auto cells = [&](double extent) { return std::max(2, static_cast<int>(std::lround(extent / cell))); };
    const int depthCells = cells(depth);
    const int heightCells = cells(height);
    // The door takes the middle fifth of the depth and the lower two thirds of the height.
    const int doorFrom = depthCells * 2 / 5;
    const int doorTo = std::max(doorFrom + 1, depthCells * 3 / 5);
    const int doorTop = std::max(1, heightCells * 2 / 3);
    const double doorLow = depth * doorFrom / depthCells;
    const double doorHigh = depth * doorTo / depthCells;
    const double doorHeight = height * doorTop / heightCells;
    const auto inDoor = [&](int i, int j) { return i >= doorFrom && i < doorTo && j < doorTop; };
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const int propTriangles = triangles / 5 / roomCount;
    for (int room = 0; room < roomCount; ++room) {
        const double x0 = room * (length + wall);
        const double x1 = x0 + length;
        const double floor[3] = {x0, 0, 0}, alongX[3] = {length, 0, 0}, alongY[3] = {0, depth, 0},
                     alongZ[3] = {0, 0, height};
        const double ceiling[3] = {x0, 0, height}, farSide[3] = {x0, depth, 0}, endNear[3] = {x0, 0, 0},
                     endFar[3] = {x1, 0, 0};
        grid.Add(floor, alongX, alongY, cells(length), depthCells);
        grid.Add(ceiling, alongY, alongX, depthCells, cells(length));
        grid.Add(floor, alongZ, alongX, heightCells, cells(length));
        grid.Add(farSide, alongX, alongZ, cells(length), heightCells);
        grid.Add(endNear, alongZ, alongY, heightCells, depthCells,
                 [&](int i, int j) { return room > 0 && inDoor(j, i); });
        grid.Add(endFar, alongY, alongZ, depthCells, heightCells,
                 [&](int i, int j) { return room + 1 < roomCount && inDoor(i, j); });
        if (room + 1 < roomCount) {
            const double t0[3] = {x1, doorLow, 0}, across[3] = {wall, 0, 0}, width[3] = {0, doorHigh - doorLow, 0},
                         up[3] = {0, 0, doorHeight}, top[3] = {x1, doorLow, doorHeight}, jamb[3] = {x1, doorHigh, 0};
            grid.Add(t0, across, width, 4, doorTo - doorFrom);
            grid.Add(top, width, across, doorTo - doorFrom, 4);
            grid.Add(t0, up, across, doorTop, 4);
            grid.Add(jamb, across, up, 4, doorTop);
            rooms.Doors.push_back({x1 + wall / 2, {doorLow - 5, -5}, {doorHigh + 5, doorHeight + 5}});
        }
        // Props: closed little pyramids of four triangles, apart from everything.
        for (int p = 0; p < propTriangles / 4; ++p) {
            const double cx = x0 + 50 + unit(random) * (length - 100);
            const double cy = 50 + unit(random) * (depth - 100);
            const double cz = 20 + unit(random) * (height - 60);
            VMVertex* corners[4];
            const double offsets[4][3] = {{-10, -10, 0}, {10, -10, 0}, {0, 10, 0}, {0, 0, 15}};
            for (int k = 0; k < 4; ++k) {
                corners[k] = VMWorld::NewVertex().release();
                corners[k]->Position[0] = static_cast<float>(cx + offsets[k][0]);
                corners[k]->Position[1] = static_cast<float>(cy + offsets[k][1]);
                corners[k]->Position[2] = static_cast<float>(cz + offsets[k][2]);
                world.Vertices.Add(corners[k]);
            }
            world.Polygons.Add(VMWorld::NewTriangle(corners[0], corners[2], corners[1]));
            world.Polygons.Add(VMWorld::NewTriangle(corners[0], corners[1], corners[3]));
            world.Polygons.Add(VMWorld::NewTriangle(corners[1], corners[2], corners[3]));
            world.Polygons.Add(VMWorld::NewTriangle(corners[2], corners[0], corners[3]));
        }
    }
    return rooms;
}

RoomsWorld& RoomsFor(int triangles)
{
    static std::map<int, RoomsWorld> cache;
    auto [it, added] = cache.try_emplace(triangles);
    if (added)
        it->second = MakeRooms(triangles);
    return it->second;
}

void BuildVisibility(benchmark::State& state)
{
    RoomsWorld& rooms = RoomsFor(static_cast<int>(state.range(0)));
    VMWorld& world = *rooms.World;
    const int mode = static_cast<int>(state.range(1));
    int areas = 0;
    for (auto _ : state) {
        KestrelReportMessage report;
        VBVisBuilder builder;
        for (const RoomsWorld::Door& door : rooms.Doors) {
            VBPortal& portal = builder.AddPortal(4);
            portal.Corners = {{door.X, door.Low[0], door.Low[1]},
                              {door.X, door.High[0], door.Low[1]},
                              {door.X, door.High[0], door.High[1]},
                              {door.X, door.Low[0], door.High[1]}};
        }
        builder.SetPolygons(world);
        if (builder.Build(mode, false, {}, report) == 1)
            builder.ExportToWorld(world);
        state.PauseTiming();
        areas = world.VisAreas.Count();
        world.VisAreas.Clear();
        world.Portals.Clear();
        world.VisPlanes.Clear();
        state.ResumeTiming();
    }
    state.counters["triangles"] = world.Polygons.Count();
    state.counters["areas"] = areas;
    state.counters["ns_per_tri"] = benchmark::Counter(static_cast<double>(world.Polygons.Count()),
                                                      benchmark::Counter::kIsIterationInvariantRate |
                                                          benchmark::Counter::kInvert);
}

} // namespace

BENCHMARK(BuildVisibility)
    ->ArgsProduct({{100'000, 1'000'000, 4'000'000}, {VBModeWellConnected}})
    ->Args({1'000'000, VBModeIntersections})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(3)
    ->ReportAggregatesOnly(false);
