#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "report/LogWindow.h"
#include "report/Progress.h"
#include "report/VLogSink.h"

namespace {

class ProgressRecorder final : public VLogSink {
public:
    void Send(std::string_view) override {}
    void ShowProgress(std::string_view phase, double fraction, double) override
    {
        Shown.push_back(std::string(phase) + " " + std::to_string(static_cast<int>(fraction * 100.0)));
    }

    std::vector<std::string> Shown;
};

}

TEST(Progress, WindowHearsOfEachWholePercentOnceAndPhasesKeepTheirOrder)
{
    ProgressRecorder window;
    SetLogSink(&window);
    TakePhaseTimes();

    BeginPhase("Welding");
    for (int done = 0; done <= 400; ++done)
        PhaseProgress(done, 400);
    PhaseProgress(5, 0);
    BeginPhase("Saving");
    PhaseProgress(3, 2);
    EndPhase();
    // Outside any phase progress goes nowhere.
    PhaseProgress(1, 2);
    SetLogSink(nullptr);

    ASSERT_EQ(window.Shown.size(), 1u + 101u + 1u + 1u + 1u);
    EXPECT_EQ(window.Shown[0], "Welding -100");
    EXPECT_EQ(window.Shown[1], "Welding 0");
    EXPECT_EQ(window.Shown[101], "Welding 100");
    EXPECT_EQ(window.Shown[102], "Saving -100");
    EXPECT_EQ(window.Shown[103], "Saving 100");
    EXPECT_EQ(window.Shown[104], " -100");

    const std::vector<VPhaseTime> times = TakePhaseTimes();
    ASSERT_EQ(times.size(), 2u);
    EXPECT_EQ(times[0].Name, "Welding");
    EXPECT_EQ(times[1].Name, "Saving");
    EXPECT_GE(times[0].Seconds, 0.0);
    EXPECT_TRUE(TakePhaseTimes().empty());
}
