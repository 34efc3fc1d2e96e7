// The whole static mesh export of a generated scene of about a million triangles, from building
// the scene in the stand-in to the files on disk, through the translator's writer in batch mode.
// The phases are timed by the log lines the pipeline sends as it enters each one; peak memory is
// the process's resident high-water mark.

#include "../common/TiledGridScene.h"
#include "plugin/PluginEntry.h"
#include "plugin/PluginModule.h"
#include "report/LogWindow.h"
#include "report/VLogSink.h"
#include "settings/IniSettingsStore.h"
#include "base/Path.h"

#include <maya/MPxFileTranslator.h>
#include <standin/PluginHost.h>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

struct Phase {
    const char* Counter;
    std::string_view StartLine;
};

// Each phase runs from its line to the next phase's line; the last one to the writer's return.
constexpr std::array<Phase, 9> kPhases {{
    {"precalculation_s", "Precalculation phase...\r\n"},
    {"harvest_s", "Calculating meshes and textures...\r\n"},
    {"centre_scale_s", "Centering Mesh...\r\n"},
    {"materials_weld_s", "Checking materials...\r\n"},
    {"strips_s", "Generating triangle strips...\r\n"},
    {"sort_s", "Sorting primitivies...\r\n"},
    {"enumerate_s", "Final enumeration...\r\n"},
    {"save_s", "Saving to"},
    {"close_s", "Finished!\r\n"},
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

void StaticExportOfAMillionTriangles(benchmark::State& state)
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "kestrel_static_export_bench";
    std::filesystem::create_directories(folder);
    IniSettingsStore store(FromNativePath((folder / "settings.ini").string()));
    PluginServices services;
    services.SettingsStore = &store;
    StartPluginModule(services);
    standin::LoadPlugin("Kestrel", initializePlugin, uninitializePlugin);
    const std::string target = (folder / "million.qmesh").generic_string();

    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        BuildTiledGridScene();
        const Clock::time_point built = Clock::now();

        PhaseClock phases;
        SetLogSink(&phases);
        const MStatus status = standin::ExportFile("Zephra_Static_Mesh", target, MPxFileTranslator::kExportAccessMode);
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
    state.counters["triangles"] = static_cast<double>(TiledGridTriangleCount);
    state.counters["file_MiB"] = static_cast<double>(std::filesystem::file_size(folder / "million.qmesh")) / 1048576.0;
    state.counters["peak_rss_MiB"] = PeakResidentMiB();

    standin::UnloadPlugin("Kestrel");
    StopPluginModule();
    std::error_code error;
    std::filesystem::remove_all(folder, error);
}

} // namespace

BENCHMARK(StaticExportOfAMillionTriangles)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
