// The whole static mesh export of a generated scene of about a million triangles, from building
// the scene in the stand-in to the files on disk, through the translator's writer in batch mode.
// Peak memory is the process's resident high-water mark.

#include "../common/TiledGridScene.h"
#include "../common/WideTerrainScene.h"
#include "TimedExport.h"

#include <benchmark/benchmark.h>

#include <filesystem>

namespace {

constexpr ExportPhase kPhases[] = {
    {"precalculation_s", "Precalculation phase...\r\n"},
    {"harvest_s", "Calculating meshes and textures...\r\n"},
    {"centre_scale_s", "Centering Mesh...\r\n"},
    {"materials_weld_s", "Checking materials...\r\n"},
    {"strips_s", "Generating triangle strips...\r\n"},
    {"sort_s", "Sorting primitivies...\r\n"},
    {"enumerate_s", "Final enumeration...\r\n"},
    {"save_s", "Saving to"},
    {"close_s", "Finished!\r\n"},
};

void StaticExportOfAMillionTriangles(benchmark::State& state)
{
    const LoadedBenchPlugin plugin("kestrel_static_export_bench");
    const std::filesystem::path target = plugin.Folder() / "million.qmesh";
    for (auto _ : state) {
        const BenchClock::time_point start = BenchClock::now();
        BuildTiledGridScene();
        RunTimedExport(state, "Zephra_Static_Mesh", target, kPhases, start);
    }
    state.counters["triangles"] = static_cast<double>(TiledGridTriangleCount);
    state.counters["file_MiB"] = static_cast<double>(std::filesystem::file_size(target)) / 1048576.0;
    state.counters["peak_rss_MiB"] = PeakResidentMiB();
}

// One terrain 520 m wide, so that the stripper's cubes split every material into thousands of
// batches: run one size at a time for its peak.
void StaticExportOfAWideTerrain(benchmark::State& state)
{
    const LoadedBenchPlugin plugin("kestrel_wide_export_bench");
    const std::filesystem::path target = plugin.Folder() / "wide.qmesh";
    int triangles = 0;
    for (auto _ : state) {
        const BenchClock::time_point start = BenchClock::now();
        triangles = BuildWideTerrainScene(static_cast<int>(state.range(0)));
        RunTimedExport(state, "Zephra_Static_Mesh", target, kPhases, start);
    }
    state.counters["triangles"] = triangles;
    state.counters["file_MiB"] = static_cast<double>(std::filesystem::file_size(target)) / 1048576.0;
    state.counters["peak_rss_MiB"] = PeakResidentMiB();
}

} // namespace

BENCHMARK(StaticExportOfAMillionTriangles)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(StaticExportOfAWideTerrain)
    ->Arg(100000)
    ->Arg(1000000)
    ->Arg(4000000)
    ->ArgName("tris")
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kSecond);
