#include "base/FileSystem.h"

#include "base/Path.h"
#include "tests/UniqueTempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class FileSystemTest : public ::testing::Test {
protected:
    UniqueTempFolder m_folder{"kestrel_fs"};
    const std::filesystem::path& m_native = m_folder.Native();
    const std::string m_root = m_folder.SystemPath();
};

} // namespace

TEST_F(FileSystemTest, CreatesEveryLevelAndListsInCaseInsensitiveOrder)
{
    ASSERT_TRUE(CreateDirectories(m_root + "\\a\\b\\c"));
    EXPECT_TRUE(DirectoryExists(m_root + "\\a\\b\\c"));
    ASSERT_TRUE(WriteFileAtomically(m_root + "\\a\\beta.txt", "1"));
    ASSERT_TRUE(WriteFileAtomically(m_root + "\\a\\Alpha.txt", "2"));
    const auto entries = ListDirectory(m_root + "\\a");
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].Name, "Alpha.txt");
    EXPECT_EQ(entries[1].Name, "b");
    EXPECT_TRUE(entries[1].IsDirectory);
    EXPECT_EQ(entries[2].Name, "beta.txt");
    EXPECT_EQ(FindFileNoCase(m_root + "\\a", "ALPHA.TXT"), "Alpha.txt");
    EXPECT_EQ(FindFileNoCase(m_root + "\\a", "gamma.txt"), std::nullopt);
}

TEST_F(FileSystemTest, AtomicWriteReplacesContentsAndLeavesNoTemporary)
{
    const std::string file = m_root + "\\out.bin";
    ASSERT_TRUE(WriteFileAtomically(file, std::string("old")));
    ASSERT_TRUE(WriteFileAtomically(file, std::string("new\0data", 8)));
    std::string contents;
    ASSERT_TRUE(ReadWholeFile(file, contents));
    EXPECT_EQ(contents, std::string("new\0data", 8));
    EXPECT_EQ(ListDirectory(m_root).size(), 1u);
}

TEST_F(FileSystemTest, FailedWriteKeepsThePreviousFileAndExplains)
{
    const std::string file = m_root + "\\keep.txt";
    ASSERT_TRUE(WriteFileAtomically(file, "previous"));
    std::filesystem::permissions(m_native, std::filesystem::perms::owner_write, std::filesystem::perm_options::remove);
    if (IsWritableDirectory(m_root))
        GTEST_SKIP() << "running with rights that ignore folder permissions";
    std::string error;
    EXPECT_FALSE(WriteFileAtomically(file, "next", &error));
    EXPECT_NE(error.find("cannot create"), std::string::npos) << error;
    std::string contents;
    ASSERT_TRUE(ReadWholeFile(file, contents));
    EXPECT_EQ(contents, "previous");
}

TEST_F(FileSystemTest, CopyAndDeleteReportMissingSources)
{
    std::string error;
    EXPECT_FALSE(CopyFileTo(m_root + "\\missing.tga", m_root + "\\copy.tga", true, &error));
    EXPECT_FALSE(error.empty());
    ASSERT_TRUE(WriteFileAtomically(m_root + "\\src.tga", "pixels"));
    EXPECT_TRUE(CopyFileTo(m_root + "\\SRC.TGA", m_root + "\\copy.tga", false));
    EXPECT_TRUE(FileExists(m_root + "\\copy.tga"));
    EXPECT_TRUE(DeleteFileAt(m_root + "\\copy.tga"));
    EXPECT_FALSE(FileExists(m_root + "\\copy.tga"));
    EXPECT_TRUE(DeleteFileAt(m_root + "\\copy.tga")) << "deleting what is gone already succeeds";
    std::string contents;
    EXPECT_FALSE(ReadWholeFile(m_root + "\\copy.tga", contents, &error));
}

TEST_F(FileSystemTest, WriteIntoMissingFolderFailsWithTheFolderNamed)
{
    std::string error;
    EXPECT_FALSE(WriteFileAtomically(m_root + "\\no_such_folder\\x.qmesh", "data", &error));
    EXPECT_NE(error.find("no_such_folder"), std::string::npos) << error;
}
