#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "report/VReport.h"
#include "report/VReportMessage.h"
#include "report/VReportView.h"

namespace {

// Records what Finalize asks for; the severity of a kind is its number modulo 3, the title names
// the kind, and the detail is the joined data as passed.
class RecordingReport final : public VReport {
public:
    std::vector<std::pair<uint32_t, std::string>> Calls;

protected:
    void FillInReportMessage(uint32_t kind, const std::string& data, std::string& title, std::string& detail,
                             std::string& explanation, int32_t& severity) override
    {
        EXPECT_TRUE(title.empty() && detail.empty() && explanation.empty());
        EXPECT_EQ(severity, 0);
        Calls.emplace_back(kind, data);
        title = "kind " + std::to_string(kind);
        detail = data;
        explanation = "why " + std::to_string(kind);
        severity = static_cast<int32_t>(kind % 3);
    }
};

class RecordingView final : public VReportView {
public:
    void ShowReport(std::string_view caption, const std::vector<VReportEntry>& entries) override
    {
        ++Shown;
        Caption = caption;
        Titles.clear();
        for (const VReportEntry& entry : entries)
            Titles.push_back(entry.Title);
    }

    int Shown = 0;
    std::string Caption;
    std::vector<std::string> Titles;
};

std::vector<std::string> TitlesOf(const VReport& report)
{
    std::vector<std::string> titles;
    for (const VReportEntry& entry : report.Entries())
        titles.push_back(entry.Title);
    return titles;
}

}

TEST(VReport, FinalizeMakesOneEntryPerKindInKindOrderJoiningItsNonEmptyDetails)
{
    RecordingReport report;
    report.AddIssue(9, "first");
    report.AddIssue(3, "");
    report.AddIssue(9);
    report.AddIssue(0, "d");
    report.AddIssue(9, "second");
    report.AddIssue(3);
    EXPECT_TRUE(report.Entries().empty());

    report.Finalize(0);

    EXPECT_EQ(TitlesOf(report), (std::vector<std::string> { "kind 0", "kind 3", "kind 9" }));
    EXPECT_EQ(report.Calls, (std::vector<std::pair<uint32_t, std::string>> { { 0, "d\r\n" }, { 3, "" },
                                                                            { 9, "first\r\nsecond\r\n" } }));
    EXPECT_EQ(report.Entries()[2].Detail, "first\r\nsecond\r\n");
    EXPECT_EQ(report.Entries()[2].Explanation, "why 9");
}

TEST(VReport, FinalizeDropsKindsBelowTheMinimumSeverityAndAppendsAgainUntilClearEmptiesBoth)
{
    RecordingReport report;
    report.AddIssue(3); // severity 0
    report.AddIssue(4); // severity 1
    report.AddIssue(5); // severity 2
    report.Finalize(1);
    EXPECT_EQ(report.Calls.size(), 3u);
    report.Finalize(1);
    EXPECT_EQ(TitlesOf(report), (std::vector<std::string> { "kind 4", "kind 5", "kind 4", "kind 5" }));

    report.Clear();

    EXPECT_TRUE(report.Entries().empty());
    EXPECT_TRUE(report.Issues().empty());
}

TEST(VReport, ShowReportDialogHandsEntriesAndCaptionToTheViewAndOpensNothingWithoutEntries)
{
    RecordingReport report;
    RecordingView view;
    report.AddIssue(3, "only information");
    report.Finalize(1);
    report.ShowReportDialog(view, "Issues during export");
    EXPECT_EQ(view.Shown, 0);

    report.AddIssue(2, "a");
    report.AddIssue(1, "b");
    report.Finalize(0);
    report.ShowReportDialog(view, "Issues during export");

    EXPECT_EQ(view.Shown, 1);
    EXPECT_EQ(view.Caption, "Issues during export");
    EXPECT_EQ(view.Titles, (std::vector<std::string> { "kind 1", "kind 2", "kind 3" }));
}

TEST(VReportMessage, ShowsEveryKindAsUndefinedErrorWithItsData)
{
    VReportMessage report;
    report.AddIssue(20, "a.tga");
    report.AddIssue(20, "b.tga");
    report.Finalize(0);

    ASSERT_EQ(report.Entries().size(), 1u);
    const VReportEntry& entry = report.Entries()[0];
    EXPECT_EQ(entry.Title, "No errors or warnings defined");
    EXPECT_EQ(entry.Explanation, "No error messages or warnings were defined. Please, override "
                                 "VReportMessage::FillInReportMessage to define your own messages.");
    EXPECT_EQ(entry.Detail, "The message data was:\r\na.tga\r\nb.tga\r\n");
    EXPECT_EQ(entry.Severity, SeverityError);
}
