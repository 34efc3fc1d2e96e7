#include "settings/LaunchRegisteredProgram.h"

#include "settings/ExternalProgramServices.h"
#include "settings/IniSettingsStore.h"
#include "settings/ProgramRegistry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FakePlatform.h"

namespace {

class LaunchRegisteredProgramTest : public ::testing::Test {
protected:
    void Register(const std::string& name, const std::string& path)
    {
        ASSERT_TRUE(m_store.WriteString(ProgramInstallationKey(name), "", path));
    }

    IniSettingsStore m_store {""};
    RecordingLauncher m_launcher;
    RecordingMessageBox m_messages;
    ExternalProgramServices m_services {m_store, m_launcher, m_messages};
    LogWindowRecorder m_log;
};

} // namespace

TEST_F(LaunchRegisteredProgramTest, RegisteredPathIsStartedQuotedWithTheArguments)
{
    Register("Modlook", "\"C:\\Program Files\\Zephra\\Modlook.exe\"");
    EXPECT_TRUE(LaunchRegisteredProgram(m_services, "Modlook", "\"C:\\game\\hero.model\""));
    EXPECT_EQ(m_launcher.CommandLines,
              std::vector<std::string> {"\"C:\\Program Files\\Zephra\\Modlook.exe\" \"C:\\game\\hero.model\""});
    EXPECT_TRUE(m_messages.Requests.empty());
}

TEST_F(LaunchRegisteredProgramTest, LaunchIsAnnouncedInTheLogWindow)
{
    Register("Reslook", "C:\\Zephra\\Reslook.exe");
    LaunchLogViewer(m_services);
    EXPECT_EQ(m_log.Messages, std::vector<std::string> {"Launching 'Reslook -hide'...\r\n"});
    EXPECT_EQ(m_launcher.CommandLines, std::vector<std::string> {"\"C:\\Zephra\\Reslook.exe\" -hide"});
}

TEST_F(LaunchRegisteredProgramTest, ArgumentFillsThePlaceholderOfTheFormatWhichIsOtherwiseTakenLiterally)
{
    Register("Modlook", "C:\\Modlook.exe");
    LaunchRegisteredProgram(m_services, "Modlook", "-model \"%s\" -x", "C:\\a b\\hero.model");
    LaunchRegisteredProgram(m_services, "Modlook", "100%s %d %n");
    EXPECT_EQ(m_launcher.CommandLines, (std::vector<std::string> {"\"C:\\Modlook.exe\" -model \"C:\\a b\\hero.model\" -x",
                                                                  "\"C:\\Modlook.exe\" 100%s %d %n"}));
    EXPECT_EQ(m_log.Messages.back(), "Launching 'Modlook 100%s %d %n'...\r\n");
}

TEST_F(LaunchRegisteredProgramTest, UnregisteredProgramIsReportedAndNotStarted)
{
    EXPECT_FALSE(LaunchRegisteredProgram(m_services, "Worldlook", "-mesh x"));
    EXPECT_TRUE(m_launcher.CommandLines.empty());
    EXPECT_TRUE(m_log.Messages.empty());
    ASSERT_EQ(m_messages.Requests.size(), 1u);
    EXPECT_EQ(m_messages.Requests[0].Caption, "Error");
    EXPECT_EQ(m_messages.Requests[0].Text,
              "Error: The location of program 'Worldlook' is unknown. Please run it once to register it.\r\n");
    EXPECT_EQ(m_messages.Requests[0].Owner, VMessageBoxOwner::None);
}

TEST_F(LaunchRegisteredProgramTest, FailedStartIsAnsweredFalse)
{
    Register("Modlook", "C:\\Modlook.exe");
    m_launcher.StartSucceeds = false;
    EXPECT_FALSE(LaunchRegisteredProgram(m_services, "Modlook", ""));
    EXPECT_TRUE(m_messages.Requests.empty());
}
