#include "settings/TextureDirectory.h"

#include "settings/VExportOptions.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

VExportOptions Options(std::string subfolder, bool useProject)
{
    VExportOptions options;
    options.TextureSubdir = std::move(subfolder);
    options.TextureUseProjDir = useProject;
    return options;
}

} // namespace

TEST(TextureDirectory, SubfolderOfTheProjectWhenItIsUsedOtherwiseOfTheTarget)
{
    EXPECT_EQ(TextureDirectoryFromOptions(Options("Maps", true), "C:\\town\\", "C:\\town\\props\\"), "C:\\town\\Maps\\");
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

TEST(TextureDirectory, LeadingSeparatorInnerParentStepAndForwardSlashesAreKeptAsASystemPath)
{
    const std::pair<const char*, const char*> kept[] = {
        {"\\maps", "C:\\props\\maps\\"},
        {"/maps", "C:\\props\\maps\\"},
        {"maps\\..\\up", "C:\\props\\maps\\..\\up\\"},
        {"art/maps", "C:\\props\\art\\maps\\"},
    };
    for (const auto& [subfolder, directory] : kept)
        EXPECT_EQ(TextureDirectoryFromOptions(Options(subfolder, false), "", "C:\\props\\"), directory) << subfolder;
    EXPECT_TRUE(IsValidTextureSubfolder("maps.v2\\hi..res"));
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
