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

constexpr const char* Default = "The affected nodes were:\r\nN\r\n";

// Typed from the exporter's message vocabulary, independently of the table in the code.
const ExpectedRow ExpectedRows[] = {
    { 0, "Crash", 2, "In:\r\nN\r\n" },
    { 1, "Maya version too old for this plugin", 2, "Minimum required version:\r\nN\r\n" },
    { 2, "Triangle estimation failed", 2, "" },
    { 3, "Could not load texture", 1, "The following files could not be loaded:\r\nN\r\n" },
    { 4, "Could not save file", 2, "This file could not be written:\r\nN\r\n" },
    { 5, "Could not copy file", 2, "The following files could not be copied:\r\nN\r\n" },
    { 6, "Bumpmapping/opacity mapping ingnored", 1,
      "The following surface was untextured and can not be combined with bumpmapping or opacity mapping:\r\nN\r\n" },
    { 7, "Could not save texture", 2, "The following files could not be written:\r\nN\r\n" },
    { 8, "Could not mallocate", 2, "Mallocation failed in:\r\nN\r\n" },
    { 9, "Internal error: Too many things", 2, "Found too many of:\r\nN\r\n" },
    { 10, "Project not found", 2, "You can create a project file from the File->Export dialog" },
    { 11, "Skeleton inconsistency", 2, "The following bones were affected:N\r\n" },
    { 12, "Multiple bones with same name", 2, "The following conflicting bones names were found:\r\nN\r\n" },
    { 13, "Internal error: Encoding consistency failure", 2, "" },
    { 14, "Different vertex/polygon count before and after skinning", 2, Default },
    { 15, "Empty scene", 1, "" },
    { 16, "Too many polygons in model", 1, "The model had the following data:\r\nN\r\n" },
    { 17, "Extremely low scaling detected", 1, "Scaling value:\r\nN\r\n" },
    { 18, "Node without material", 1, "The following nodes did not have any material:\r\nN\r\n" },
    { 19, "Could not replace texture", 1, "The following files could not be replaced:\r\nN\r\n" },
    { 20, "Texture not found", 1, "The following textures are missing:\r\nN\r\n" },
    { 21, "Broken texture file", 1, "The following files are broken:\r\nN\r\n" },
    { 22, "Illegal material type", 1, "The following materials are affected:\r\nN\r\n" },
    { 23, "Color material with bump map", 1, "The following materials are affected:\r\nN\r\n" },
    { 24, "Multiple materials with the same name", 1, "The following materials had duplicate names:\r\nN\r\n" },
    { 25, "Texture file type not supported", 1, "The following textures had unsupported file types:\r\nN\r\n" },
    { 26, "Opacity map file should match color map file", 1,
      "The following materials had opacity maps that were not the same as the texture map:\r\nN\r\n" },
    { 27, "Bumpmap ignored", 2, Default },
    { 28, "Opacity map ignored", 2, Default },
    { 29, "Getting mesh failed", 1, "The following Maya nodes have this problem:\r\nN\r\n" },
    { 30, "Vertex with no UV mapping", 1, "The following mesh nodes have vertices with no UV mapping:\r\nN\r\n" },
    { 31, "No skin was found", 1, "The following nodes were not skinned:\r\nN\r\n" },
    { 32, "NULL bone found in skin influence list", 1, "" },
    { 33, "Nonexistent mesh node referenced in skin", 1, "The following mesh nodes were not found:\r\nN\r\n" },
    { 34, "Rigid skinning cluster without joint", 1, "The following clusters did not have joints:\r\nN\r\n" },
    { 35, "Unknown animation type", 1, "The following animations were of unknown type:\r\nN\r\n" },
    { 36, "A Bone&Muscle animation name ended with a number", 1, "The following animations had this problem:\r\nN\r\n" },
    { 37, "Too many animation frames", 1, "The following animations had too many key frames:\r\nN\r\n" },
    { 38, "Animation without frames", 1, "The following animations had no key frames:\r\nN\r\n" },
    { 39, "Bone animation with all bones eliminated", 1, "" },
    { 40, "No bones found in animation", 2, "" },
    { 41, "Bone with animated scaling found", 1, "The following bones had animated scaling:\r\nN\r\n" },
    { 42, "The number of vertices is different in muscle animation", 1,
      "The following animations had the wrong number of vertices:\r\nN\r\n" },
    { 43, "File missing from target directory", 1, "N\r\n" },
    { 44, "Vertex without skinning information", 1, "N\r\n" },
    { 45, "Bone animation adjustment failed", 1, "" },
    { 46, "Illegal name detected", 1, "The following entries had this problem:\r\nN\r\n" },
    { 47, "Invalid dag node requested", 1, "The following invalid DAG nodes were requested:\r\nN\r\n" },
    { 48, "Model has more than 65536 vertices", 1, "N\r\n" },
    { 49, "Dummy bone animation created", 0, "" },
    { 50, "Triangle stripping and listing statistics", 0, "N\r\n" },
    { 51, "Zephra memory estimate", 0, "N\r\n" },
    { 52, "Color materials generated", 0, "N\r\n" },
    { 53, "Node has invalid texture UVs", 2, "N\r\n" },
    { 54, "Node has invalid Tangents", 2, "N\r\n" },
    { 55, "Collision object without volume", 1, "The following nodes kept their triangles in the collision mesh:\r\nN\r\n" },
};

}

TEST(KestrelReportMessage, EveryKindHasItsTitleSeverityAndDetailForm)
{
    ASSERT_EQ(std::size(ExpectedRows), size_t { IssueKindCount });
    for (const ExpectedRow& row : ExpectedRows) {
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

TEST(KestrelReportMessage, MissingTexturesAreListedUnderTheirHeaderSkippingEmptyDetails)
{
    KestrelReportMessage report;
    report.AddIssue(IssueTextureNotFound, "a.tga");
    report.AddIssue(IssueTextureNotFound, "b.tga");
    report.AddIssue(IssueTextureNotFound, "");
    report.Finalize(0);

    ASSERT_EQ(report.Entries().size(), 1u);
    EXPECT_EQ(report.Entries()[0].Detail, "The following textures are missing:\r\na.tga\r\nb.tga\r\n");
    EXPECT_EQ(report.Entries()[0].Severity, SeverityWarning);
}

TEST(KestrelReportMessage, TwoEmptyVertexLimitIssuesGiveOneWarningWithEmptyDetail)
{
    KestrelReportMessage report;
    report.AddIssue(IssueMoreThan64kVertices);
    report.AddIssue(IssueMoreThan64kVertices);
    report.Finalize(0);

    ASSERT_EQ(report.Entries().size(), 1u);
    EXPECT_EQ(report.Entries()[0].Severity, SeverityWarning);
    EXPECT_EQ(report.Entries()[0].Detail, "");
    EXPECT_EQ(report.Entries()[0].Explanation,
              "The model to be exported has more than 65536 vertices, although\r\nthe \"Warn if model has > 65536 "
              "vertices (Wii hardware limit)\" flag\r\nhas been set.");
}

TEST(KestrelReportMessage, ProjectNotFoundShowsItsFixedDetailWhateverTheRaiserPassed)
{
    const VReportEntry entry = FinalizeOne(IssueProjectNotFound, "d:\\game\\level.prefab");
    EXPECT_EQ(entry.Detail, "You can create a project file from the File->Export dialog");
}

TEST(KestrelReportMessage, CrashNamesWhereItHappened)
{
    const VReportEntry entry = FinalizeOne(IssueCrash, "Export");
    EXPECT_EQ(entry.Detail, "In:\r\nExport\r\n");
    EXPECT_EQ(entry.Explanation,
              "The export was not successful. Something caused it to crash. Please, report this to support. Tip: "
              "Turn on Debug printout in the Global Settings and export again. That way, you'll have a  fairly "
              "accurate idea of what went on before the crash.\r\n\r\nDon't forget to make a backup of your Maya "
              "scene now!");
}

TEST(KestrelReportMessage, ColorMaterialsExplanationListsTheReasonsOnLinesOfTheirOwn)
{
    const std::string explanation = FinalizeOne(IssueColorMaterialsGenerated, "").Explanation;
    EXPECT_EQ(explanation,
              "After collating the materials, at least one color material was found. This material has been "
              "converted to textures,and will not slow down the engine noticeably. However, color materials are "
              "usually a matter of texture export failure, and can occur because of one of the following "
              "reasons:\r\n\r\n- Texture is broken or has unsupported format\r\n- Texture could not be read or "
              "written\r\n- Texture is not present (you might want this, though)\r\n- Material is not present. "
              "Color material generated\r\n\r\nYou can highlight the color materials in the structure preview. If "
              "you don't want this message to occur, you can turn it off in the Global Settings menu.");
}

TEST(KestrelReportMessage, UnknownKindIsAnInternalErrorWithItsData)
{
    const VReportEntry entry = FinalizeOne(IssueKindCount, "stray");
    EXPECT_EQ(entry.Title, "Internal error: Unknown error");
    EXPECT_EQ(entry.Explanation, "It seems like an error message of an unknown type was issued. Please, report "
                                 "this error through Helpvane.");
    EXPECT_EQ(entry.Detail, "The error data was:\r\nstray\r\n");
    EXPECT_EQ(entry.Severity, SeverityError);
}

TEST(KestrelReportMessage, LargestKindNumberIsUnknownToo)
{
    EXPECT_EQ(FinalizeOne(0xFFFFFFFFu, "").Title, "Internal error: Unknown error");
}

TEST(KestrelReportMessage, ErrorsOnlyDropsWarningsAndInformation)
{
    KestrelReportMessage report;
    report.AddIssue(IssueStripStatistics, "12 strips");
    report.AddIssue(IssueTextureNotFound, "a.tga");
    report.AddIssue(IssueFileNotSaved, "a.qmesh");
    report.Finalize(SeverityError);

    ASSERT_EQ(report.Entries().size(), 1u);
    EXPECT_EQ(report.Entries()[0].Title, "Could not save file");
}

TEST(KestrelReportMessage, ModuleReportIsOneObjectWithTheExportersTable)
{
    VReport& report = ModuleReport();
    EXPECT_EQ(&report, &ModuleReport());
    report.Clear();
    report.AddIssue(IssueEmptyScene);
    report.Finalize(0);
    ASSERT_EQ(report.Entries().size(), 1u);
    EXPECT_EQ(report.Entries()[0].Title, "Empty scene");
    report.Clear();
}
