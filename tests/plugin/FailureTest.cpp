// Exports that go wrong: the report carries the failure, Maya gets the status the artist
// expects.

#include "PluginFixture.h"
#include "TestScenes.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

using ::testing::HasSubstr;

namespace {

class FailedExport : public PluginFixture {};

TEST_F(FailedExport, UnwritableTargetIsIssueFourWithSuccessStatus)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    // A folder in the target's place cannot be replaced by the mesh file.
    std::filesystem::create_directories(Native("blocked.qmesh"));

    EXPECT_TRUE(ExportAll("blocked.qmesh"));
    const VReportEntry* entry = Report.Find("Could not save file");
    ASSERT_NE(entry, nullptr);
    EXPECT_THAT(entry->Detail, HasSubstr("blocked.qmesh"));
    EXPECT_THAT(Read("ErrLog.txt"), HasSubstr("Could not save file"));
}

TEST_F(FailedExport, ReadOnlyTargetFolderIsIssueFourWithSuccessStatus)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    std::filesystem::create_directories(Native("locked/Textures"));
    std::filesystem::permissions(Native("locked"), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    struct Unlock {
        std::filesystem::path Folder;
        ~Unlock() { std::filesystem::permissions(Folder, std::filesystem::perms::owner_all); }
    } unlock {Native("locked")};
    if (std::ofstream(Native("locked/probe")).is_open())
        GTEST_SKIP() << "this user can write into read-only folders";

    EXPECT_TRUE(ExportAll("locked/town.qmesh"));
    const VReportEntry* entry = Report.Find("Could not save file");
    ASSERT_NE(entry, nullptr);
    EXPECT_THAT(entry->Detail, HasSubstr("town.qmesh"));
}

TEST_F(FailedExport, CrashInsideThePipelineBecomesTheCrashIssueAndTheNextExportRunsNormally)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    Log.OnMessage = [](std::string_view message) {
        if (message == "Checking materials...\r\n")
            throw std::runtime_error("broken phase");
    };

    EXPECT_FALSE(ExportAll("crash.qmesh"));
    const VReportEntry* entry = Report.Find("Crash");
    ASSERT_NE(entry, nullptr);
    EXPECT_THAT(entry->Detail, HasSubstr("In:\r\nExport"));
    EXPECT_TRUE(Log.Has("***Crash during export***"));
    EXPECT_THAT(Read("ErrLog.txt"), HasSubstr("Crash"));
    EXPECT_FALSE(Has("crash.qmesh"));

    Log.OnMessage = {};
    Report.Entries.clear();
    EXPECT_TRUE(ExportAll("second.qmesh"));
    EXPECT_TRUE(Has("second.qmesh"));
    EXPECT_EQ(Report.Find("Crash"), nullptr);
}

} // namespace
