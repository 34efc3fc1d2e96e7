// AdjustTriangles and FixID on harvested-style meshes of 100k, 1M and 4M triangles, against
// meshoptimizer's exact vertex remap of the same corner stream as the yardstick. The ratios
// between them hold on any machine. Run one size at a time (--benchmark_filter) to read the
// peak memory of that size alone.
//
// Each figure is taken five times, one call each; the minimum is the run least disturbed by
// the rest of the machine, the median the typical one. On a shared machine, add
// --benchmark_enable_random_interleaving=true so that a noisy minute does not fall on one size.

#include "GeneratedMeshes.h"
#include "geometry/AdjustTriangles.h"
#include "geometry/FixID.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <meshoptimizer.h>

#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr float SmallEpsVert = 0.001f;
constexpr float EpsUV = 0.0001f;

enum MeshKind { Terrain = 0, Closed = 1 };

// An export calls these passes once, on a heap that holds no freed scratch of theirs. Without this,
// glibc hands a repeated call the pages it freed last time when its blocks are below the mmap
// threshold (up to 32 MB) but fresh pages above it, which flatters the smaller sizes and skews the
// scaling. Called while timing is paused, before every timed call of a pass or a yardstick.
void ReturnFreedMemory()
{
    malloc_trim(0);
}

const HarvestedMesh& Mesh(int triangles, int kind)
{
    static std::map<std::pair<int, int>, HarvestedMesh> cache;
    auto [it, added] = cache.try_emplace({triangles, kind});
    if (added)
        it->second = kind == Terrain ? MakeNoisyTerrain(triangles, 5) : MakeClosedMesh(triangles);
    return it->second;
}

void Adjust(benchmark::State& state, float epsVert)
{
    const HarvestedMesh& mesh = Mesh(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    int vertices = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<VMWorld> world = MakeHarvestedWorld(mesh);
        ReturnFreedMemory();
        state.ResumeTiming();
        benchmark::DoNotOptimize(AdjustTriangles(*world, epsVert, EpsUV, true));
        state.PauseTiming();
        vertices = world->Vertices.Count();
        world.reset();
        state.ResumeTiming();
    }
    state.counters["vertices"] = vertices;
    state.SetItemsProcessed(state.iterations() * mesh.TriangleCount());
}

void AdjustTrianglesExact(benchmark::State& state) { Adjust(state, 0.0f); }
void AdjustTrianglesSmallEps(benchmark::State& state) { Adjust(state, SmallEpsVert); }

void FixIDHarvested(benchmark::State& state)
{
    const HarvestedMesh& mesh = Mesh(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    std::unique_ptr<VMWorld> world = MakeHarvestedWorld(mesh);
    int links = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ReturnFreedMemory();
        state.ResumeTiming();
        benchmark::DoNotOptimize(links = FixID(*world, 0.0f));
    }
    state.counters["links"] = links;
    state.SetItemsProcessed(state.iterations() * mesh.TriangleCount());
}

void MeshoptExactRemap(benchmark::State& state)
{
    const HarvestedMesh& mesh = Mesh(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    std::vector<unsigned int> remap(mesh.Corners.size());
    size_t unique = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ReturnFreedMemory();
        state.ResumeTiming();
        unique = meshopt_generateVertexRemap(remap.data(), nullptr, mesh.Corners.size(), mesh.Corners.data(),
                                             mesh.Corners.size(), sizeof(HarvestedCorner));
        benchmark::DoNotOptimize(remap.data());
    }
    state.counters["vertices"] = static_cast<double>(unique);
    state.SetItemsProcessed(state.iterations() * mesh.TriangleCount());
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"triangles", "closed"});
    for (int kind : {Terrain, Closed}) {
        benchmark->Args({100000, kind});
        benchmark->Args({1000000, kind});
        benchmark->Args({4000000, kind});
    }
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5)->ReportAggregatesOnly(true);
    benchmark->ComputeStatistics("min", [](const std::vector<double>& runs) {
        return *std::min_element(runs.begin(), runs.end());
    });
}

}

BENCHMARK(MeshoptExactRemap)->Apply(Sizes);
BENCHMARK(AdjustTrianglesExact)->Apply(Sizes);
BENCHMARK(AdjustTrianglesSmallEps)->Apply(Sizes);
BENCHMARK(FixIDHarvested)->Apply(Sizes);
