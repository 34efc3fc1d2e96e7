// The whole model export of the skinned grid of the model benchmarks at 1M and 4M triangles
// (100 joints, four influences per vertex), from building the scene in the stand-in to the files
// on disk, through the translator's writer in batch mode. The phases are timed by the log lines the pipeline sends
// as it enters each one; peak memory is the process's resident high-water mark, so run one size
// at a time (--benchmark_filter) to read it for that size.

#include "../common/SkinnedGridScene.h"
#include "base/Path.h"
#include "plugin/PluginEntry.h"
#include "plugin/PluginModule.h"
#include "report/LogWindow.h"
#include "report/VLogSink.h"
#include "settings/IniSettingsStore.h"

#include <maya/MPxFileTranslator.h>
#include <standin/PluginHost.h>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

using Clock = std::chrono::steady_clock;

struct Phase {
    const char* Counter;
    std::string_view StartLine;
};

// Each phase runs from its line to the next phase's line; the last one to the writer's return.
constexpr std::array<Phase, 13> kPhases {{
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
}};

class PhaseClock final : public VLogSink {
public:
    void Send(std::string_view message) override
    {
        if (m_next < kPhases.size() && message.starts_with(kPhases[m_next].StartLine))
            m_starts[m_next++] = Clock::now();
    }

    // Seconds per phase; a phase whose line never came counts 0.
    std::array<double, kPhases.size()> Seconds(Clock::time_point end) const
    {
        std::array<double, kPhases.size()> seconds {};
        for (size_t i = 0; i < m_next; ++i) {
            const Clock::time_point until = i + 1 < m_next ? m_starts[i + 1] : end;
            seconds[i] = std::chrono::duration<double>(until - m_starts[i]).count();
        }
        return seconds;
    }

private:
    std::array<Clock::time_point, kPhases.size()> m_starts {};
    size_t m_next = 0;
};

double PeakResidentMiB()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void ModelExportOfASkinnedMesh(benchmark::State& state)
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "kestrel_model_export_bench";
    std::filesystem::create_directories(folder);
    IniSettingsStore store(FromNativePath((folder / "settings.ini").string()));
    PluginServices services;
    services.SettingsStore = &store;
    services.OptionOverrides = "// ExportBones : TRUE\r\n";
    StartPluginModule(services);
    standin::LoadPlugin("Kestrel", initializePlugin, uninitializePlugin);
    const std::string target = (folder / "skinned.model").generic_string();

    const int quadsX = static_cast<int>(state.range(0));
    const int quadsY = quadsX / 2;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        BuildSkinnedGridScene(quadsX, quadsY);
        const Clock::time_point built = Clock::now();

        PhaseClock phases;
        SetLogSink(&phases);
        const MStatus status = standin::ExportFile("Zephra_Model_File", target, MPxFileTranslator::kExportAccessMode);
        const Clock::time_point end = Clock::now();
        SetLogSink(nullptr);
        if (!status)
            state.SkipWithError("the export failed");

        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
        state.counters["scene_build_s"] = std::chrono::duration<double>(built - start).count();
        const auto seconds = phases.Seconds(end);
        for (size_t i = 0; i < kPhases.size(); ++i)
            state.counters[kPhases[i].Counter] = seconds[i];
    }
    state.counters["triangles"] = 2.0 * quadsX * quadsY;
    state.counters["file_MiB"] = static_cast<double>(std::filesystem::file_size(folder / "skinned.model")) / 1048576.0;
    state.counters["peak_rss_MiB"] = PeakResidentMiB();

    standin::UnloadPlugin("Kestrel");
    StopPluginModule();
    std::error_code error;
    std::filesystem::remove_all(folder, error);
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
