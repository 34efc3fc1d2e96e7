#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Path.h"
#include "report/DebugFile.h"
#include "report/ExportBracket.h"
#include "report/KestrelReportMessage.h"
#include "report/LogWindow.h"
#include "report/ReportText.h"
#include "report/VIssueKind.h"
#include "report/VReportView.h"
#include "RecordingLogSink.h"
#include "TempFolder.h"

namespace {

class RecordingView final : public VReportView {
public:
    void ShowReport(std::string_view caption, const std::vector<VReportEntry>& entries) override
    {
        Captions.emplace_back(caption);
        for (const VReportEntry& entry : entries)
            Titles.push_back(entry.Title);
    }

    std::vector<std::string> Captions;
    std::vector<std::string> Titles;
};

class ExportBracketTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        SetLogSink(nullptr);
        SetLogWindowLocator({});
        m_params.TargetFile = m_folder.SystemPath() + "crate.qmesh";
        m_params.TargetDirectory = m_folder.SystemPath();
        m_params.MayaVersion = "2024";
    }
    void TearDown() override
    {
        CloseDebugFile();
        SetLogSink(nullptr);
        SetLogWindowLocator({});
    }

    TempFolder m_folder;
    KestrelReportMessage m_report;
    VExportBracketParams m_params;
    RecordingLogSink m_window;
    RecordingView m_view;
};

}

TEST_F(ExportBracketTest, DebugFileHasItsHeaderClosesAtTheEndAndTheNextExportTruncatesIt)
{
    m_params.DebugPrint = true;
    m_report.AddIssue(IssueCrash, "previous export");

    BeginExportBracket(m_report, m_params);
    EXPECT_TRUE(m_report.Issues().empty());
    DebugPrint("first export only\r\n");
    EndExportBracket(m_report, m_params);
    EXPECT_FALSE(IsDebugFileOpen());
    EXPECT_EQ(m_folder.Read("debug.txt"),
              "Opening debug file for " + m_params.TargetFile + "\r\n\r\n"
              "Exporter version: 7, 6, 3, 0\r\n"
              "Settings version: 4\r\n"
              "Maya version: 2024\r\n"
              "first export only\r\n");

    BeginExportBracket(m_report, m_params);
    ASSERT_TRUE(IsDebugFileOpen());
    EndExportBracket(m_report, m_params);
    EXPECT_EQ(m_folder.Read("debug.txt").find("first export only"), std::string::npos);
}

TEST_F(ExportBracketTest, WithoutDebugPrintOrTargetDirectoryNoDebugFileIsOpened)
{
    BeginExportBracket(m_report, m_params);
    DebugPrint("trace\r\n");
    EXPECT_FALSE(IsDebugFileOpen());
    EXPECT_FALSE(m_folder.Has("debug.txt"));

    m_params.DebugPrint = true;
    m_params.TargetDirectory.clear();
    BeginExportBracket(m_report, m_params);
    EXPECT_FALSE(IsDebugFileOpen());
}

TEST_F(ExportBracketTest, ShowLogLooksForTheViewerAndStartsItOnlyWhenNoneRuns)
{
    bool viewerRunning = false;
    int lookups = 0;
    int launches = 0;
    SetLogWindowLocator([&]() -> VLogSink* {
        ++lookups;
        return viewerRunning ? &m_window : nullptr;
    });
    m_params.LaunchLogViewer = [&] {
        ++launches;
        viewerRunning = true;
    };

    BeginExportBracket(m_report, m_params);
    EXPECT_EQ(lookups, 0);

    m_params.ShowLog = true;
    BeginExportBracket(m_report, m_params);
    LogRaw("status\r\n");
    EXPECT_EQ(lookups, 2);
    EXPECT_EQ(launches, 1);
    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { "status\r\n" }));

    BeginExportBracket(m_report, m_params);
    EXPECT_EQ(launches, 1);
}

TEST_F(ExportBracketTest, BatchEndFilesOnlyErrorsAsErrLog)
{
    m_params.NoPrompt = true;
    BeginExportBracket(m_report, m_params);
    m_report.AddIssue(IssueTextureNotFound, "a.tga");
    EndExportBracket(m_report, m_params);
    EXPECT_FALSE(m_folder.Has("ErrLog.txt"));

    m_report.AddIssue(IssueTextureNotFound, "a.tga");
    m_report.AddIssue(IssueFileNotSaved, "crate.qmesh");
    EndExportBracket(m_report, m_params);

    const std::vector<VReportEntry> expected {
        { "Could not save file",
          "Could not save the file. The reasons for this might be internal errors, saving to read-only media, "
          "insufficient file permissions, closed network connections or otherwise.",
          "This file could not be written:\r\ncrate.qmesh\r\n", SeverityError },
    };
    EXPECT_EQ(m_folder.Read("ErrLog.txt"), ReportText(expected));
    EXPECT_TRUE(m_report.Entries().empty());
    EXPECT_TRUE(m_report.Issues().empty());
}

// The report page is for people reading later, so it gets the warnings and statistics too.
TEST_F(ExportBracketTest, BatchEndOpensNoDialogFilesOnlyErrorsAndHandsThePageEveryEntry)
{
    RecordingView filed;
    RecordingView page;
    m_params.NoPrompt = true;
    m_params.ReportView = &m_view;
    m_params.FiledReportView = &filed;
    m_params.WriteReportPage = [&](const std::vector<VReportEntry>& entries) { page.ShowReport("", entries); };
    m_report.AddIssue(IssueStripStatistics, "12 strips");
    m_report.AddIssue(IssueTextureNotFound, "a.tga");
    m_report.AddIssue(IssueCrash, "Export");

    EndExportBracket(m_report, m_params);

    EXPECT_TRUE(m_view.Titles.empty());
    EXPECT_EQ(filed.Titles, (std::vector<std::string> { "Crash" }));
    EXPECT_EQ(page.Titles,
              (std::vector<std::string> { "Crash", "Texture not found", "Triangle stripping and listing statistics" }));
    EXPECT_EQ(m_folder.Read("ErrLog.txt").find("Texture not found"), std::string::npos);
    EXPECT_NE(m_folder.Read("ErrLog.txt").find("Crash"), std::string::npos);
}

TEST_F(ExportBracketTest, BatchEndKeepsTheLogWindowAndSendsTheClosingLine)
{
    m_params.NoPrompt = true;
    SetLogSink(&m_window);

    EndExportBracket(m_report, m_params);

    EXPECT_EQ(m_window.Messages,
              (std::vector<std::string> { "Closing debug file for " + ShownPath(m_params.TargetFile) + "\r\n" }));
    EXPECT_EQ(FindLogWindow(), 0);
}

TEST_F(ExportBracketTest, InteractiveEndShowsAllSeveritiesInTheDialogOnlyWhenThereAreIssues)
{
    m_params.ReportView = &m_view;
    EndExportBracket(m_report, m_params);
    EXPECT_TRUE(m_view.Captions.empty());

    m_report.AddIssue(IssueStripStatistics, "12 strips");
    m_report.AddIssue(IssueTextureNotFound, "a.tga");
    EndExportBracket(m_report, m_params);

    EXPECT_EQ(m_view.Captions, (std::vector<std::string> { "Exporter: Issues during export" }));
    EXPECT_EQ(m_view.Titles, (std::vector<std::string> { "Texture not found", "Triangle stripping and listing statistics" }));
    EXPECT_FALSE(m_folder.Has("ErrLog.txt"));
    EXPECT_TRUE(m_report.Issues().empty());
}

TEST_F(ExportBracketTest, InteractiveEndStartsTheViewerOnlyWhenAsked)
{
    int launches = 0;
    m_params.LaunchViewer = [&] { ++launches; };

    EndExportBracket(m_report, m_params);
    m_params.DisplayViewer = true;
    EndExportBracket(m_report, m_params);
    m_params.NoPrompt = true;
    EndExportBracket(m_report, m_params);

    EXPECT_EQ(launches, 1);
}

TEST_F(ExportBracketTest, InteractiveEndLetsTheLogViewerQuitBeforeTheClosingLine)
{
    SetLogSink(&m_window);

    EndExportBracket(m_report, m_params);

    EXPECT_EQ(m_window.Messages, (std::vector<std::string> { "VGL_LOG_ENABLEQUIT", "VGL_LOG_QUIT" }));
    EXPECT_EQ(FindLogWindow(), LogWindowNotFound);
}
