#include "settings/ResolveTexture.h"

#include "report/VIssueKind.h"
#include "report/VReport.h"
#include "settings/TextureNameTable.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "FakePlatform.h"
#include "ScratchFolder.h"

namespace {

class IssueRecorder final : public VReport {
protected:
    void FillInReportMessage(uint32_t, const std::string&, std::string&, std::string&, std::string&, int32_t&) override {}
};

// art/ holds the artist's source textures; town/ is the project with the target in town/props/.
class ResolveTextureTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_folder.Write("art/Wood.tga", "wood pixels");
        m_folder.Write("town/town.project", "");
        m_folder.MakeFolder("town/props/Textures");
        m_context.TextureDirectory = m_folder.SystemPath("town\\props\\Textures\\");
        m_context.ProjectDirectory = m_folder.SystemPath("town\\");
        m_context.BaseDirectory = m_folder.SystemPath("town\\props\\");
    }

    std::optional<std::string> Resolve(const std::string& source)
    {
        return ResolveTexture(source, m_context, m_names, m_report);
    }
    std::vector<uint32_t> IssueKinds() const
    {
        std::vector<uint32_t> kinds;
        for (const VReportIssue& issue : m_report.Issues())
            kinds.push_back(issue.Kind);
        return kinds;
    }

    ScratchFolder m_folder;
    TextureResolveContext m_context;
    TextureNameTable m_names;
    IssueRecorder m_report;
    LogWindowRecorder m_log;
};

} // namespace

TEST_F(ResolveTextureTest, NoSourceGivesNoNameAndTheColourAtlasIsAnsweredUnchanged)
{
    EXPECT_EQ(Resolve(""), std::nullopt);
    EXPECT_EQ(Resolve("\\vcolors.DDS"), "\\vcolors.DDS");
    EXPECT_TRUE(m_log.Messages.empty());
    EXPECT_EQ(m_names.Size(), 0u);
}

TEST_F(ResolveTextureTest, CopyPutsTheTextureIntoTheTextureDirectory)
{
    const std::string source = m_folder.SystemPath("art\\Wood.tga");
    EXPECT_EQ(Resolve(source), "Textures\\Wood.tga");
    EXPECT_EQ(m_folder.Read("town/props/Textures/Wood.tga"), "wood pixels");
    const std::string target = m_folder.SystemPath("town\\props\\Textures\\Wood.tga");
    EXPECT_EQ(m_log.Messages,
              std::vector<std::string> {"Copying file '" + ShownPath(source) + "' to '" + ShownPath(target) + "'\r\n"});
    EXPECT_TRUE(m_report.Issues().empty());
}

TEST_F(ResolveTextureTest, SameSourceUsedThreeTimesIsCopiedOnce)
{
    const std::string source = m_folder.SystemPath("art\\Wood.tga");
    const auto first = Resolve(source);
    const auto second = Resolve(source);
    const auto third = Resolve(m_folder.SystemPath("art\\WOOD.TGA"));
    EXPECT_EQ(first, "Textures\\Wood.tga");
    EXPECT_EQ(second, first);
    EXPECT_EQ(third, first);
    EXPECT_EQ(m_log.Messages.size(), 1u);
}

TEST_F(ResolveTextureTest, CopyReplacesAnOlderCopyAndLeavesItWritable)
{
    m_folder.Write("town/props/Textures/Wood.tga", "stale");
    std::filesystem::permissions(m_folder.Native("art/Wood.tga"), std::filesystem::perms::owner_read);
    Resolve(m_folder.SystemPath("art\\Wood.tga"));
    EXPECT_EQ(m_folder.Read("town/props/Textures/Wood.tga"), "wood pixels");
    const auto perms = std::filesystem::status(m_folder.Native("town/props/Textures/Wood.tga")).permissions();
    EXPECT_NE(perms & std::filesystem::perms::owner_write, std::filesystem::perms::none);
}

TEST_F(ResolveTextureTest, SourceAlreadyInTheTextureDirectoryIsNotCopied)
{
    m_folder.Write("town/props/Textures/Stone.tga", "stone");
    EXPECT_EQ(Resolve(m_folder.SystemPath("town\\props\\textures\\Stone.tga")), "Textures\\Stone.tga");
    EXPECT_TRUE(m_log.Messages.empty());
    EXPECT_TRUE(m_report.Issues().empty());
}

TEST_F(ResolveTextureTest, MayaPathWithForwardSlashesIsCopiedAlsoWithoutClosingBackslashOnTheTextureDirectory)
{
    m_context.TextureDirectory.pop_back();
    EXPECT_EQ(Resolve(m_folder.Native("art/Wood.tga").string()), "Textures\\Wood.tga");
    EXPECT_TRUE(m_folder.Has("town/props/Textures/Wood.tga"));
}

TEST_F(ResolveTextureTest, FailedCopyIsRaisedAndStillNamed)
{
    const std::string source = m_folder.SystemPath("art\\Missing.tga");
    EXPECT_EQ(Resolve(source), "Textures\\Missing.tga");
    ASSERT_EQ(IssueKinds(), std::vector<uint32_t> {IssueFileNotCopied});
    EXPECT_EQ(m_report.Issues()[0].Detail,
              "'" + ShownPath(source) + "' to '" + ShownPath(m_folder.SystemPath("town\\props\\Textures\\Missing.tga")) + "'\r\n");
}

TEST_F(ResolveTextureTest, AnimatedTextureTakesThePlaceOfItsSource)
{
    m_folder.Write("art/Wood.tga.texanim", "frames");
    EXPECT_EQ(Resolve(m_folder.SystemPath("art\\Wood.tga")), "Textures\\Wood.tga.texanim");
    EXPECT_EQ(m_folder.Read("town/props/Textures/Wood.tga.texanim"), "frames");
}

TEST_F(ResolveTextureTest, ProjectRelativeNamesStartWithABackslashAndNeedAProject)
{
    m_context.ProjRelativeFilenames = true;
    EXPECT_EQ(Resolve(m_folder.SystemPath("art\\Wood.tga")), "\\props\\Textures\\Wood.tga");
    m_context.ProjectDirectory.clear();
    m_names.Clear();
    EXPECT_EQ(Resolve(m_folder.SystemPath("art\\Wood.tga")), "Textures\\Wood.tga");
}

TEST_F(ResolveTextureTest, TextureDirectoryOutsideTheTargetFolderIsNamedWithParentSteps)
{
    m_folder.MakeFolder("town/Textures");
    m_context.TextureDirectory = m_folder.SystemPath("town\\Textures\\");
    EXPECT_EQ(Resolve(m_folder.SystemPath("art\\Wood.tga")), "..\\Textures\\Wood.tga");
}

TEST_F(ResolveTextureTest, LocateFindsTheTextureInASubfolderOrRaisesNotFoundWithTheAssumedPath)
{
    m_context.TextureBehaviour = 1;
    m_folder.Write("town/props/Textures/wood/oak/Bark.dds", "bark");
    EXPECT_EQ(Resolve("C:\\elsewhere\\bark.DDS"), "Textures\\wood\\oak\\Bark.dds");
    EXPECT_TRUE(m_log.Messages.empty());
    EXPECT_TRUE(m_report.Issues().empty());
    EXPECT_FALSE(m_folder.Has("town/props/Textures/bark.DDS"));
    EXPECT_EQ(Resolve("C:\\art\\Stone.dds"), "Textures\\Stone.dds");
    ASSERT_EQ(IssueKinds(), std::vector<uint32_t> {IssueTextureNotFound});
    EXPECT_EQ(m_report.Issues()[0].Detail, ShownPath(m_folder.SystemPath("town\\props\\Textures\\Stone.dds")));
}

// A folder listed before the matching file is searched first, one listed after it is not.
TEST_F(ResolveTextureTest, LocateTakesTheFirstMatchOfTheDepthFirstWalkInListingOrder)
{
    m_context.TextureBehaviour = 1;
    m_folder.Write("town/props/Textures/b/Bark.dds", "b");
    m_folder.Write("town/props/Textures/a/deep/Bark.dds", "a");
    m_folder.Write("town/props/Textures/Bark.dds", "top");
    m_folder.Write("town/props/Textures/z/Bark.dds", "z");
    EXPECT_EQ(Resolve("C:\\art\\Bark.dds"), "Textures\\a\\deep\\Bark.dds");
}

TEST_F(ResolveTextureTest, UnknownBehaviourGivesTheProcessingErrorOnce)
{
    m_context.TextureBehaviour = 7;
    const std::string source = m_folder.SystemPath("art\\Wood.tga");
    EXPECT_EQ(Resolve(source), "<texture processing error during export>");
    EXPECT_EQ(m_names.Find(source), "<texture processing error during export>");
    EXPECT_FALSE(m_folder.Has("town/props/Textures/Wood.tga"));
}
