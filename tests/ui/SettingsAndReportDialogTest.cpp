#include "ui/ApplicationSettingsDialog.h"

#include "base/FileSystem.h"
#include "report/DebugFile.h"
#include "settings/ApplicationSettings.h"
#include "ui/ReportDialog.h"

#include "DialogScript.h"
#include "TempSettings.h"

namespace sc = SettingsControl;
namespace rc = ReportControl;

TEST(ApplicationSettingsDialog, OkTakesTheThreeChoicesOverAndSavesEverySetting)
{
    TempSettings folder;
    ASSERT_TRUE(OpenDebugFile(folder.SystemPath("debug.txt"), DebugFileFlushEachLine));
    ApplicationSettings settings;
    settings.DebugPrint = 1;
    settings.ModelViewer = "Viewer";
    ApplicationSettingsDialog dialog(settings, folder.Store);
    dialog.Open();
    EXPECT_TRUE(dialog.Checked(sc::DebugPrint));
    EXPECT_EQ(dialog.Text(sc::ModelViewer), "Viewer");
    EXPECT_FALSE(dialog[sc::ModelViewer].Enabled);

    Click(dialog, sc::ToolTips);
    Click(dialog, sc::WarnPolyCount);
    Click(dialog, sc::DebugPrint);
    dialog.Command(kIdOk);
    EXPECT_EQ(dialog.Result(), 1);
    EXPECT_FALSE(IsDebugFileOpen());

    std::string debug;
    ASSERT_TRUE(ReadWholeFile(folder.SystemPath("debug.txt"), debug));
    EXPECT_EQ(debug, "ApplicationSettingsDialogProc()\nDebug file option cancelled...\r\n");
    IniSettingsStore stored(folder.SystemPath("settings.ini"));
    ASSERT_TRUE(stored.Load());
    ApplicationSettings loaded;
    LoadApplicationSettings(stored, loaded);
    EXPECT_EQ(loaded.ToolTips, 1);
    EXPECT_TRUE(loaded.WarnPolyCount);
    EXPECT_EQ(loaded.DebugPrint, 0);
    EXPECT_EQ(loaded.ModelViewer, "Viewer");
}

TEST(ReportDialog, SelectingAnEntryShowsItsExplanationAndDetail)
{
    ReportDialog dialog("Exporter: Issues during export",
                        {{"Texture not found", "Missing.", "a.tga\r\n", SeverityWarning},
                         {"Crash", "Broken.", "In:\r\nExport\r\n", SeverityError},
                         {"Zephra memory estimate", "Memory.", "1 MB", SeverityInformation}});
    dialog.Open();
    const std::vector<std::vector<Cell>>& rows = dialog[rc::Entries].Rows;
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0][0], (Cell {"Warning", {0, 0, 0}, 0}));
    EXPECT_EQ(rows[1][0], (Cell {"Error", {255, 0, 0}, 0}));
    EXPECT_EQ(rows[2][0], (Cell {"Info", {0, 150, 0}, 0}));
    EXPECT_EQ(rows[1][1].Text, "Crash");

    Choose(dialog, rc::Entries, 1);
    EXPECT_EQ(dialog.Text(rc::Description), "Broken.");
    EXPECT_EQ(dialog.Text(rc::Detail), "In:\r\nExport\r\n");
    Choose(dialog, rc::Entries, -1);
    EXPECT_EQ(dialog.Text(rc::Description), "");
    EXPECT_EQ(dialog.Text(rc::Detail), "");
}
