#include "base/Path.h"

#include "tests/UniqueTempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

TEST(Path, SplitsBackslashPaths)
{
    EXPECT_EQ(JoinPath("C:\\out", "level.qmesh"), "C:\\out\\level.qmesh");
    EXPECT_EQ(JoinPath("C:\\out\\", "\\level.qmesh"), "C:\\out\\level.qmesh");
    EXPECT_EQ(JoinPath("", "a"), "a");
    EXPECT_EQ(DirectoryOf("a\\b\\c.txt"), "a\\b");
    EXPECT_EQ(DirectoryOf("c.txt"), "");
    EXPECT_EQ(FileNameOf("a\\b\\c.txt"), "c.txt");
    EXPECT_EQ(ExtensionOf("a.b\\level.QMESH"), ".QMESH");
    EXPECT_EQ(ExtensionOf("a.b\\level"), "");
    EXPECT_EQ(WithoutExtension("out\\level.qmesh"), "out\\level");
    EXPECT_TRUE(IsAbsolutePath("C:\\x"));
    EXPECT_TRUE(IsAbsolutePath("\\tmp"));
    EXPECT_FALSE(IsAbsolutePath("x\\y"));
}

TEST(Path, NativeConversionFindsFilesUnderAnotherCase)
{
    namespace fs = std::filesystem;
    const UniqueTempFolder folder("kestrel_path");
    const fs::path& root = folder.Native();
    fs::create_directories(root / "Textures");
    std::ofstream(root / "Textures" / "wood.tga") << "x";

    const std::string system = FromNativePath(root.string()) + "\\TEXTURES\\Wood.TGA";
    EXPECT_EQ(ToNativePath(system), (root / "Textures" / "wood.tga").string());
    EXPECT_EQ(ToNativePath(FromNativePath(root.string()) + "\\new\\File.txt"), (root / "new" / "File.txt").string());
}
