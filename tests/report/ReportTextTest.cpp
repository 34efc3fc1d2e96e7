#include <gtest/gtest.h>

#include <string>

#include "report/KestrelReportMessage.h"
#include "report/ReportText.h"
#include "report/VIssueKind.h"
#include "TempFolder.h"

namespace {

std::vector<VReportEntry> TwoEntries()
{
    return {
        { "Texture not found", "Why.", "The following textures are missing:\r\na.tga\r\n", SeverityWarning },
        { "Could not save file", "Because.", "", SeverityError },
    };
}

}

TEST(ReportText, WritesSeverityTitleExplanationAndDetailOfEachEntry)
{
    const std::string expected =
        "Warning:\r\n"                                      // severity 1
        "Texture not found\r\n"                             // title
        "Why.\r\n"                                          // explanation
        "The following textures are missing:\r\na.tga\r\n"  // detail
        "\r\n\r\n"                                          // end of entry
        "Error:\r\n"                                        // severity 2
        "Could not save file\r\n"                           // title
        "Because.\r\n"                                      // explanation
        ""                                                  // empty detail
        "\r\n\r\n";                                         // end of entry

    EXPECT_EQ(ReportText(TwoEntries()), expected);
}

TEST(ReportText, HeaderFirstUnknownSeveritiesNamedLatin1KeptAndNothingWithoutEntries)
{
    EXPECT_EQ(ReportText({ { "T", "E", "D", SeverityInformation } }, "Export of a.qmesh"),
              "Export of a.qmesh\r\n\r\n"
              "Information:\r\nT\r\nE\r\nD\r\n\r\n");
    EXPECT_EQ(ReportText({ { "T", "E", "D", 7 }, { "U", "F", "G", -1 } }),
              "*** UNKNOWN TYPE ***:\r\nT\r\nE\r\nD\r\n\r\n"
              "*** UNKNOWN TYPE ***:\r\nU\r\nF\r\nG\r\n\r\n");
    EXPECT_EQ(ReportText({ { "T", "E", "M\xFC" "ller.tga\r\n", SeverityWarning } }),
              "Warning:\r\nT\r\nE\r\nM\xFC" "ller.tga\r\n\r\n\r\n");
    EXPECT_EQ(ReportText({}, "header"), "");
}

TEST(WriteReportToFile, WritesTheFinalisedReportByteForByte)
{
    TempFolder folder;
    KestrelReportMessage report;
    report.AddIssue(IssueFileNotSaved, "c:\\out\\a.qmesh");
    report.AddIssue(IssueCrash, "Export");
    report.Finalize(SeverityError);

    ASSERT_TRUE(report.WriteReportToFile(folder.SystemPath() + "ErrLog.txt"));

    const std::string expected =
        "Error:\r\n"
        "Crash\r\n"
        "The export was not successful. Something caused it to crash. Please, report this to support. Tip: Turn "
        "on Debug printout in the Global Settings and export again. That way, you'll have a  fairly accurate idea "
        "of what went on before the crash.\r\n\r\nDon't forget to make a backup of your Maya scene now!\r\n"
        "In:\r\nExport\r\n"
        "\r\n\r\n"
        "Error:\r\n"
        "Could not save file\r\n"
        "Could not save the file. The reasons for this might be internal errors, saving to read-only media, "
        "insufficient file permissions, closed network connections or otherwise.\r\n"
        "This file could not be written:\r\nc:\\out\\a.qmesh\r\n"
        "\r\n\r\n";
    EXPECT_EQ(folder.Read("ErrLog.txt"), expected);
}

TEST(WriteReportToFile, ReplacesAnExistingFile)
{
    TempFolder folder;
    KestrelReportMessage report;
    report.AddIssue(IssueEmptyScene);
    report.Finalize(0);
    ASSERT_TRUE(report.WriteReportToFile(folder.SystemPath() + "ErrLog.txt", std::string(5000, 'x')));

    ASSERT_TRUE(report.WriteReportToFile(folder.SystemPath() + "ErrLog.txt", "second"));

    EXPECT_EQ(folder.Read("ErrLog.txt").substr(0, 10), "second\r\n\r\n");
    EXPECT_EQ(folder.Read("ErrLog.txt"), ReportText(report.Entries(), "second"));
}

TEST(WriteReportToFile, WritesNothingWithoutEntriesAndAnswersFalseWithoutTheFolder)
{
    TempFolder folder;
    KestrelReportMessage report;
    report.AddIssue(IssueTextureNotFound, "a.tga");
    report.Finalize(SeverityError);
    EXPECT_TRUE(report.WriteReportToFile(folder.SystemPath() + "ErrLog.txt", "header"));
    EXPECT_FALSE(folder.Has("ErrLog.txt"));

    report.AddIssue(IssueCrash, "Export");
    report.Finalize(0);
    EXPECT_FALSE(report.WriteReportToFile(folder.SystemPath() + "missing\\ErrLog.txt"));
    EXPECT_FALSE(folder.Has("missing"));
}
