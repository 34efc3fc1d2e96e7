#include "settings/StartViewerProgram.h"

#include "base/Path.h"
#include "settings/ExternalProgramServices.h"
#include "settings/IniSettingsStore.h"
#include "settings/ProgramRegistry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FakePlatform.h"

namespace {

class StartViewerProgramTest : public ::testing::Test {
protected:
    IniSettingsStore m_store {""};
    RecordingLauncher m_launcher;
    RecordingMessageBox m_messages;
    ExternalProgramServices m_services {m_store, m_launcher, m_messages};
    ViewerTarget m_target {"\\work\\game\\rock.qmesh", "\\work\\game\\", "\\work\\"};
};

} // namespace

TEST_F(StartViewerProgramTest, ProgramNamedByItsExeIsOpenedInTheTargetDirectory)
{
    EXPECT_TRUE(StartViewerProgram(m_services, "C:\\Zephra\\Worldlook.EXE", "-mesh \"$targetfile\"", m_target));
    ASSERT_EQ(m_launcher.ShellCalls.size(), 1u);
    EXPECT_EQ(m_launcher.ShellCalls[0].File, "C:\\Zephra\\Worldlook.EXE");
    EXPECT_EQ(m_launcher.ShellCalls[0].Arguments, "-mesh \"" + ToNativePath(m_target.TargetFile) + "\"");
    EXPECT_EQ(m_launcher.ShellCalls[0].WorkingFolder, "\\work\\game\\");
    EXPECT_TRUE(m_launcher.CommandLines.empty());
}

TEST_F(StartViewerProgramTest, NetworkAndDrivePathsWithoutExeAreOpenedThroughTheShellToo)
{
    StartViewerProgram(m_services, "\\\\server\\tools\\worldlook", "", m_target);
    StartViewerProgram(m_services, "D:worldlook", "", m_target);
    EXPECT_EQ(m_launcher.ShellCalls.size(), 2u);
    EXPECT_TRUE(m_messages.Requests.empty());
}

TEST_F(StartViewerProgramTest, PathWithOneLeadingSeparatorIsARegisteredProgramName)
{
    ASSERT_TRUE(m_store.WriteString(ProgramInstallationKey("/opt/zephra/worldlook"), "", "/opt/zephra/worldlook"));
    EXPECT_TRUE(StartViewerProgram(m_services, "/opt/zephra/worldlook", "", m_target));
    EXPECT_FALSE(StartViewerProgram(m_services, "\\tools\\worldlook", "", m_target));
    EXPECT_TRUE(m_launcher.ShellCalls.empty());
    EXPECT_EQ(m_launcher.CommandLines, std::vector<std::string> {"\"/opt/zephra/worldlook\" "});
    EXPECT_EQ(m_messages.Requests.back().Text,
              "Error: The location of program '\\tools\\worldlook' is unknown. Please run it once to register it.\r\n");
}

TEST_F(StartViewerProgramTest, MacrosAreExpandedWithNativePaths)
{
    StartViewerProgram(m_services, "viewer.exe", "$targetfile|$targetdir|$projectdir", m_target);
    ASSERT_EQ(m_launcher.ShellCalls.size(), 1u);
    EXPECT_EQ(m_launcher.ShellCalls[0].Arguments, ToNativePath("\\work\\game\\rock.qmesh") + "|" +
                                                      ToNativePath("\\work\\game\\") + "|" + ToNativePath("\\work\\"));
}

TEST_F(StartViewerProgramTest, ShellResultUpToThirtyTwoIsShownWithTheProgramAndTheCode)
{
    m_launcher.ShellResult = 33;
    EXPECT_TRUE(StartViewerProgram(m_services, "a.exe", "", m_target));
    EXPECT_TRUE(m_messages.Requests.empty());
    for (const int code : {2, 32}) {
        m_launcher.ShellResult = code;
        EXPECT_FALSE(StartViewerProgram(m_services, "C:\\missing\\Worldlook.exe", "", m_target));
    }
    ASSERT_EQ(m_messages.Requests.size(), 2u);
    EXPECT_EQ(m_messages.Requests[0].Caption, "Error");
    EXPECT_EQ(m_messages.Requests[0].Text, "Unable to execute 'C:\\missing\\Worldlook.exe'\r\n(Error:0x2)\r\n");
    EXPECT_EQ(m_messages.Requests[1].Text, "Unable to execute 'C:\\missing\\Worldlook.exe'\r\n(Error:0x20)\r\n");
}

TEST_F(StartViewerProgramTest, PlainNameIsLookedUpAmongTheRegisteredPrograms)
{
    ASSERT_TRUE(m_store.WriteString(ProgramInstallationKey("Modlook"), "", "C:\\Zephra\\Modlook.exe"));
    EXPECT_TRUE(StartViewerProgram(m_services, "Modlook", "\"$targetfile\"", m_target));
    EXPECT_TRUE(m_launcher.ShellCalls.empty());
    EXPECT_EQ(m_launcher.CommandLines,
              std::vector<std::string> {"\"C:\\Zephra\\Modlook.exe\" \"" + ToNativePath(m_target.TargetFile) + "\""});
    EXPECT_FALSE(StartViewerProgram(m_services, "Worldlook", "-mesh \"$targetfile\"", m_target));
    ASSERT_EQ(m_messages.Requests.size(), 1u);
    EXPECT_EQ(m_messages.Requests[0].Text,
              "Error: The location of program 'Worldlook' is unknown. Please run it once to register it.\r\n");
}

TEST_F(StartViewerProgramTest, ExpandedArgumentsAreNotTreatedAsAFormat)
{
    ASSERT_TRUE(m_store.WriteString(ProgramInstallationKey("Modlook"), "", "C:\\Modlook.exe"));
    m_target.TargetFile = "\\work\\100%s.model";
    StartViewerProgram(m_services, "Modlook", "$targetfile", m_target);
    EXPECT_EQ(m_launcher.CommandLines,
              std::vector<std::string> {"\"C:\\Modlook.exe\" " + ToNativePath("\\work\\100%s.model")});
}
