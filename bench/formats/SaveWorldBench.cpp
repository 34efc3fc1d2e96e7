// The static mesh and collision mesh writers on a world of about one million triangles: a grid
// of 708 x 708 quads, two triangles each, in one material, as polygons (one batch that the
// shadow range forces to be split) and as tri-lists of 682 triangles (the stripper's batches).

#include "formats/SaveCollisionMesh.h"
#include "formats/SaveWorld.h"
#include "formats/chunk/VFileStreamProvider.h"
#include "formats/chunk/VMemoryStreamProvider.h"
#include "base/FileSystem.h"
#include "base/Path.h"
#include "model/VMWorld.h"

#include <benchmark/benchmark.h>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>

#include <chrono>
#include <filesystem>
#include <memory>
#include <random>
#include <string>

namespace {

constexpr int GridSize = 708;
constexpr int TriListTriangles = 682;

std::unique_ptr<VMWorld> MakeGridWorld(bool asTriLists)
{
    auto world = std::make_unique<VMWorld>();
    auto owned = VMMeshBase::NewMaterial();
    VMMaterial* material = owned.get();
    material->Name = "ground";
    world->Materials.Add(std::move(owned));
    world->Vertices.Reserve((GridSize + 1) * (GridSize + 1));
    for (int y = 0; y <= GridSize; ++y) {
        for (int x = 0; x <= GridSize; ++x) {
            auto vertex = VMWorld::NewVertex();
            vertex->Position[0] = static_cast<float>(x);
            vertex->Position[1] = static_cast<float>(y);
            vertex->Normal[2] = 1.0f;
            vertex->BaseUV[0] = static_cast<float>(x) / GridSize;
            vertex->BaseUV[1] = static_cast<float>(y) / GridSize;
            world->Bounds.Grow(vertex->Position);
            world->Vertices.Add(std::move(vertex));
        }
    }
    VMTriList* triList = nullptr;
    auto addTriangle = [&](int a, int b, int c) {
        if (!asTriLists) {
            auto polygon = VMWorld::NewTriangle(world->Vertices[a], world->Vertices[b], world->Vertices[c]);
            polygon->SetMaterial(material);
            world->Polygons.Add(std::move(polygon));
            return;
        }
        if (triList == nullptr || triList->TriangleCount() == TriListTriangles) {
            auto fresh = VMWorld::NewTriList();
            fresh->SetMaterial(material);
            triList = fresh.get();
            world->TriLists.Add(std::move(fresh));
        }
        triList->Corners.insert(triList->Corners.end(), {world->Vertices[a], world->Vertices[b], world->Vertices[c]});
    };
    for (int y = 0; y < GridSize; ++y) {
        for (int x = 0; x < GridSize; ++x) {
            const int a = y * (GridSize + 1) + x;
            addTriangle(a, a + 1, a + GridSize + 2);
            addTriangle(a, a + GridSize + 2, a + GridSize + 1);
        }
    }
    return world;
}

double ResidentMiB()
{
    long pages = 0;
    long resident = 0;
    if (std::FILE* statm = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(statm, "%ld %ld", &pages, &resident) != 2)
            resident = 0;
        std::fclose(statm);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

void ReportPeakMemory(benchmark::State& state)
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peak_rss_MiB"] = static_cast<double>(usage.ru_maxrss) / 1024.0;
    state.counters["triangles"] = 2.0 * GridSize * GridSize;
}

void SaveWorldBench(benchmark::State& state)
{
    const auto world = MakeGridWorld(state.range(0) != 0);
    state.counters["world_rss_MiB"] = ResidentMiB();
    VMemoryStreamProvider streams;
    VSaveParams params;
    params.Streams = &streams;
    params.Console = [](const std::string&) {};
    for (auto _ : state) {
        if (!SaveWorld(*world, "world.qmesh", params))
            state.SkipWithError("SaveWorld failed");
    }
    state.counters["file_MiB"] = static_cast<double>(streams.FindFile("world.qmesh")->size()) / (1024.0 * 1024.0);
    ReportPeakMemory(state);
}
BENCHMARK(SaveWorldBench)->ArgName("trilists")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void SaveCollisionMeshBench(benchmark::State& state)
{
    const auto world = MakeGridWorld(false);
    VMemoryStreamProvider streams;
    VSaveParams params;
    params.Streams = &streams;
    for (auto _ : state) {
        if (!SaveCollisionMesh(*world, "world.qcolmesh", params))
            state.SkipWithError("SaveCollisionMesh failed");
    }
    ReportPeakMemory(state);
}
BENCHMARK(SaveCollisionMeshBench)->Unit(benchmark::kMillisecond);

// The static mesh writer to the disk beside its floor: one write of as many bytes to the same
// place. Both figures are per call; floor_x is their ratio, the target being at most 3.
void SaveWorldToDiskBench(benchmark::State& state)
{
    const auto world = MakeGridWorld(state.range(0) != 0);
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("kestrel_save_bench_" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder);
    const std::string target = FromNativePath((folder / "world.qmesh").string());
    VSaveParams params;
    params.Streams = &DefaultChunkStreamProvider();
    params.Console = [](const std::string&) {};
    double saveSeconds = 0.0;
    double floorSeconds = 0.0;
    for (auto _ : state) {
        auto start = std::chrono::steady_clock::now();
        if (!SaveWorld(*world, target, params))
            state.SkipWithError("SaveWorld failed");
        saveSeconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        const std::string bytes(std::filesystem::file_size(folder / "world.qmesh"), 'k');
        start = std::chrono::steady_clock::now();
        if (!WriteFileAtomically(FromNativePath((folder / "floor.bin").string()), bytes))
            state.SkipWithError("the write failed");
        floorSeconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    state.counters["save_ms"] = benchmark::Counter(saveSeconds * 1000.0, benchmark::Counter::kAvgIterations);
    state.counters["one_write_ms"] = benchmark::Counter(floorSeconds * 1000.0, benchmark::Counter::kAvgIterations);
    state.counters["floor_x"] = saveSeconds / floorSeconds;
    ReportPeakMemory(state);
    std::error_code error;
    std::filesystem::remove_all(folder, error);
}
BENCHMARK(SaveWorldToDiskBench)->ArgName("trilists")->Arg(0)->Arg(1)->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace
