#include "formats/chunk/VFileStreamProvider.h"

#include "ChunkTestBytes.h"
#include "base/FileSystem.h"
#include "base/Path.h"
#include "formats/chunk/ChunkId.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "tests/UniqueTempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

class ChunkFileOnDiskTest : public ::testing::Test {
protected:
    std::string FileBytes(const std::string& path) const
    {
        std::string bytes;
        return ReadWholeFile(path, bytes) ? bytes : std::string("<unreadable>");
    }

    UniqueTempFolder m_folder{"kestrel_chunk"};
    const std::filesystem::path& m_native = m_folder.Native();
    const std::string m_root = m_folder.SystemPath();
};

} // namespace

TEST_F(ChunkFileOnDiskTest, WrittenFileIsOnDiskOnlyAfterClose)
{
    const std::string path = m_root + "\\Body.model";
    VChunkedFile file;
    ASSERT_TRUE(file.Create(path));
    ASSERT_TRUE(file.StartChunk(MakeChunkId("HEAD")));
    ASSERT_TRUE(file.WriteInt(1));
    ASSERT_TRUE(file.EndChunk());
    EXPECT_FALSE(FileExists(path));
    ASSERT_TRUE(file.Close());
    EXPECT_EQ(FileBytes(path), HeaderBytes() + IntBytes(0) + IntBytes(MakeChunkId("HEAD")) + IntBytes(4) +
                                   IntBytes(1) + IntBytes(0) + IntBytes(MakeChunkId("HEAD")) + IntBytes(0xFFFFFFFF));
}

TEST_F(ChunkFileOnDiskTest, FileIsFoundIgnoringTheCaseOfItsName)
{
    VChunkedFile writer;
    ASSERT_TRUE(writer.Create(m_root + "\\Body.model"));
    ASSERT_TRUE(writer.Close());
    VChunkedFile reader;
    ASSERT_TRUE(reader.Open(m_root + "\\BODY.MODEL"));
    EXPECT_FALSE(reader.OpenChunk(VChunkedFile::AnyChunk));
    EXPECT_TRUE(reader.Close());
}

TEST_F(ChunkFileOnDiskTest, FailedWriteLeavesThePreviousFileIntact)
{
    const std::string path = m_root + "\\Body.model";
    ASSERT_TRUE(WriteFileAtomically(path, "previous export"));
    VChunkedFile file;
    ASSERT_TRUE(file.Create(path));
    ASSERT_TRUE(file.StartChunk(MakeChunkId("HEAD"), 0));
    EXPECT_FALSE(file.WriteInt(1));
    EXPECT_FALSE(file.Close());
    EXPECT_EQ(FileBytes(path), "previous export");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_native), std::filesystem::directory_iterator()), 1)
        << "no temporary file is left behind";
}

TEST_F(ChunkFileOnDiskTest, AbandonedWriteLeavesNoFile)
{
    const std::string path = m_root + "\\Body.model";
    {
        VChunkedFile file;
        ASSERT_TRUE(file.Create(path));
        ASSERT_TRUE(file.StartChunk(MakeChunkId("HEAD")));
    }
    EXPECT_FALSE(FileExists(path));
}

TEST_F(ChunkFileOnDiskTest, CreateWhereNoFileCanBeAndOpenOfWhatIsNoFileFailWithTheName)
{
    for (const std::string& path : {m_root + "\\missing\\Body.model", m_root}) {
        VChunkedFile file;
        EXPECT_FALSE(file.Create(path));
        EXPECT_EQ(LastError().Text, "File '" + path + "' could not be created");
        EXPECT_EQ(file.GetMode(), VChunkedFile::Mode::Error);
    }
    for (const std::string& path : {m_root + "\\Absent.model", m_root}) {
        VChunkedFile file;
        EXPECT_FALSE(file.Open(path));
        EXPECT_EQ(LastError().Text, "File '" + path + "' not found");
    }
}
