#pragma once
// What the whole-export benchmarks share: the plug-in loaded over a scratch folder of its own, and
// one export through a translator whose phases are timed by the log lines the pipeline sends as it
// enters each one.

#include "settings/IniSettingsStore.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

using BenchClock = std::chrono::steady_clock;

struct ExportPhase {
    const char* Counter;
    std::string_view StartLine;
};

// The plug-in, loaded with its settings in a scratch folder that goes away with it.
class LoadedBenchPlugin {
public:
    LoadedBenchPlugin(const std::string& folderName, const std::string& optionOverrides = {});
    ~LoadedBenchPlugin();
    LoadedBenchPlugin(const LoadedBenchPlugin&) = delete;
    LoadedBenchPlugin& operator=(const LoadedBenchPlugin&) = delete;

    const std::filesystem::path& Folder() const { return m_folder; }

private:
    std::filesystem::path m_folder;
    IniSettingsStore m_store;
};

// Exports the scene to `target` and records the iteration's time from `start` and each phase's
// seconds under its counter: a phase runs from its line to the next one's, the last to the
// writer's return, and a phase whose line never came counts 0. Marks the run failed when the
// export fails.
void RunTimedExport(benchmark::State& state, const char* translator, const std::filesystem::path& target,
                    std::span<const ExportPhase> phases, BenchClock::time_point start);

// The process's resident high-water mark: run one size at a time to read it for that size.
double PeakResidentMiB();
