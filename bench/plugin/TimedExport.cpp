#include "TimedExport.h"

#include "base/Path.h"
#include "plugin/PluginEntry.h"
#include "plugin/PluginModule.h"
#include "report/LogWindow.h"
#include "report/VLogSink.h"

#include <maya/MPxFileTranslator.h>
#include <standin/PluginHost.h>

#include <sys/resource.h>

#include <vector>

namespace {

std::filesystem::path MakeFolder(const std::string& name)
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(folder);
    return folder;
}

class PhaseClock final : public VLogSink {
public:
    explicit PhaseClock(std::span<const ExportPhase> phases) : m_phases(phases) {}

    void Send(std::string_view message) override
    {
        if (m_starts.size() < m_phases.size() && message.starts_with(m_phases[m_starts.size()].StartLine))
            m_starts.push_back(BenchClock::now());
    }

    double Seconds(size_t phase, BenchClock::time_point end) const
    {
        if (phase >= m_starts.size())
            return 0.0;
        const BenchClock::time_point until = phase + 1 < m_starts.size() ? m_starts[phase + 1] : end;
        return std::chrono::duration<double>(until - m_starts[phase]).count();
    }

private:
    std::span<const ExportPhase> m_phases;
    std::vector<BenchClock::time_point> m_starts;
};

} // namespace

LoadedBenchPlugin::LoadedBenchPlugin(const std::string& folderName, const std::string& optionOverrides)
    : m_folder(MakeFolder(folderName)), m_store(FromNativePath((m_folder / "settings.ini").string()))
{
    PluginServices services;
    services.SettingsStore = &m_store;
    services.OptionOverrides = optionOverrides;
    StartPluginModule(services);
    standin::LoadPlugin("Kestrel", initializePlugin, uninitializePlugin);
}

LoadedBenchPlugin::~LoadedBenchPlugin()
{
    standin::UnloadPlugin("Kestrel");
    StopPluginModule();
    std::error_code error;
    std::filesystem::remove_all(m_folder, error);
}

void RunTimedExport(benchmark::State& state, const char* translator, const std::filesystem::path& target,
                    std::span<const ExportPhase> phases, BenchClock::time_point start)
{
    const BenchClock::time_point built = BenchClock::now();
    PhaseClock clock(phases);
    SetLogSink(&clock);
    const MStatus status = standin::ExportFile(translator, target.generic_string(), MPxFileTranslator::kExportAccessMode);
    const BenchClock::time_point end = BenchClock::now();
    SetLogSink(nullptr);
    if (!status)
        state.SkipWithError("the export failed");

    state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    state.counters["scene_build_s"] = std::chrono::duration<double>(built - start).count();
    for (size_t i = 0; i < phases.size(); ++i)
        state.counters[phases[i].Counter] = clock.Seconds(i, end);
}

double PeakResidentMiB()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}
