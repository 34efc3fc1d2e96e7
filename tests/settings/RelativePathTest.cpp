#include "settings/RelativePath.h"

#include <gtest/gtest.h>

TEST(RelativePath, PathInsideTheFolderLosesTheFolder)
{
    EXPECT_EQ(RelativePath("C:\\game\\Textures\\wood.dds", "C:\\game\\"), "Textures\\wood.dds");
    EXPECT_EQ(RelativePath("C:\\game\\Textures\\wood.dds", "C:\\game"), "Textures\\wood.dds");
}

TEST(RelativePath, FolderComponentsCompareIgnoringCase)
{
    EXPECT_EQ(RelativePath("C:\\Game\\textures\\wood.dds", "c:\\GAME\\"), "textures\\wood.dds");
}

TEST(RelativePath, PathOutsideTheFolderClimbsWithParentSteps)
{
    EXPECT_EQ(RelativePath("C:\\game\\Textures\\a.dds", "C:\\game\\levels\\town\\"), "..\\..\\Textures\\a.dds");
}

TEST(RelativePath, ForwardSlashesAreAccepted)
{
    EXPECT_EQ(RelativePath("/work/game/Textures/a.dds", "\\work\\game\\"), "Textures\\a.dds");
}

TEST(RelativePath, NothingSharedKeepsThePath)
{
    EXPECT_EQ(RelativePath("D:\\art\\a.dds", "C:\\game\\"), "D:\\art\\a.dds");
    EXPECT_EQ(RelativePath("art\\a.dds", "C:\\game\\"), "art\\a.dds");
    EXPECT_EQ(RelativePath("C:\\art\\a.dds", ""), "C:\\art\\a.dds");
}
