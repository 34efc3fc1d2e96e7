// Lightmap atlases of generated meshes of 100k and 1M triangles (a noisy cube-sphere, a terrain,
// a building kit of boxes), welded first as the static export does, against meshoptimizer's
// exact vertex remap of the same corner stream as the yardstick: the unwrap should take at most
// 50 times the remap at 100k triangles, and no more than 12 times as long at 1M as at 100k.
//
// UnwrapAtlas times CreateUVAtlas alone and reports the atlas's quality: charts, the largest
// chart stretch, utilisation (chart area over the area of the rectangle the charts occupy) and
// fill (chart area over the whole atlas). GenerateLightmapUVs times the whole world pass.
// Each figure is taken three times, one call each; read the minimum on a shared machine.

#include "GeneratedMeshes.h"
#include "geometry/AdjustTriangles.h"
#include "geometry/lightmap/CreateUVAtlas.h"
#include "geometry/lightmap/GenerateLightmapUVs.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <meshoptimizer.h>

#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace {

enum MeshKind { CubeSphere = 0, Terrain = 1, BoxKit = 2 };

constexpr float WeldEpsVert = 0.001f;
constexpr float WeldEpsUV = 0.0001f;
constexpr float MaxStretch = 0.1f;

const HarvestedMesh& Mesh(int triangles, int kind)
{
    static std::map<std::pair<int, int>, HarvestedMesh> cache;
    auto [it, added] = cache.try_emplace({triangles, kind});
    if (added) {
        it->second = kind == CubeSphere ? MakeNoisyCubeSphere(triangles, 7)
                     : kind == Terrain  ? MakeNoisyTerrain(triangles, 5)
                                        : MakeBoxKit(triangles, 3);
    }
    return it->second;
}

std::unique_ptr<VMWorld> WeldedWorld(const HarvestedMesh& mesh)
{
    std::unique_ptr<VMWorld> world = MakeHarvestedWorld(mesh);
    AdjustTriangles(*world, WeldEpsVert, WeldEpsUV, true);
    return world;
}

// The welded mesh as the atlas takes it.
struct IndexedMesh {
    std::vector<float> Positions;
    std::vector<uint32_t> Indices;
};

IndexedMesh Indexed(VMWorld& world)
{
    IndexedMesh mesh;
    world.Enumerate();
    for (const VMVertex* vertex : world.Vertices)
        mesh.Positions.insert(mesh.Positions.end(), std::begin(vertex->Position), std::end(vertex->Position));
    for (const VMPolygon* polygon : world.Polygons) {
        for (const VMVertex* corner : polygon->Corners)
            mesh.Indices.push_back(corner->Index);
    }
    return mesh;
}

void ReturnFreedMemory()
{
    malloc_trim(0);
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"triangles", "mesh"});
    for (int kind : {CubeSphere, Terrain, BoxKit}) {
        benchmark->Args({100000, kind});
        benchmark->Args({1000000, kind});
    }
    benchmark->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(3)->ReportAggregatesOnly(true);
    benchmark->ComputeStatistics("min", [](const std::vector<double>& runs) {
        return *std::min_element(runs.begin(), runs.end());
    });
}

void MeshoptRemapOfLightmapMeshes(benchmark::State& state)
{
    const HarvestedMesh& mesh = Mesh(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    std::vector<unsigned int> remap(mesh.Corners.size());
    for (auto _ : state) {
        state.PauseTiming();
        ReturnFreedMemory();
        state.ResumeTiming();
        benchmark::DoNotOptimize(meshopt_generateVertexRemap(remap.data(), nullptr, mesh.Corners.size(),
                                                             mesh.Corners.data(), mesh.Corners.size(),
                                                             sizeof(HarvestedCorner)));
    }
    state.SetItemsProcessed(state.iterations() * mesh.TriangleCount());
}

void UnwrapAtlas(benchmark::State& state)
{
    const HarvestedMesh& harvested = Mesh(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    std::unique_ptr<VMWorld> world = WeldedWorld(harvested);
    const IndexedMesh mesh = Indexed(*world);
    world.reset();
    UVAtlasParams params;
    params.MaxStretch = MaxStretch;
    UVAtlas atlas;
    for (auto _ : state) {
        state.PauseTiming();
        atlas = UVAtlas{};
        ReturnFreedMemory();
        state.ResumeTiming();
        benchmark::DoNotOptimize(CreateUVAtlas(mesh.Positions, mesh.Indices, params, atlas));
    }
    double area = 0.0;
    float low[2] = {1.0f, 1.0f};
    float high[2] = {0.0f, 0.0f};
    for (size_t corner = 0; corner < atlas.Indices.size(); corner += 3) {
        const float* a = &atlas.UVs[2 * atlas.Indices[corner]];
        const float* b = &atlas.UVs[2 * atlas.Indices[corner + 1]];
        const float* c = &atlas.UVs[2 * atlas.Indices[corner + 2]];
        area += 0.5 * ((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]));
        for (const float* p : {a, b, c}) {
            for (int k = 0; k < 2; ++k) {
                low[k] = std::min(low[k], p[k]);
                high[k] = std::max(high[k], p[k]);
            }
        }
    }
    state.counters["charts"] = atlas.ChartCount;
    state.counters["stretch"] = atlas.StretchReached;
    state.counters["utilisation"] = area / ((high[0] - low[0]) * (high[1] - low[1]));
    state.counters["fill"] = area;
    state.SetItemsProcessed(state.iterations() * harvested.TriangleCount());
}

void GenerateLightmapUVsPass(benchmark::State& state)
{
    const HarvestedMesh& harvested = Mesh(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<VMWorld> world = WeldedWorld(harvested);
        ReturnFreedMemory();
        state.ResumeTiming();
        benchmark::DoNotOptimize(GenerateLightmapUVs(*world, LightmapAtlasSize, MaxStretch, nullptr));
        state.PauseTiming();
        world.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * harvested.TriangleCount());
}

}

BENCHMARK(MeshoptRemapOfLightmapMeshes)->Apply(Sizes);
BENCHMARK(UnwrapAtlas)->Apply(Sizes);
BENCHMARK(GenerateLightmapUVsPass)->Apply(Sizes);
