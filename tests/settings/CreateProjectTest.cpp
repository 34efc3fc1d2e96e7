#include "settings/CreateProject.h"

#include <gtest/gtest.h>

#include "ScratchFolder.h"

TEST(CreateProject, CreatesTheEmptyProjectFileAndTheStandardFolders)
{
    ScratchFolder folder;
    std::string error;
    ASSERT_TRUE(CreateProject(folder.SystemPath("games\\town\\town"), &error)) << error;
    EXPECT_TRUE(folder.Has("games/town/town.project"));
    EXPECT_EQ(folder.Read("games/town/town.project"), "");
    for (const char* name : {"Textures", "Prefabs", "Models", "Meshes", "Shaders"})
        EXPECT_TRUE(std::filesystem::is_directory(folder.Native(std::string("games/town/") + name))) << name;
}

TEST(CreateProject, ProjectAnywhereInThePathCountsAsTheExtension)
{
    ScratchFolder folder;
    ASSERT_TRUE(CreateProject(folder.SystemPath("town.Project")));
    EXPECT_TRUE(folder.Has("town.Project"));
    EXPECT_FALSE(folder.Has("town.Project.project"));
    ASSERT_TRUE(CreateProject(folder.SystemPath("town.projects\\main")));
    EXPECT_TRUE(folder.Has("town.projects/main"));
    EXPECT_TRUE(folder.Has("town.projects/Textures"));
}

TEST(CreateProject, ExistingProjectFileIsNeverReplaced)
{
    ScratchFolder folder;
    folder.Write("town.project", "editor data");
    std::string error;
    EXPECT_FALSE(CreateProject(folder.SystemPath("town"), &error));
    EXPECT_NE(error.find("already exists"), std::string::npos) << error;
    EXPECT_EQ(folder.Read("town.project"), "editor data");
    EXPECT_FALSE(folder.Has("Textures"));
}

TEST(CreateProject, ExistingStandardFoldersAreKept)
{
    ScratchFolder folder;
    folder.Write("Textures/wood.dds", "pixels");
    ASSERT_TRUE(CreateProject(folder.SystemPath("town")));
    EXPECT_EQ(folder.Read("Textures/wood.dds"), "pixels");
    EXPECT_TRUE(folder.Has("Shaders"));
}

TEST(CreateProject, FolderThatCannotBeCreatedFails)
{
    ScratchFolder folder;
    folder.Write("blocker", "a file where the folder should be");
    std::string error;
    EXPECT_FALSE(CreateProject(folder.SystemPath("blocker\\town"), &error));
    EXPECT_FALSE(error.empty());
}
