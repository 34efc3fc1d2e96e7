#include "report/Progress.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "report/LogWindow.h"

namespace {

using Clock = std::chrono::steady_clock;

struct ProgressState {
    std::string Phase;
    Clock::time_point Started;
    int Percent = -1;
    std::vector<VPhaseTime> Ended;
};

ProgressState& State()
{
    static ProgressState state;
    return state;
}

double SecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Ends the phase under way, if any, without a word to the log window; answers whether one ran.
bool KeepPhaseTime(ProgressState& state)
{
    if (state.Phase.empty())
        return false;
    state.Ended.push_back(VPhaseTime {std::move(state.Phase), SecondsSince(state.Started)});
    state.Phase.clear();
    return true;
}

}

void BeginPhase(std::string_view name)
{
    ProgressState& state = State();
    KeepPhaseTime(state);
    state.Phase = name;
    state.Started = Clock::now();
    state.Percent = -1;
    LogProgress(state.Phase, -1.0, 0.0);
}

void PhaseProgress(int64_t done, int64_t total)
{
    ProgressState& state = State();
    if (state.Phase.empty() || total <= 0)
        return;
    const double fraction = static_cast<double>(std::clamp<int64_t>(done, 0, total)) / static_cast<double>(total);
    const int percent = static_cast<int>(fraction * 100.0);
    if (percent == state.Percent)
        return;
    state.Percent = percent;
    LogProgress(state.Phase, fraction, SecondsSince(state.Started));
}

void EndPhase()
{
    if (KeepPhaseTime(State()))
        LogProgress({}, -1.0, 0.0);
}

std::vector<VPhaseTime> TakePhaseTimes()
{
    return std::exchange(State().Ended, {});
}
