// The whole model export of the skinned grid of the model benchmarks at 1M and 4M triangles
// (100 joints, four influences per vertex), from building the scene in the stand-in to the files
// on disk, through the translator's writer in batch mode. Peak memory is the process's
// resident high-water mark, so run one size at a time (--benchmark_filter) to read it for that size.

#include "../common/SkinnedGridScene.h"
#include "TimedExport.h"

#include <benchmark/benchmark.h>

#include <filesystem>

namespace {

constexpr ExportPhase kPhases[] = {
    {"precalculation_s", "Precalculation phase...\r\n"},
    {"bind_pose_s", "Starting Model Export...\r\n"},
    {"harvest_s", "Mesh harvesting phase...\r\n"},
    {"limit_s", "Limiting blended vertex influences...\r\n"},
    {"bones_s", "Removing dead bones...\r\n"},
    {"bounds_encode_s", "Calculating global visibility bounding box\r\n"},
    {"centre_encode_s", "Centering mesh...\r\n"},
    {"enumerate_s", "Middle Enumeration...\r\n"},
    {"optimize_s", "Optimizing mesh"},
    {"materials_s", "Adjusting animations...\r\n"},
    {"sort_s", "Sorting primitives...\r\n"},
    {"save_s", "Saving model to"},
    {"free_s", "Model saved: "},
};

void ModelExportOfASkinnedMesh(benchmark::State& state)
{
    const LoadedBenchPlugin plugin("kestrel_model_export_bench", "// ExportBones : TRUE\r\n");
    const std::filesystem::path target = plugin.Folder() / "skinned.model";
    const int quadsX = static_cast<int>(state.range(0));
    const int quadsY = quadsX / 2;
    for (auto _ : state) {
        const BenchClock::time_point start = BenchClock::now();
        BuildSkinnedGridScene(quadsX, quadsY);
        RunTimedExport(state, "Zephra_Model_File", target, kPhases, start);
    }
    state.counters["triangles"] = 2.0 * quadsX * quadsY;
    state.counters["file_MiB"] = static_cast<double>(std::filesystem::file_size(target)) / 1048576.0;
    state.counters["peak_rss_MiB"] = PeakResidentMiB();
}

} // namespace

// 1000 x 500 quads are a million triangles, 2000 x 1000 four million.
BENCHMARK(ModelExportOfASkinnedMesh)
    ->ArgName("quadsX")
    ->Arg(1000)
    ->Arg(2000)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kSecond);
