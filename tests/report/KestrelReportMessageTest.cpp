#include <gtest/gtest.h>

#include <string>

#include "report/KestrelReportMessage.h"
#include "report/VIssueKind.h"

namespace {

VReportEntry FinalizeOne(uint32_t kind, const char* detail)
{
    KestrelReportMessage report;
    report.AddIssue(kind, detail);
    report.Finalize(0);
    EXPECT_EQ(report.Entries().size(), 1u);
    return report.Entries().empty() ? VReportEntry {} : report.Entries()[0];
}

struct ExpectedRow {
    uint32_t Kind;
    const char* Title;
    int32_t Severity;
    // The detail for one raised issue with the detail "N".
    const char* Detail;
};

// The rows that decide how the table is read: each detail form, the default header, a header
// without its line break, each severity, the misspelt titles, the last row and unknown kinds.
const ExpectedRow DecisiveRows[] = {
    { 0, "Crash", 2, "In:\r\nN\r\n" },
    { 6, "Bumpmapping/opacity mapping ingnored", 1,
      "The following surface was untextured and can not be combined with bumpmapping or opacity mapping:\r\nN\r\n" },
    { 10, "Project not found", 2, "You can create a project file from the File->Export dialog" },
    { 11, "Skeleton inconsistency", 2, "The following bones were affected:N\r\n" },
    { 14, "Different vertex/polygon count before and after skinning", 2, "The affected nodes were:\r\nN\r\n" },
    { 15, "Empty scene", 1, "" },
    { 24, "Multiple materials with the same name", 1, "The following materials had duplicate names:\r\nN\r\n" },
    { 36, "A Bone&Muscle animation name ended with a number", 1, "The following animations had this problem:\r\nN\r\n" },
    { 48, "Model has more than 65536 vertices", 1, "N\r\n" },
    { 50, "Triangle stripping and listing statistics", 0, "N\r\n" },
    { 54, "Node has invalid Tangents", 2, "N\r\n" },
    { 55, "Collision object without volume", 1, "The following nodes kept their triangles in the collision mesh:\r\nN\r\n" },
    { 56, "Internal error: Unknown error", 2, "The error data was:\r\nN\r\n" },
    { 0xFFFFFFFFu, "Internal error: Unknown error", 2, "The error data was:\r\nN\r\n" },
};

TEST(KestrelReportMessage, DecisiveRowsHaveTheirTitleSeverityAndDetailForm)
{
    for (const ExpectedRow& row : DecisiveRows) {
        SCOPED_TRACE("kind " + std::to_string(row.Kind));
        const VReportEntry entry = FinalizeOne(row.Kind, "N");
        EXPECT_EQ(entry.Title, row.Title);
        EXPECT_EQ(entry.Severity, row.Severity);
        EXPECT_EQ(entry.Detail, row.Detail);
    }
}

TEST(KestrelReportMessage, EveryKindButTheUntexturedSurfaceExplainsItselfInFullSentences)
{
    for (uint32_t kind = 0; kind < IssueKindCount; ++kind) {
        SCOPED_TRACE("kind " + std::to_string(kind));
        const std::string explanation = FinalizeOne(kind, "").Explanation;
        if (kind == IssueBumpOpacityOnUntextured) {
            EXPECT_EQ(explanation, "");
            continue;
        }
        ASSERT_GT(explanation.size(), 40u);
        EXPECT_TRUE(explanation[0] >= 'A' && explanation[0] <= 'Z');
    }
}

// The explanations whose exact bytes matter: the double blank of the crash, the line breaks and
// quotes of the vertex limit, the missing blank after "textures," of the colour materials.
TEST(KestrelReportMessage, TellingExplanationsAreWordForWord)
{
    EXPECT_EQ(FinalizeOne(IssueCrash, "").Explanation,
              "The export was not successful. Something caused it to crash. Please, report this to support. Tip: "
              "Turn on Debug printout in the Global Settings and export again. That way, you'll have a  fairly "
              "accurate idea of what went on before the crash.\r\n\r\nDon't forget to make a backup of your Maya "
              "scene now!");
    EXPECT_EQ(FinalizeOne(IssueMoreThan64kVertices, "").Explanation,
              "The model to be exported has more than 65536 vertices, although\r\nthe \"Warn if model has > 65536 "
              "vertices (Wii hardware limit)\" flag\r\nhas been set.");
    EXPECT_EQ(FinalizeOne(IssueColorMaterialsGenerated, "").Explanation,
              "After collating the materials, at least one color material was found. This material has been "
              "converted to textures,and will not slow down the engine noticeably. However, color materials are "
              "usually a matter of texture export failure, and can occur because of one of the following "
              "reasons:\r\n\r\n- Texture is broken or has unsupported format\r\n- Texture could not be read or "
              "written\r\n- Texture is not present (you might want this, though)\r\n- Material is not present. "
              "Color material generated\r\n\r\nYou can highlight the color materials in the structure preview. If "
              "you don't want this message to occur, you can turn it off in the Global Settings menu.");
    EXPECT_EQ(FinalizeOne(IssueKindCount, "").Explanation,
              "It seems like an error message of an unknown type was issued. Please, report this error through "
              "Helpvane.");
}

// Through the module's one report, which must carry the exporter's table.
TEST(KestrelReportMessage, DetailsOfOneKindAreListedUnderOneHeaderSkippingEmptyOnes)
{
    VReport& report = ModuleReport();
    report.Clear();
    report.AddIssue(IssueTextureNotFound, "a.tga");
    report.AddIssue(IssueTextureNotFound, "b.tga");
    report.AddIssue(IssueTextureNotFound, "");
    report.AddIssue(IssueMoreThan64kVertices);
    report.AddIssue(IssueMoreThan64kVertices);
    report.Finalize(0);

    ASSERT_EQ(report.Entries().size(), 2u);
    EXPECT_EQ(report.Entries()[0].Detail, "The following textures are missing:\r\na.tga\r\nb.tga\r\n");
    EXPECT_EQ(report.Entries()[1].Detail, "");
    report.Clear();
}

} // namespace
