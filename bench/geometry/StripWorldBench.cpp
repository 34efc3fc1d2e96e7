// StripWorld on generated meshes of 100k, 1M and 4M triangles, against meshoptimizer's
// stripifier on the same index lists. The stripper receives what AdjustTriangles leaves: the
// harvested-style terrain and torus are welded once with EpsVert 0, and every iteration starts
// from a fresh world made from that welded index list (UV seams stay apart). One material, no
// vis areas. The peak counter is the resident peak while StripWorld runs, its input world
// included.

#include "GeneratedMeshes.h"
#include "geometry/AdjustTriangles.h"
#include "geometry/StripWorld.h"
#include "model/VMWorld.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <meshoptimizer.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

enum MeshKind { Terrain = 0, Closed = 1 };

struct IndexedMesh {
    std::vector<float> Positions;
    std::vector<uint32_t> Indices;
    size_t VertexCount() const { return Positions.size() / 3; }
};

IndexedMesh Welded(const HarvestedMesh& harvested)
{
    std::unique_ptr<VMWorld> world = MakeHarvestedWorld(harvested);
    AdjustTriangles(*world, 0.0f, 0.0f, true);
    IndexedMesh mesh;
    for (const VMVertex* vertex : world->Vertices)
        mesh.Positions.insert(mesh.Positions.end(), vertex->Position, vertex->Position + 3);
    for (const VMPolygon* polygon : world->Polygons)
        for (const VMVertex* corner : polygon->Corners)
            mesh.Indices.push_back(corner->Index);
    return mesh;
}

const IndexedMesh& MeshFor(int triangles, int kind)
{
    static std::map<std::pair<int, int>, IndexedMesh> cache;
    auto [it, added] = cache.try_emplace({triangles, kind});
    if (added)
        it->second = Welded(kind == Terrain ? MakeNoisyTerrain(triangles, 5) : MakeClosedMesh(triangles));
    return it->second;
}

std::unique_ptr<VMWorld> MakeWorld(const IndexedMesh& mesh)
{
    auto world = std::make_unique<VMWorld>();
    VMMaterial* material = VMWorld::NewMaterial().release();
    world->Materials.Add(material);
    world->Vertices.Reserve(static_cast<int>(mesh.VertexCount()));
    for (size_t vertex = 0; vertex < mesh.VertexCount(); ++vertex) {
        VMVertex* record = VMWorld::NewVertex().release();
        for (int axis = 0; axis < 3; ++axis)
            record->Position[axis] = mesh.Positions[vertex * 3 + static_cast<size_t>(axis)];
        world->Vertices.Add(record);
    }
    world->Polygons.Reserve(static_cast<int>(mesh.Indices.size() / 3));
    for (size_t corner = 0; corner < mesh.Indices.size(); corner += 3) {
        VMPolygon* triangle = VMWorld::NewTriangle(world->Vertices.Get(static_cast<int>(mesh.Indices[corner])),
                                                   world->Vertices.Get(static_cast<int>(mesh.Indices[corner + 1])),
                                                   world->Vertices.Get(static_cast<int>(mesh.Indices[corner + 2])))
                                  .release();
        triangle->SetMaterial(material);
        world->Polygons.Add(triangle);
    }
    return world;
}

// Starts the peak count afresh from what is resident now, so that the peak belongs to what
// runs next.
void ResetPeakResident() { std::ofstream("/proc/self/clear_refs") << "5"; }

double PeakResidentMegabytes()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stod(line.substr(6)) / 1024.0;
    return 0.0;
}

void RunStripWorld(benchmark::State& state, int method)
{
    const IndexedMesh& mesh = MeshFor(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    // Welding the mesh left much freed memory resident; handed back, it no longer counts in the
    // peak, and StripWorld pays for fresh pages as it would in a fresh export.
    malloc_trim(0);
    StripParams params;
    params.StripPerformance = method;
    params.MaxStripSize = 0.0f;
    size_t triLists = 0;
    double peak = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<VMWorld> world = MakeWorld(mesh);
        ResetPeakResident();
        state.ResumeTiming();
        benchmark::DoNotOptimize(StripWorld(*world, params));
        state.PauseTiming();
        peak = std::max(peak, PeakResidentMegabytes());
        triLists = static_cast<size_t>(world->TriLists.Count());
        world.reset();
        state.ResumeTiming();
    }
    const double triangles = static_cast<double>(mesh.Indices.size() / 3);
    state.counters["triangles"] = triangles;
    state.counters["trilists"] = static_cast<double>(triLists);
    // The world itself is resident throughout: this is the peak of the whole process while
    // stripping, the input world included.
    state.counters["peak_MB"] = peak;
    state.counters["peak_B_per_tri"] = peak * 1048576.0 / triangles;
}

void StripWorldLists(benchmark::State& state) { RunStripWorld(state, 4); }
void StripWorldLookAhead(benchmark::State& state) { RunStripWorld(state, 3); }

void MeshoptStripify(benchmark::State& state)
{
    const IndexedMesh& mesh = MeshFor(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    std::vector<uint32_t> strip(meshopt_stripifyBound(mesh.Indices.size()));
    size_t stripSize = 0;
    ResetPeakResident();
    for (auto _ : state) {
        stripSize = meshopt_stripify(strip.data(), mesh.Indices.data(), mesh.Indices.size(), mesh.VertexCount(), ~0u);
        benchmark::DoNotOptimize(strip.data());
    }
    state.counters["triangles"] = static_cast<double>(mesh.Indices.size() / 3);
    state.counters["strip_indices"] = static_cast<double>(stripSize);
    state.counters["peak_MB"] = PeakResidentMegabytes();
}

void AllSizes(benchmark::internal::Benchmark* benchmark)
{
    for (const int kind : {Terrain, Closed})
        for (const int triangles : {100000, 1000000, 4000000})
            benchmark->Args({triangles, kind});
    benchmark->ArgNames({"tris", "closed"})->Unit(benchmark::kMillisecond)->Iterations(2);
}

} // namespace

BENCHMARK(MeshoptStripify)->Apply(AllSizes);
BENCHMARK(StripWorldLists)->Apply(AllSizes);
BENCHMARK(StripWorldLookAhead)
    ->Args({100000, Terrain})
    ->Args({100000, Closed})
    ->ArgNames({"tris", "closed"})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
