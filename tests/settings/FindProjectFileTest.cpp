#include "settings/FindProjectFile.h"

#include <gtest/gtest.h>

#include "ScratchFolder.h"

TEST(FindProjectFile, ProjectInTheStartFolderIsFound)
{
    ScratchFolder folder;
    folder.Write("x/y/z/town.project", "");
    const auto project = FindProjectFile(folder.SystemPath("x\\y\\z\\"));
    ASSERT_TRUE(project);
    EXPECT_EQ(project->Directory, folder.SystemPath("x\\y\\z\\"));
    EXPECT_EQ(project->File, folder.SystemPath("x\\y\\z\\town.project"));
}

TEST(FindProjectFile, SearchClimbsToTheParentFolders)
{
    ScratchFolder folder;
    folder.MakeFolder("x/y/z");
    folder.Write("x/town.project", "");
    const auto project = FindProjectFile(folder.SystemPath("x\\y\\z\\"));
    ASSERT_TRUE(project);
    EXPECT_EQ(project->Directory, folder.SystemPath("x\\"));
    EXPECT_EQ(project->File, folder.SystemPath("x\\town.project"));
}

TEST(FindProjectFile, NearestProjectWins)
{
    ScratchFolder folder;
    folder.MakeFolder("x/y/z");
    folder.Write("x/outer.project", "");
    folder.Write("x/y/inner.project", "");
    const auto project = FindProjectFile(folder.SystemPath("x\\y\\z\\"));
    ASSERT_TRUE(project);
    EXPECT_EQ(project->File, folder.SystemPath("x\\y\\inner.project"));
}

TEST(FindProjectFile, NoProjectAnywhereFindsNothing)
{
    ScratchFolder folder;
    folder.MakeFolder("x/y/z");
    EXPECT_FALSE(FindProjectFile(folder.SystemPath("x\\y\\z\\")));
}

TEST(FindProjectFile, ExtensionMatchesIgnoringCase)
{
    ScratchFolder folder;
    folder.Write("x/Town.PROJECT", "");
    const auto project = FindProjectFile(folder.SystemPath("x"));
    ASSERT_TRUE(project);
    EXPECT_EQ(project->Directory, folder.SystemPath("x\\"));
    EXPECT_EQ(project->File, folder.SystemPath("x\\Town.PROJECT"));
}

TEST(FindProjectFile, FoldersAndOtherFilesAreNotProjectsButABareDotProjectIs)
{
    ScratchFolder folder;
    folder.MakeFolder("x/y/z/folder.project");
    folder.Write("x/y/z/town.project.bak", "");
    folder.Write("x/y/.project", "");
    const auto project = FindProjectFile(folder.SystemPath("x\\y\\z\\"));
    ASSERT_TRUE(project);
    EXPECT_EQ(project->File, folder.SystemPath("x\\y\\.project"));
}

TEST(FindProjectFile, FirstProjectInNameOrderWins)
{
    ScratchFolder folder;
    folder.Write("x/b.project", "");
    folder.Write("x/A.project", "");
    const auto project = FindProjectFile(folder.SystemPath("x\\"));
    ASSERT_TRUE(project);
    EXPECT_EQ(project->File, folder.SystemPath("x\\A.project"));
}

TEST(FindProjectFile, PathWithFewerThanTwoSeparatorsIsNotSearched)
{
    EXPECT_FALSE(FindProjectFile(""));
    EXPECT_FALSE(FindProjectFile("C:\\"));
    EXPECT_FALSE(FindProjectFile("relative"));
}
