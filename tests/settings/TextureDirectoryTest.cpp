#include "settings/TextureDirectory.h"

#include "settings/VExportOptions.h"

#include <gtest/gtest.h>

namespace {

VExportOptions Options(std::string subfolder, bool useProject)
{
    VExportOptions options;
    options.TextureSubdir = std::move(subfolder);
    options.TextureUseProjDir = useProject;
    return options;
}

} // namespace

TEST(TextureDirectory, SubfolderOfTheProjectWhenItIsUsed)
{
    EXPECT_EQ(TextureDirectoryFromOptions(Options("Maps", true), "C:\\town\\", "C:\\town\\props\\"), "C:\\town\\Maps\\");
}

TEST(TextureDirectory, SubfolderOfTheTargetWhenTheProjectIsNotUsedOrMissing)
{
    EXPECT_EQ(TextureDirectoryFromOptions(Options("Maps\\", false), "C:\\town\\", "C:\\town\\props\\"),
              "C:\\town\\props\\Maps\\");
    EXPECT_EQ(TextureDirectoryFromOptions(Options("Maps", true), "", "C:\\props\\"), "C:\\props\\Maps\\");
}

TEST(TextureDirectory, EmptyAbsoluteOrParentSubfolderFallsBackToTextures)
{
    for (const char* subfolder : {"", "..\\shared", "..", "..maps", "C:\\maps", "\\\\server\\maps", "//server/maps"})
        EXPECT_EQ(TextureDirectoryFromOptions(Options(subfolder, false), "", "C:\\props\\"), "C:\\props\\Textures\\")
            << subfolder;
}

TEST(TextureDirectory, LeadingSeparatorOrInnerParentStepIsKept)
{
    for (const char* subfolder : {"\\maps", "/maps"})
        EXPECT_EQ(TextureDirectoryFromOptions(Options(subfolder, false), "", "C:\\props\\"), "C:\\props\\maps\\")
            << subfolder;
    EXPECT_EQ(TextureDirectoryFromOptions(Options("maps\\..\\up", false), "", "C:\\props\\"),
              "C:\\props\\maps\\..\\up\\");
    EXPECT_TRUE(IsValidTextureSubfolder("maps.v2\\hi..res"));
}

TEST(TextureDirectory, NestedSubfolderWithForwardSlashesBecomesASystemPath)
{
    EXPECT_EQ(TextureDirectoryFromOptions(Options("art/maps", false), "", "C:\\props\\"), "C:\\props\\art\\maps\\");
}

TEST(TextureDirectory, DisplayShowsTheFolderItselfForAnEmptySubfolder)
{
    EXPECT_EQ(TextureDirectoryForDisplay("", true, "C:\\town\\", "C:\\town\\props\\"), "C:\\town\\");
    EXPECT_EQ(TextureDirectoryForDisplay("", false, "C:\\town\\", "C:\\town\\props\\"), "C:\\town\\props\\");
    EXPECT_EQ(TextureDirectoryForDisplay("maps", true, "C:\\town\\", "C:\\town\\props\\"), "C:\\town\\maps\\");
}

TEST(TextureDirectory, DisplayShowsInvalidForAbsoluteOrParentSubfolders)
{
    EXPECT_EQ(TextureDirectoryForDisplay("..\\maps", true, "C:\\town\\", "C:\\t\\"), "Invalid");
    EXPECT_EQ(TextureDirectoryForDisplay("D:\\maps", true, "C:\\town\\", "C:\\t\\"), "Invalid");
    EXPECT_TRUE(IsInvalidTextureDirectory("INVALID"));
    EXPECT_FALSE(IsInvalidTextureDirectory("C:\\town\\Invalid\\"));
}

TEST(TextureDirectory, RefusalMessageExplainsWhatIsAllowed)
{
    EXPECT_EQ(kInvalidTextureSubdirMessage,
              "The texture subdirectory is not allowed to be an absolute path or contain '..\\'.\r\n"
              "Please specify just a relative subdirectory like 'textures'");
}
