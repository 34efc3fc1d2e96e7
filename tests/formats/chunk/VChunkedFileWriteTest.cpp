#include "formats/chunk/VChunkedFile.h"

#include "ChunkTestBytes.h"
#include "formats/chunk/ChunkId.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkStream.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr uint32_t Head = MakeChunkId("HEAD");
constexpr uint32_t Modl = MakeChunkId("MODL");

struct Message {
    std::string Text;
    uint32_t ChunkId;
    uint32_t Position;
};

class RecordingChunkedFile : public VChunkedFile {
public:
    std::vector<Message> Warnings;
    std::vector<Message> Errors;

protected:
    void OnWarning(const std::string& text, uint32_t chunkId, uint32_t position) override
    {
        Warnings.push_back({text, chunkId, position});
    }
    void OnError(const std::string& text, uint32_t chunkId, uint32_t position) override
    {
        Errors.push_back({text, chunkId, position});
    }
};

// Takes at most capacity bytes and then refuses to commit, as a full disk would.
class FullDiskProvider : public VChunkStreamProvider {
public:
    explicit FullDiskProvider(size_t capacity)
        : m_capacity(capacity)
    {
    }
    std::unique_ptr<VChunkInStream> OpenInput(std::string_view) override { return nullptr; }
    std::unique_ptr<VChunkOutStream> CreateOutput(std::string_view) override
    {
        return std::make_unique<FullDiskStream>(m_capacity);
    }

private:
    class FullDiskStream : public VChunkOutStream {
    public:
        explicit FullDiskStream(size_t capacity)
            : m_left(capacity)
        {
        }
        size_t Write(const void*, size_t length) override
        {
            const size_t taken = std::min(length, m_left);
            m_left -= taken;
            return taken;
        }
        bool Commit(std::string& error) override
        {
            error = "no space left on device";
            return false;
        }

    private:
        size_t m_left;
    };
    size_t m_capacity;
};

class ChunkWriteTest : public ::testing::Test {
protected:
    std::string Written() const
    {
        const std::string* bytes = m_files.FindFile("out.model");
        return bytes ? *bytes : std::string("<not written>");
    }

    VMemoryStreamProvider m_files;
    RecordingChunkedFile m_file;
};

} // namespace

TEST_F(ChunkWriteTest, FileWithoutChunksIsHeaderAndEndMarker)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.Close());
    EXPECT_EQ(Written(), Bytes({
                             0x56, 0x42, 0x49, 0x4E, // magic "VBIN"
                             0x00, 0x00, 0x01, 0x00, // version 0x00010000
                             0xFF, 0xFF, 0xFF, 0xFF, // end marker -1
                         }));
}

TEST_F(ChunkWriteTest, DeferredChunkGetsItsContentSizePatched)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Head));
    const uint8_t content[] = {0x01, 0x00};
    EXPECT_EQ(m_file.Write(content, 2), 2);
    ASSERT_TRUE(m_file.EndChunk());
    ASSERT_TRUE(m_file.Close());
    EXPECT_EQ(Written(), HeaderBytes() + Bytes({
                                             0x00, 0x00, 0x00, 0x00, // depth 0
                                             0x44, 0x41, 0x45, 0x48, // 'HEAD' little-endian
                                             0x02, 0x00, 0x00, 0x00, // content size 2
                                             0x01, 0x00,             // content
                                             0x00, 0x00, 0x00, 0x00, // end tag: depth 0
                                             0x44, 0x41, 0x45, 0x48, // end tag: 'HEAD'
                                             0xFF, 0xFF, 0xFF, 0xFF, // end marker
                                         }));
}

TEST_F(ChunkWriteTest, NestedChunkHasDepthOneAndCountsWholeInItsParent)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Modl));
    EXPECT_EQ(m_file.GetPosition(), 16u) << "header, depth and identifier go straight to the stream";
    ASSERT_TRUE(m_file.WriteInt(7));
    ASSERT_TRUE(m_file.StartChunk(Head));
    ASSERT_TRUE(m_file.WriteInt(-2));
    ASSERT_TRUE(m_file.EndChunk());
    EXPECT_EQ(m_file.GetPosition(), 16u) << "a deferred top-level chunk reaches the stream only when it ends";
    ASSERT_TRUE(m_file.EndChunk());
    EXPECT_EQ(m_file.GetPosition(), 8u + 20u + 28u);
    ASSERT_TRUE(m_file.Close());
    EXPECT_EQ(Written(), HeaderBytes() + Bytes({
                                             0x00, 0x00, 0x00, 0x00, // depth 0
                                             0x4C, 0x44, 0x4F, 0x4D, // 'MODL'
                                             0x1C, 0x00, 0x00, 0x00, // size 28 = 4 + (20 + 4)
                                             0x07, 0x00, 0x00, 0x00, // int 7
                                             0x01, 0x00, 0x00, 0x00, //   depth 1
                                             0x44, 0x41, 0x45, 0x48, //   'HEAD'
                                             0x04, 0x00, 0x00, 0x00, //   size 4
                                             0xFE, 0xFF, 0xFF, 0xFF, //   int -2
                                             0x01, 0x00, 0x00, 0x00, //   end tag: depth 1
                                             0x44, 0x41, 0x45, 0x48, //   end tag: 'HEAD'
                                             0x00, 0x00, 0x00, 0x00, // end tag: depth 0
                                             0x4C, 0x44, 0x4F, 0x4D, // end tag: 'MODL'
                                             0xFF, 0xFF, 0xFF, 0xFF, // end marker
                                         }));
}

TEST_F(ChunkWriteTest, ChunkOfKnownSizeIsWrittenAsItGoes)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Head, 4));
    EXPECT_EQ(m_file.GetPosition(), 20u);
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 4);
    ASSERT_TRUE(m_file.WriteInt(9));
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 0);
    ASSERT_TRUE(m_file.EndChunk());
    ASSERT_TRUE(m_file.Close());
    EXPECT_EQ(Written(), HeaderBytes() + IntBytes(0) + IntBytes(Head) + IntBytes(4) + IntBytes(9) + IntBytes(0) +
                             IntBytes(Head) + IntBytes(0xFFFFFFFF));
    EXPECT_TRUE(m_file.Warnings.empty());
}

TEST_F(ChunkWriteTest, ChunkEndedShortOfItsKnownSizeIsFilledWithZerosAndWarned)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Head, 8));
    const uint8_t content[] = {0xAA, 0xBB, 0xCC};
    ASSERT_EQ(m_file.Write(content, 3), 3);
    ASSERT_TRUE(m_file.EndChunk());
    ASSERT_TRUE(m_file.Close());

    ASSERT_EQ(m_file.Warnings.size(), 1u);
    EXPECT_EQ(m_file.Warnings[0].Text, "Not enough bytes written to chunk. Filling up 5 bytes");
    EXPECT_EQ(m_file.Warnings[0].ChunkId, Head);
    EXPECT_EQ(Written(), HeaderBytes() + IntBytes(0) + IntBytes(Head) + IntBytes(8) +
                             Bytes({0xAA, 0xBB, 0xCC, 0x00, 0x00, 0x00, 0x00, 0x00}) + IntBytes(0) + IntBytes(Head) +
                             IntBytes(0xFFFFFFFF));
    EXPECT_TRUE(m_file.Errors.empty());
}

TEST_F(ChunkWriteTest, StringsStoreLengthAndBytesWithoutTerminatorAndFillsRepeatTheByte)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Head));
    ASSERT_TRUE(m_file.WriteString("abc"));
    ASSERT_TRUE(m_file.WriteString(static_cast<const char*>(nullptr)));
    ASSERT_TRUE(m_file.WriteString(std::string()));
    ASSERT_TRUE(m_file.WriteFill(3, 0x5A));
    EXPECT_TRUE(m_file.WriteFill(0, 0x11));
    EXPECT_TRUE(m_file.WriteFill(-4, 0x11));
    ASSERT_TRUE(m_file.EndChunk());
    ASSERT_TRUE(m_file.Close());
    EXPECT_EQ(Written().substr(16, 22), IntBytes(18) + Bytes({
                                                           0x03, 0x00, 0x00, 0x00, 0x61, 0x62, 0x63, // "abc"
                                                           0xFF, 0xFF, 0xFF, 0xFF,                   // null text
                                                           0x00, 0x00, 0x00, 0x00,                   // empty text
                                                           0x5A, 0x5A, 0x5A,                         // fill
                                                       }));
}

TEST_F(ChunkWriteTest, ManyNestedDeferredChunksAllGetTheirSizes)
{
    constexpr int levels = 40;
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    for (int level = 0; level < levels; ++level)
        ASSERT_TRUE(m_file.StartChunk(Head));
    ASSERT_TRUE(m_file.WriteInt(5));
    for (int level = 0; level < levels; ++level)
        ASSERT_TRUE(m_file.EndChunk());
    ASSERT_TRUE(m_file.Close());

    const std::string bytes = Written();
    ASSERT_EQ(bytes.size(), 8u + levels * 20u + 4u + 4u);
    for (int level = 0; level < levels; ++level) {
        const size_t tag = 8u + 12u * static_cast<size_t>(level);
        EXPECT_EQ(bytes.substr(tag, 12),
                  IntBytes(static_cast<uint32_t>(level)) + IntBytes(Head) +
                      IntBytes(static_cast<uint32_t>(4 + 20 * (levels - 1 - level))));
    }
}

TEST_F(ChunkWriteTest, WritePastKnownSizeFailsAndWritesNothing)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Head, 2));
    EXPECT_FALSE(m_file.WriteInt(1));
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Error);
    EXPECT_EQ(LastError().Text, "Tried to write chunk data beyond chunk size");
    EXPECT_EQ(LastError().ChunkId, Head);
    EXPECT_EQ(LastError().Position, 20u);
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(m_files.FindFile("out.model"), nullptr);
}

TEST_F(ChunkWriteTest, EveryWayOfOverrunningAKnownSizeFails)
{
    const std::function<bool(VChunkedFile&)> overruns[] = {
        // A string that does not fit writes not even its length.
        [](VChunkedFile& f) { return f.StartChunk(Head, 6) && (f.WriteString("abc") || f.GetPosition() != 20u); },
        [](VChunkedFile& f) { return f.StartChunk(Head, 4) && f.WriteFill(5, 0); },
        // A nested deferred chunk is checked against its parent's size when the parent ends.
        [](VChunkedFile& f) {
            return f.StartChunk(Modl, 10) && f.StartChunk(Head) && f.WriteInt(1) && f.EndChunk() && f.EndChunk();
        },
        [](VChunkedFile& f) { return f.StartChunk(Modl) && f.StartChunk(Head, 4) && f.WriteInt(3) && f.WriteInt(4); },
    };
    for (size_t k = 0; k < std::size(overruns); ++k) {
        RecordingChunkedFile file;
        ASSERT_TRUE(file.Create("out.model", &m_files));
        EXPECT_FALSE(overruns[k](file)) << k;
        EXPECT_EQ(LastError().Text, "Tried to write chunk data beyond chunk size") << k;
        EXPECT_FALSE(file.Close()) << k;
    }
}

TEST_F(ChunkWriteTest, KnownSizeChunkInsideDeferredChunkIsFilledUpInTheBuffer)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Modl));
    ASSERT_TRUE(m_file.StartChunk(Head, 4));
    ASSERT_TRUE(m_file.EndChunk());
    ASSERT_TRUE(m_file.EndChunk());
    ASSERT_TRUE(m_file.Close());
    ASSERT_EQ(m_file.Warnings.size(), 1u);
    EXPECT_EQ(m_file.Warnings[0].Text, "Not enough bytes written to chunk. Filling up 4 bytes");
    EXPECT_EQ(Written(), HeaderBytes() + IntBytes(0) + IntBytes(Modl) + IntBytes(24) + IntBytes(1) + IntBytes(Head) +
                             IntBytes(4) + IntBytes(0) + IntBytes(1) + IntBytes(Head) + IntBytes(0) + IntBytes(Modl) +
                             IntBytes(0xFFFFFFFF));
}

TEST_F(ChunkWriteTest, CloseWithAnOpenChunkFailsAndLeavesNoFile)
{
    m_files.SetFile("out.model", "previous");
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Head));
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(LastError().Text, "Chunk stack corruption. Missing end tag?");
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Error);
    EXPECT_EQ(Written(), "previous");
}

TEST_F(ChunkWriteTest, EndChunkWithoutAnOpenChunkIsStackCorruption)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    EXPECT_FALSE(m_file.EndChunk());
    EXPECT_EQ(LastError().Text, "Chunk stack corruption");
    m_file.Close();
}

TEST_F(ChunkWriteTest, EveryOperationFailsOnceTheFileIsInError)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Head, 0));
    ASSERT_FALSE(m_file.WriteInt(1));
    const uint8_t byte = 1;
    EXPECT_EQ(m_file.Write(&byte, 1), 0);
    EXPECT_FALSE(m_file.WriteString("x"));
    EXPECT_FALSE(m_file.WriteFill(1, 0));
    EXPECT_FALSE(m_file.StartChunk(Modl));
    EXPECT_FALSE(m_file.EndChunk());
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 0);
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Error);
    ASSERT_EQ(m_file.Errors.size(), 1u) << "only the first failure is reported";
    EXPECT_EQ(m_file.Errors[0].Text, "Tried to write chunk data beyond chunk size");
    EXPECT_EQ(m_file.Errors[0].ChunkId, Head);
    EXPECT_EQ(m_file.Errors[0].Position, 20u);
}

TEST_F(ChunkWriteTest, OperationsOutsideTheirModeFail)
{
    EXPECT_FALSE(m_file.StartChunk(Head));
    EXPECT_FALSE(m_file.WriteInt(1));
    EXPECT_FALSE(m_file.EndChunk());
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Closed);

    SetLastError("Failed to create file 'x'");
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    EXPECT_EQ(LastError().Text, "") << "a new file starts without the last error";
    int32_t value = 0;
    EXPECT_EQ(m_file.ReadInt(value), 0);
    EXPECT_FALSE(m_file.OpenChunk(VChunkedFile::AnyChunk));
    EXPECT_EQ(m_file.ReadString(), "");
    EXPECT_FALSE(m_file.Create("other.model", &m_files));
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Writing);
    EXPECT_TRUE(m_file.Close());
}

TEST_F(ChunkWriteTest, ObjectCanWriteAgainAfterAFailedFileIsClosed)
{
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    ASSERT_TRUE(m_file.StartChunk(Head));
    EXPECT_FALSE(m_file.Close());
    ASSERT_TRUE(m_file.Create("out.model", &m_files));
    EXPECT_TRUE(m_file.Close());
    EXPECT_EQ(Written(), HeaderBytes() + IntBytes(0xFFFFFFFF));
}

TEST(ChunkWriteFailureTest, FailedCommitFailsCloseWithTheReason)
{
    FullDiskProvider disk(1000);
    VChunkedFile file;
    ASSERT_TRUE(file.Create("out.model", &disk));
    EXPECT_FALSE(file.Close());
    EXPECT_EQ(LastError().Text, "File 'out.model' could not be written: no space left on device");
    EXPECT_EQ(file.GetMode(), VChunkedFile::Mode::Error);
}

TEST(ChunkWriteFailureTest, StreamTakingFewerBytesThanWrittenIsAnError)
{
    FullDiskProvider disk(30);
    VChunkedFile file;
    ASSERT_TRUE(file.Create("out.model", &disk));
    ASSERT_TRUE(file.StartChunk(Head));
    ASSERT_TRUE(file.WriteFill(100, 1));
    EXPECT_FALSE(file.EndChunk());
    EXPECT_EQ(LastError().Text, "File 'out.model' could not be written");
    EXPECT_EQ(LastError().Position, 30u);
    EXPECT_FALSE(file.Close());
}
