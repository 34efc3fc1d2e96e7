#include "settings/ConfirmApplicationSettings.h"

#include "report/DebugFile.h"
#include "settings/IniSettingsStore.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ScratchFolder.h"

namespace {

// The late debug file is opened in the current folder, so each test runs inside its scratch folder.
class ConfirmApplicationSettingsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_previous = std::filesystem::current_path();
        std::filesystem::current_path(m_folder.Native("."));
    }
    void TearDown() override
    {
        CloseDebugFile();
        std::filesystem::current_path(m_previous);
    }

    ScratchFolder m_folder;
    IniSettingsStore m_store {m_folder.SystemPath("config\\settings.ini")};
    std::filesystem::path m_previous;
};

} // namespace

TEST_F(ConfirmApplicationSettingsTest, ChoicesAreTakenOverAndSaved)
{
    ApplicationSettings settings;
    settings.ModelViewer = "Custom";
    ASSERT_TRUE(ConfirmApplicationSettings({true, true, false}, settings, m_store));
    EXPECT_EQ(settings.ToolTips, 1);
    EXPECT_TRUE(settings.WarnPolyCount);
    EXPECT_EQ(settings.DebugPrint, 0);

    IniSettingsStore next(m_folder.SystemPath("config\\settings.ini"));
    ASSERT_TRUE(next.Load());
    ApplicationSettings loaded;
    LoadApplicationSettings(next, loaded);
    EXPECT_EQ(loaded, settings);
}

TEST_F(ConfirmApplicationSettingsTest, DebugPrintThatStaysOnKeepsTheOpenFile)
{
    ASSERT_TRUE(OpenDebugFile(m_folder.SystemPath("export.txt"), DebugFileFlushEachLine));
    ApplicationSettings settings;
    settings.DebugPrint = 1;
    ConfirmApplicationSettings({false, false, true}, settings, m_store);
    EXPECT_TRUE(IsDebugFileOpen());
    EXPECT_FALSE(m_folder.Has("debug.txt"));
}

TEST_F(ConfirmApplicationSettingsTest, SwitchingDebugPrintOnOpensTheLateDebugFileAndOffClosesIt)
{
    ApplicationSettings settings;
    ASSERT_TRUE(ConfirmApplicationSettings({false, false, true}, settings, m_store));
    EXPECT_EQ(settings.DebugPrint, 1);
    EXPECT_TRUE(IsDebugFileOpen());
    ConfirmApplicationSettings({false, false, false}, settings, m_store);
    EXPECT_FALSE(IsDebugFileOpen());
    EXPECT_EQ(m_folder.Read("debug.txt"), "Opening late debug file...\r\nDebug file option cancelled...\r\n");
}
