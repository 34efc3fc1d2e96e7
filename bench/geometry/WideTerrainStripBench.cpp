// Stripping a terrain far wider than the stripper's cube: 100k, 1M and 4M triangles of shared
// vertices spread over 52000 units (520 m in centimetres) with four materials in patches, under
// the default cube of 1024, so that every material's triangles fill about 2500 cubes. The
// gathering runs alone (its batches are taken and given back as the stripper does, without
// stripping them), then the whole StripWorld as the static export runs it (lists, method 4).
// Every iteration starts from a fresh world.

#include "geometry/StripGathering.h"
#include "geometry/StripWorld.h"
#include "model/VMWorld.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr float TerrainWidth = 52000.0f;
constexpr float CubeSize = 1024.0f;
constexpr int MaterialCount = 4;
// Quads per side of a material patch.
constexpr int PatchQuads = 37;

std::unique_ptr<VMWorld> MakeWideTerrain(int triangleCount)
{
    const int side = std::max(1, static_cast<int>(std::sqrt(triangleCount / 2.0)));
    const float step = TerrainWidth / static_cast<float>(side);
    auto world = std::make_unique<VMWorld>();
    std::vector<VMMaterial*> materials;
    for (int k = 0; k < MaterialCount; ++k) {
        materials.push_back(VMWorld::NewMaterial().release());
        world->Materials.Add(materials.back());
    }
    world->Vertices.Reserve((side + 1) * (side + 1));
    for (int row = 0; row <= side; ++row)
        for (int column = 0; column <= side; ++column) {
            VMVertex* vertex = VMWorld::NewVertex().release();
            vertex->Position[0] = step * static_cast<float>(column);
            vertex->Position[1] = 300.0f * std::sin(0.0007f * vertex->Position[0]) * std::cos(0.0005f * step * static_cast<float>(row));
            vertex->Position[2] = step * static_cast<float>(row);
            world->Vertices.Add(vertex);
        }
    const auto at = [&](int column, int row) { return world->Vertices.Get(row * (side + 1) + column); };
    world->Polygons.Reserve(2 * side * side);
    for (int row = 0; row < side; ++row)
        for (int column = 0; column < side; ++column) {
            VMMaterial* material = materials[static_cast<size_t>((column / PatchQuads + 3 * (row / PatchQuads)) % MaterialCount)];
            for (const auto& [a, b, c] : {std::array{at(column, row), at(column, row + 1), at(column + 1, row)},
                                          std::array{at(column + 1, row), at(column, row + 1), at(column + 1, row + 1)}}) {
                VMPolygon* triangle = VMWorld::NewTriangle(a, b, c).release();
                triangle->SetMaterial(material);
                world->Polygons.Add(triangle);
            }
        }
    return world;
}

// The stripper's walk over buckets and doubled cubes, without stripping what it gathers.
int GatherAll(const VMWorld& world)
{
    StripGathering gathering(world, false);
    StripBatch batch;
    int batches = 0;
    for (float cube = CubeSize;; cube *= 2.0f) {
        bool someDidNotFit = false;
        for (int bucket = 0; bucket < gathering.BucketCount(); ++bucket) {
            gathering.BeginBucket(bucket);
            for (;;) {
                bool cubeFull = false;
                const bool found = gathering.Gather(bucket, cube, batch, cubeFull);
                someDidNotFit = someDidNotFit || cubeFull;
                if (!found)
                    break;
                if (cubeFull && batch.Count() == 1) {
                    gathering.GiveBack(bucket, batch.Triangles.front());
                    break;
                }
                ++batches;
            }
        }
        if (!someDidNotFit || !std::isfinite(cube))
            return batches;
    }
}

void StripGatheringWide(benchmark::State& state)
{
    const std::unique_ptr<VMWorld> world = MakeWideTerrain(static_cast<int>(state.range(0)));
    int batches = 0;
    for (auto _ : state)
        batches = GatherAll(*world);
    state.counters["triangles"] = world->Polygons.Count();
    state.counters["batches"] = batches;
}

void StripWorldWide(benchmark::State& state)
{
    StripParams params;
    params.StripPerformance = 4;
    params.MaxStripSize = CubeSize;
    int triangles = 0;
    int triLists = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<VMWorld> world = MakeWideTerrain(static_cast<int>(state.range(0)));
        triangles = world->Polygons.Count();
        state.ResumeTiming();
        benchmark::DoNotOptimize(StripWorld(*world, params));
        state.PauseTiming();
        triLists = world->TriLists.Count();
        world.reset();
        state.ResumeTiming();
    }
    state.counters["triangles"] = triangles;
    state.counters["trilists"] = triLists;
}

void AllSizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(100000)->Arg(1000000)->Arg(4000000)->ArgName("tris")->Unit(benchmark::kMillisecond)->Iterations(1);
}

} // namespace

BENCHMARK(StripGatheringWide)->Apply(AllSizes);
BENCHMARK(StripWorldWide)->Apply(AllSizes);
