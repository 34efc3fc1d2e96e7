// StripWorld on generated meshes of 100k, 1M and 4M triangles, against meshoptimizer's
// stripifier on the same index lists. The worlds are welded, as the stripper receives them
// after AdjustTriangles: a noisy terrain and a closed torus, one material, no vis areas.
// Run one size at a time (--benchmark_filter) to read the peak memory of that size alone.

#include "geometry/StripWorld.h"
#include "model/VMWorld.h"

#include <benchmark/benchmark.h>
#include <meshoptimizer.h>

#include <cmath>
#include <cstdint>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

struct IndexedMesh {
    std::vector<float> Positions;
    std::vector<uint32_t> Indices;
    size_t VertexCount() const { return Positions.size() / 3; }
};

// A grid of two triangles per cell over (columns + 1) x (rows + 1) vertices; with wrap, the last
// column and row meet the first, closing the grid into a torus.
IndexedMesh MakeGrid(int columns, int rows, bool wrap)
{
    IndexedMesh mesh;
    const int vertexColumns = wrap ? columns : columns + 1;
    const int vertexRows = wrap ? rows : rows + 1;
    std::mt19937 random(7);
    std::uniform_real_distribution<float> noise(-0.4f, 0.4f);
    mesh.Positions.reserve(static_cast<size_t>(vertexColumns) * vertexRows * 3);
    for (int row = 0; row < vertexRows; ++row) {
        for (int column = 0; column < vertexColumns; ++column) {
            if (wrap) {
                const double u = 2.0 * M_PI * column / columns;
                const double v = 2.0 * M_PI * row / rows;
                const double ring = 1000.0 + 300.0 * std::cos(v);
                mesh.Positions.push_back(static_cast<float>(ring * std::cos(u)));
                mesh.Positions.push_back(static_cast<float>(ring * std::sin(u)));
                mesh.Positions.push_back(static_cast<float>(300.0 * std::sin(v)));
            } else {
                mesh.Positions.push_back(static_cast<float>(column) * 10.0f);
                mesh.Positions.push_back(static_cast<float>(row) * 10.0f);
                mesh.Positions.push_back(30.0f * std::sin(column * 0.05f) * std::cos(row * 0.07f) + noise(random));
            }
        }
    }
    const auto at = [&](int column, int row) {
        return static_cast<uint32_t>((row % vertexRows) * vertexColumns + column % vertexColumns);
    };
    mesh.Indices.reserve(static_cast<size_t>(columns) * rows * 6);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            mesh.Indices.insert(mesh.Indices.end(), {at(column, row), at(column + 1, row), at(column + 1, row + 1)});
            mesh.Indices.insert(mesh.Indices.end(), {at(column, row), at(column + 1, row + 1), at(column, row + 1)});
        }
    }
    return mesh;
}

const IndexedMesh& MeshFor(int triangles, bool closed)
{
    static std::vector<std::pair<std::pair<int, bool>, std::unique_ptr<IndexedMesh>>> cache;
    for (const auto& [key, mesh] : cache)
        if (key == std::make_pair(triangles, closed))
            return *mesh;
    const int side = static_cast<int>(std::lround(std::sqrt(triangles / 2.0)));
    cache.emplace_back(std::make_pair(triangles, closed), std::make_unique<IndexedMesh>(MakeGrid(side, side, closed)));
    return *cache.back().second;
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
    const int triangles = static_cast<int>(state.range(0));
    const bool closed = state.range(1) != 0;
    const IndexedMesh& mesh = MeshFor(triangles, closed);
    StripParams params;
    params.StripPerformance = method;
    params.MaxStripSize = 0.0f;
    size_t triLists = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<VMWorld> world = MakeWorld(mesh);
        state.ResumeTiming();
        benchmark::DoNotOptimize(StripWorld(*world, params));
        state.PauseTiming();
        triLists = static_cast<size_t>(world->TriLists.Count());
        world.reset();
        state.ResumeTiming();
    }
    state.counters["triangles"] = static_cast<double>(mesh.Indices.size() / 3);
    state.counters["trilists"] = static_cast<double>(triLists);
    state.counters["peak_MB"] = PeakResidentMegabytes();
}

void StripWorldLists(benchmark::State& state) { RunStripWorld(state, 4); }
void StripWorldLookAhead(benchmark::State& state) { RunStripWorld(state, 3); }

void MeshoptStripify(benchmark::State& state)
{
    const IndexedMesh& mesh = MeshFor(static_cast<int>(state.range(0)), state.range(1) != 0);
    std::vector<uint32_t> strip(meshopt_stripifyBound(mesh.Indices.size()));
    size_t stripSize = 0;
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
    for (const int closed : {0, 1})
        for (const int triangles : {100000, 1000000, 4000000})
            benchmark->Args({triangles, closed});
    benchmark->ArgNames({"tris", "closed"})->Unit(benchmark::kMillisecond)->Iterations(2);
}

} // namespace

BENCHMARK(MeshoptStripify)->Apply(AllSizes);
BENCHMARK(StripWorldLists)->Apply(AllSizes);
BENCHMARK(StripWorldLookAhead)
    ->Args({100000, 0})
    ->Args({100000, 1})
    ->ArgNames({"tris", "closed"})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
