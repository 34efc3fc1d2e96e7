#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "report/LogWindow.h"
#include "RecordingLogSink.h"

namespace {

class LogWindowTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        SetLogSink(nullptr);
        SetLogWindowLocator({});
    }
    void TearDown() override { SetUp(); }

    RecordingLogSink m_window;
};

}

TEST_F(LogWindowTest, LinesReachOnlyTheHeldWindowFormattedOrForwarded)
{
    LogPrint("Frame: %d\r\n", 1);
    LogRaw("status\r\n");
    SetLogSink(&m_window);
    LogPrint("Frame: %d / %d\r\n", 3, 40);
    LogRaw("Finished!\r\n");
    LogWindowForwarder().Send("Generating triangle strips...\r\n");

    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { "Frame: 3 / 40\r\n", "Finished!\r\n",
                                                             "Generating triangle strips...\r\n" }));
}

TEST_F(LogWindowTest, FindLogWindowHoldsTheWindowTheLocatorFindsOrAnswersNotFound)
{
    EXPECT_EQ(FindLogWindow(), LogWindowNotFound);
    EXPECT_EQ(LogWindowNotFound, -2001);
    SetLogWindowLocator([] { return nullptr; });
    EXPECT_EQ(FindLogWindow(), -2001);

    int lookups = 0;
    SetLogWindowLocator([&] {
        ++lookups;
        return &m_window;
    });
    EXPECT_EQ(FindLogWindow(), 0);
    EXPECT_EQ(FindLogWindow(), 0);
    LogRaw("x");

    EXPECT_EQ(lookups, 1);
    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { "x" }));
}

TEST_F(LogWindowTest, ControlTextsAndQuitForgetTheWindow)
{
    SetLogSink(&m_window);

    LogControl(true);
    LogControl(false);
    LogQuit();
    LogPrint("Closing debug file for %s\r\n", "a.model");

    EXPECT_EQ(m_window.Messages,
              (std::vector<std::string> { "VGL_LOG_DISABLEQUIT", "VGL_LOG_ENABLEQUIT", "VGL_LOG_QUIT" }));
    EXPECT_EQ(FindLogWindow(), LogWindowNotFound);
}

TEST_F(LogWindowTest, TextIsSentWholeUpToTheProtocolLengthAndCutBeyond)
{
    SetLogSink(&m_window);
    const std::string whole(32767, 'a');

    LogRaw(whole);
    LogRaw(whole + "bc");
    LogPrint("%s", (whole + "bc").c_str());

    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { whole, whole, whole }));
}
