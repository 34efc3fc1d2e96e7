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

TEST_F(LogWindowTest, LogPrintSendsTheFormattedTextToTheHeldWindow)
{
    SetLogSink(&m_window);

    LogPrint("Frame: %d / %d\r\n", 3, 40);
    LogRaw("Finished!\r\n");

    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { "Frame: 3 / 40\r\n", "Finished!\r\n" }));
}

TEST_F(LogWindowTest, LinesAreDroppedWhileNoWindowIsHeld)
{
    LogPrint("Frame: %d\r\n", 1);
    LogRaw("status\r\n");
    SetLogSink(&m_window);
    LogRaw("kept\r\n");

    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { "kept\r\n" }));
}

TEST_F(LogWindowTest, FindLogWindowAnswersNotFoundWhenNoViewerRuns)
{
    EXPECT_EQ(FindLogWindow(), LogWindowNotFound);
    EXPECT_EQ(LogWindowNotFound, -2001);

    SetLogWindowLocator([] { return nullptr; });
    EXPECT_EQ(FindLogWindow(), -2001);
}

TEST_F(LogWindowTest, FindLogWindowHoldsTheWindowTheLocatorFinds)
{
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

TEST_F(LogWindowTest, LogControlSendsTheQuitSwitchTexts)
{
    SetLogSink(&m_window);

    LogControl(true);
    LogControl(false);

    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { "VGL_LOG_DISABLEQUIT", "VGL_LOG_ENABLEQUIT" }));
}

TEST_F(LogWindowTest, LogQuitSendsQuitAndForgetsTheWindow)
{
    SetLogSink(&m_window);

    LogQuit();
    LogPrint("Closing debug file for %s\r\n", "a.model");

    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { "VGL_LOG_QUIT" }));
    EXPECT_EQ(FindLogWindow(), LogWindowNotFound);
}

TEST_F(LogWindowTest, TextOfFullProtocolLengthIsSentWhole)
{
    SetLogSink(&m_window);
    const std::string text(32767, 'a');

    LogRaw(text);

    ASSERT_EQ(m_window.Messages.size(), 1u);
    EXPECT_EQ(m_window.Messages[0], text);
}

TEST_F(LogWindowTest, LongerTextIsCutToWhatTheProtocolCarries)
{
    SetLogSink(&m_window);
    std::string text(32767, 'a');
    text += "bc";

    LogRaw(text);
    LogPrint("%s", text.c_str());

    ASSERT_EQ(m_window.Messages.size(), 2u);
    EXPECT_EQ(m_window.Messages[0], std::string(32767, 'a'));
    EXPECT_EQ(m_window.Messages[1], std::string(32767, 'a'));
}

TEST_F(LogWindowTest, ForwarderPassesMessagesOnToTheLogWindow)
{
    SetLogSink(&m_window);
    LogWindowForwarder forwarder;

    forwarder.Send("Generating triangle strips...\r\n");

    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { "Generating triangle strips...\r\n" }));
}
