#pragma once
// The long phases of an export as a person follows them: which phase runs, how far it has got and
// how long each one took. The phase under way is module-wide, as the log window is, so that a pass
// deep in the geometry can say how far it has got without being handed anything. The held log
// window hears of every change (VLogSink::ShowProgress); the report page shows the times.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct VPhaseTime {
    std::string Name;
    double Seconds = 0.0;
};

// Ends the phase under way, keeping its time, and starts the named one.
void BeginPhase(std::string_view name);
// How far the phase under way has got: done of total steps. Cheap enough for a loop: the log
// window hears of it only when the whole percentage changes. Ignored while no phase runs or when
// total is not positive.
void PhaseProgress(int64_t done, int64_t total);
// Ends the phase under way, if any, keeping its time, and tells the log window that none runs.
void EndPhase();
// The phases ended since the last call, in the order they ran; forgets them.
std::vector<VPhaseTime> TakePhaseTimes();
