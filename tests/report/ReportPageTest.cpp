#include "report/ReportPage.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Every severity is on the page, errors first, each group in the order the report gave.
TEST(ReportPage, ListsEveryIssueGroupedBySeverityInTheReportsOrder)
{
    VReportPage page;
    page.Entries = {{"Texture not found", "Missing.", "The following textures are missing:\r\na.tga\r\n", SeverityWarning},
                    {"Crash", "It crashed.", "In:\r\nExport\r\n", SeverityError},
                    {"Triangle stripping and listing statistics", "", "12 strips\r\n", SeverityInformation},
                    {"Could not save file", "Unsaved.", "This file could not be written:\r\nx.qmesh\r\n", SeverityError}};
    const std::string html = ReportPageHtml(page);

    size_t at = 0;
    for (const char* expected : {"<h2>Issues (4)</h2>", "<h3>Errors (2)</h3>", "<b>error</b>: Crash",
                                 "<li>Export</li>", "<b>error</b>: Could not save file", "<h3>Warnings (1)</h3>",
                                 "<div class=\"issue warning\"><b>warning</b>: Texture not found",
                                 "<p>The following textures are missing:</p>", "<li>a.tga</li>",
                                 "<h3>Information (1)</h3>",
                                 "<b>information</b>: Triangle stripping and listing statistics", "<li>12 strips</li>"}) {
        const size_t found = html.find(expected, at);
        ASSERT_NE(found, std::string::npos) << expected << " after position " << at;
        at = found;
    }

    page.Entries.erase(page.Entries.begin());
    EXPECT_EQ(ReportPageHtml(page).find("Warnings"), std::string::npos);
}
