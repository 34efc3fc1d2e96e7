#include "formats/chunk/VChunkedFile.h"

#include "ChunkTestBytes.h"
#include "formats/chunk/ChunkId.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VMemoryStreamProvider.h"
#include "formats/ChunkReading.h"

#include <gtest/gtest.h>

#include <utility>

#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr uint32_t Head = MakeChunkId("HEAD");
constexpr uint32_t Modl = MakeChunkId("MODL");
constexpr uint32_t Geom = MakeChunkId("GEOM");
constexpr uint32_t Bnds = MakeChunkId("BNDS");
constexpr uint32_t EndMarker = 0xFFFFFFFF;

std::string Chunk(uint32_t depth, uint32_t id, const std::string& content)
{
    return IntBytes(depth) + IntBytes(id) + IntBytes(static_cast<uint32_t>(content.size())) + content +
           IntBytes(depth) + IntBytes(id);
}

std::string StartTag(uint32_t depth, uint32_t id, uint32_t size)
{
    return IntBytes(depth) + IntBytes(id) + IntBytes(size);
}

// Reads every chunk as a tree of chunks the way our readers walk children; true only when the
// whole file was read and closed cleanly.
bool WalkChildren(VChunkedFile& file)
{
    while (file.GetRemainingChunkBytes() > 0) {
        if (!file.OpenChunk(VChunkedFile::AnyChunk) || !WalkChildren(file) || !file.EndChunk())
            return false;
    }
    return true;
}

bool WalkFile(VMemoryStreamProvider& files, const std::string& bytes)
{
    files.SetFile("in.model", bytes);
    VChunkedFile file;
    if (!file.Open("in.model", &files))
        return false;
    while (file.OpenChunk(VChunkedFile::AnyChunk)) {
        if (!WalkChildren(file) || !file.EndChunk())
            break;
    }
    const bool endedAtTheMarker = file.GetMode() == VChunkedFile::Mode::EndOfInput;
    return file.Close() && endedAtTheMarker;
}

class ChunkReadTest : public ::testing::Test {
protected:
    bool OpenBytes(const std::string& bytes)
    {
        m_files.SetFile("in.model", bytes);
        return m_file.Open("in.model", &m_files);
    }

    VMemoryStreamProvider m_files;
    VChunkedFile m_file;
};

// Damaged and forged files: every read must end in a clean failure, never a crash, a hang or a huge allocation.
class HostileChunkInputTest : public ChunkReadTest {};

} // namespace

TEST_F(ChunkReadTest, EmptyFileOpensAndEndsAtTheMarker)
{
    SetLastError("Failed to open file 'x'");
    ASSERT_TRUE(OpenBytes(HeaderBytes() + IntBytes(EndMarker)));
    EXPECT_EQ(m_file.GetVersion(), 0x00010000u);
    EXPECT_FALSE(m_file.OpenChunk(VChunkedFile::AnyChunk));
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::EndOfInput);
    EXPECT_EQ(m_file.GetDepth(), -1);
    EXPECT_EQ(LastError().Text, "");
    EXPECT_TRUE(m_file.Close());
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Closed);
}

TEST_F(ChunkReadTest, OpenChunkReportsIdentifierAndSize)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Head, Bytes({0x01, 0x00})) + IntBytes(EndMarker)));
    uint32_t id = 0;
    int32_t size = 0;
    ASSERT_TRUE(m_file.OpenChunk(Head, &id, &size));
    EXPECT_EQ(id, Head);
    EXPECT_EQ(size, 2);
    EXPECT_EQ(m_file.GetCurrentChunkId(), Head);
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 2);
    uint8_t content[2] = {};
    EXPECT_EQ(m_file.Read(content, 2), 2);
    EXPECT_EQ(content[0], 0x01);
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 0);
    EXPECT_TRUE(m_file.EndChunk());
    EXPECT_FALSE(m_file.OpenChunk(VChunkedFile::AnyChunk));
    EXPECT_TRUE(m_file.Close());
}

TEST_F(ChunkReadTest, WrittenFileReadsBackThroughTheSameClass)
{
    VChunkedFile writer;
    ASSERT_TRUE(writer.Create("round.model", &m_files));
    ASSERT_TRUE(writer.StartChunk(Modl));
    ASSERT_TRUE(writer.WriteString("root"));
    ASSERT_TRUE(writer.StartChunk(Geom));
    const float position[3] = {1.5f, -2.0f, 1e-3f};
    ASSERT_EQ(writer.Write(position, sizeof position), static_cast<int>(sizeof position));
    ASSERT_TRUE(writer.EndChunk());
    ASSERT_TRUE(writer.StartChunk(Bnds));
    ASSERT_TRUE(writer.WriteInt(-42));
    ASSERT_TRUE(writer.EndChunk());
    ASSERT_TRUE(writer.EndChunk());
    ASSERT_TRUE(writer.Close());

    ASSERT_TRUE(m_file.Open("round.model", &m_files));
    ASSERT_TRUE(m_file.OpenChunk(Modl));
    EXPECT_EQ(m_file.ReadString(), "root");
    std::vector<uint32_t> children;
    while (m_file.GetRemainingChunkBytes() > 0) {
        uint32_t id = 0;
        ASSERT_TRUE(m_file.OpenChunk(VChunkedFile::AnyChunk, &id));
        children.push_back(id);
        if (id == Geom) {
            float read[3] = {};
            EXPECT_EQ(m_file.ReadTyped(read, sizeof read, "fff"), static_cast<int>(sizeof read));
            EXPECT_EQ(read[0], 1.5f);
            EXPECT_EQ(read[1], -2.0f);
            EXPECT_EQ(read[2], 1e-3f);
        } else {
            int32_t value = 0;
            EXPECT_EQ(m_file.ReadInt(value), 4);
            EXPECT_EQ(value, -42);
        }
        ASSERT_TRUE(m_file.EndChunk());
    }
    EXPECT_EQ(children, (std::vector<uint32_t> {Geom, Bnds}));
    ASSERT_TRUE(m_file.EndChunk());
    EXPECT_FALSE(m_file.OpenChunk(VChunkedFile::AnyChunk));
    EXPECT_TRUE(m_file.Close());
}

TEST_F(ChunkReadTest, ReadTypedDecodesLittleEndianElementsRepeatingTheLayout)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Head,
                                                IntBytes(0xFFFFFFFE) +      // 'i' -2
                                                    Bytes({0x34, 0x12}) +   // 's' 0x1234
                                                    IntBytes(0x3FC00000) +  // 'f' 1.5
                                                    IntBytes(7) +           // 'i' 7 (layout repeats)
                                                    Bytes({0xFF, 0xFF}) +   // 's' -1
                                                    IntBytes(0xC0000000)) + // 'f' -2.0
                          IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Head));
    uint8_t record[20] = {};
    ASSERT_EQ(m_file.ReadTyped(record, sizeof record, "isf"), 20);
    int32_t first = 0;
    int16_t second = 0;
    float third = 0;
    std::memcpy(&first, record, 4);
    std::memcpy(&second, record + 4, 2);
    std::memcpy(&third, record + 6, 4);
    EXPECT_EQ(first, -2);
    EXPECT_EQ(second, 0x1234);
    EXPECT_EQ(third, 1.5f);
    std::memcpy(&first, record + 10, 4);
    std::memcpy(&second, record + 14, 2);
    std::memcpy(&third, record + 16, 4);
    EXPECT_EQ(first, 7);
    EXPECT_EQ(second, -1);
    EXPECT_EQ(third, -2.0f);
    EXPECT_TRUE(m_file.EndChunk());
}

TEST_F(ChunkReadTest, ReadStringGivesEmptyTextForNullAndEmptyStringsAndLongOnesWhole)
{
    const std::string text(200000, 'x');
    ASSERT_TRUE(OpenBytes(HeaderBytes() +
                          Chunk(0, Head, IntBytes(0xFFFFFFFF) + IntBytes(0) + IntBytes(2) + Bytes({'h', 'i'}) +
                                             IntBytes(static_cast<uint32_t>(text.size())) + text) +
                          IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Head));
    EXPECT_EQ(m_file.ReadString(), "");
    EXPECT_EQ(m_file.ReadString(), "");
    EXPECT_EQ(m_file.ReadString(), "hi");
    EXPECT_EQ(m_file.ReadString(), text);
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 0);
    EXPECT_TRUE(m_file.EndChunk());
}

TEST_F(ChunkReadTest, EndChunkSkipsUnreadContentAndNestedChunks)
{
    const std::string inner = Chunk(1, Geom, IntBytes(1) + IntBytes(2));
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, IntBytes(5) + inner + std::string(3000, 'z')) +
                          Chunk(0, Head, IntBytes(9)) + IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Modl));
    int32_t value = 0;
    ASSERT_EQ(m_file.ReadInt(value), 4);
    ASSERT_TRUE(m_file.EndChunk());
    ASSERT_TRUE(m_file.OpenChunk(Head));
    ASSERT_EQ(m_file.ReadInt(value), 4);
    EXPECT_EQ(value, 9);
    EXPECT_TRUE(m_file.EndChunk());
}

TEST_F(ChunkReadTest, FindChunkSkipsOtherChunksAndStopsAtTheWantedOne)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, IntBytes(1)) + Chunk(0, Geom, IntBytes(2)) +
                          Chunk(0, Head, IntBytes(3)) + IntBytes(EndMarker)));
    uint32_t id = 0;
    int32_t size = 0;
    ASSERT_TRUE(m_file.FindChunk(&id, &size, Head));
    EXPECT_EQ(id, Head);
    EXPECT_EQ(size, 4);
    int32_t value = 0;
    ASSERT_EQ(m_file.ReadInt(value), 4);
    EXPECT_EQ(value, 3);
    EXPECT_TRUE(m_file.EndChunk());
    m_file.Close();
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Geom, "") + IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.FindChunk(&id, nullptr, VChunkedFile::AnyChunk));
    EXPECT_EQ(id, Geom);
}

TEST_F(ChunkReadTest, FindChunkOfAMissingChunkEndsTheInputWithoutError)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, IntBytes(1)) + IntBytes(EndMarker)));
    EXPECT_FALSE(m_file.FindChunk(nullptr, nullptr, Head));
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::EndOfInput);
    EXPECT_FALSE(m_file.FindChunk(nullptr, nullptr, VChunkedFile::AnyChunk));
    EXPECT_EQ(LastError().Text, "");
    EXPECT_TRUE(m_file.Close());
}

TEST_F(ChunkReadTest, FindChunkLooksOnlyAmongTheChildrenOfTheOpenChunk)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, Chunk(1, Geom, "") + Chunk(1, Bnds, IntBytes(6))) +
                          IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Modl));
    uint32_t id = 0;
    ASSERT_TRUE(m_file.FindChunk(&id, nullptr, Bnds));
    EXPECT_EQ(m_file.GetDepth(), 1);
    ASSERT_TRUE(m_file.EndChunk());
    EXPECT_EQ(m_file.GetCurrentChunkId(), Modl);
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 0);
    ASSERT_TRUE(m_file.EndChunk());
    EXPECT_TRUE(m_file.Close());
}

TEST_F(ChunkReadTest, UnexpectedIdentifierNamesActualThenExpected)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, "") + IntBytes(EndMarker)));
    EXPECT_FALSE(m_file.OpenChunk(Head));
    EXPECT_EQ(LastError().Text, "Unexpected chunk ID; actual: 0x4D4F444C, expected: 0x48454144");
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Error);
    EXPECT_FALSE(m_file.Close());
}

TEST_F(ChunkReadTest, OlderVersionsAreReadAndBrokenHeadersRefusedWithTheirReason)
{
    ASSERT_TRUE(OpenBytes(Bytes({0x56, 0x42, 0x49, 0x4E}) + IntBytes(0x00000001) + IntBytes(EndMarker)));
    EXPECT_EQ(m_file.GetVersion(), 1u);
    EXPECT_TRUE(m_file.Close());

    const std::pair<std::string, const char*> headers[] = {
        {Bytes({0x56, 0x42, 0x49, 0x4E}) + IntBytes(0x00010001) + IntBytes(EndMarker), "File version not supported"},
        {Bytes({0x56, 0x42, 0x49, 0x4E, 0x00, 0x00}), "File version not supported"},
        {Bytes({0x56, 0x42, 0x49, 0x4F}) + IntBytes(0x00010000) + IntBytes(EndMarker), "File is not a valid binary file"},
        {Bytes({0x56, 0x42}), "File is not a valid binary file"},
    };
    for (const auto& [bytes, reason] : headers) {
        EXPECT_FALSE(OpenBytes(bytes));
        EXPECT_EQ(LastError().Text, reason);
        EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Error);
        EXPECT_FALSE(m_file.Close());
    }
    EXPECT_FALSE(OpenBytes(headers[0].first));
    EXPECT_EQ(LastError().Position, 8u);
    EXPECT_FALSE(m_file.Close());
    EXPECT_FALSE(m_file.Open("absent.model", &m_files));
    EXPECT_EQ(LastError().Text, "File 'absent.model' not found");
    EXPECT_FALSE(m_file.Close());
}

TEST_F(ChunkReadTest, ReadPastTheChunkEndFailsAndReadsNothing)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Head, Bytes({1, 2})) + IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Head));
    int32_t value = 77;
    EXPECT_EQ(m_file.ReadInt(value), 0);
    EXPECT_EQ(value, 77);
    EXPECT_EQ(LastError().Text, "Tried to read chunk data beyond chunk size");
    EXPECT_EQ(LastError().ChunkId, Head);
    EXPECT_EQ(LastError().Position, 20u);
    EXPECT_EQ(m_file.GetPosition(), 20u);
    EXPECT_FALSE(m_file.EndChunk());
    EXPECT_FALSE(m_file.Close());
}

TEST_F(ChunkReadTest, TagsOfTheWrongIdentifierOrDepthAreStackCorruption)
{
    const std::string endTags[] = {IntBytes(0) + IntBytes(Geom), IntBytes(1) + IntBytes(Head)};
    for (const std::string& endTag : endTags) {
        ASSERT_TRUE(OpenBytes(HeaderBytes() + IntBytes(0) + IntBytes(Head) + IntBytes(0) + endTag + IntBytes(EndMarker)));
        ASSERT_TRUE(m_file.OpenChunk(Head));
        EXPECT_FALSE(m_file.EndChunk());
        EXPECT_EQ(LastError().Text, "Chunk stack corruption");
        m_file.Close();
    }
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(1, Head, "") + IntBytes(EndMarker)));
    EXPECT_FALSE(m_file.OpenChunk(VChunkedFile::AnyChunk));
    EXPECT_EQ(LastError().Text, "Chunk stack corruption");
}

TEST_F(ChunkReadTest, EndMarkerInsideAChunkEndsTheInput)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, IntBytes(EndMarker)) + IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Modl));
    EXPECT_FALSE(m_file.OpenChunk(VChunkedFile::AnyChunk));
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::EndOfInput);
    EXPECT_EQ(m_file.GetDepth(), 0);
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 0) << "a loop over the children must end";
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(LastError().Text, "Chunk stack corruption. Missing end tag?");
}

TEST_F(ChunkReadTest, WritingFailsWhileReadingAndCloseWithAnOpenChunkIsAMissingEndTag)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Head, "") + IntBytes(EndMarker)));
    EXPECT_FALSE(m_file.StartChunk(Head));
    EXPECT_FALSE(m_file.WriteInt(1));
    EXPECT_FALSE(m_file.WriteString("x"));
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Reading);
    ASSERT_TRUE(m_file.OpenChunk(Head));
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(LastError().Text, "Chunk stack corruption. Missing end tag?");
}

TEST_F(HostileChunkInputTest, EveryTruncationOfAValidFileFailsCleanly)
{
    const std::string whole = HeaderBytes() +
                              Chunk(0, Modl, Chunk(1, Geom, Chunk(2, Head, "") + Chunk(2, Head, "")) +
                                                 Chunk(1, Head, "")) +
                              Chunk(0, Head, "") + IntBytes(EndMarker);
    ASSERT_TRUE(WalkFile(m_files, whole));
    for (size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(WalkFile(m_files, whole.substr(0, length))) << "cut after " << length << " bytes";
}

TEST_F(HostileChunkInputTest, ArrayOfAChunkClaimingMoreThanTheFileHoldsTakesNoMoreMemoryThanTheFileGives)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + StartTag(0, Head, 64 << 20) + IntBytes(7) + IntBytes(8)));
    ASSERT_TRUE(m_file.OpenChunk(Head));
    std::vector<uint32_t> values;
    EXPECT_FALSE(ReadChunkArray(m_file, 16 << 20, values));
    EXPECT_LE(values.capacity() * sizeof(uint32_t), size_t(1) << 20);
}

TEST_F(HostileChunkInputTest, ChildReachingPastItsParentIsRefused)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, StartTag(1, Head, 4) + IntBytes(0)) + IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Modl));
    EXPECT_FALSE(m_file.OpenChunk(VChunkedFile::AnyChunk)) << "its end tag would lie outside the parent";
    EXPECT_EQ(LastError().Text, "Tried to read chunk data beyond chunk size");
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 0);
}

TEST_F(HostileChunkInputTest, NegativeChunkSizeIsStackCorruption)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + StartTag(0, Head, 0xFFFFFFF0) + IntBytes(0) + IntBytes(Head) +
                          IntBytes(EndMarker)));
    EXPECT_FALSE(m_file.OpenChunk(VChunkedFile::AnyChunk));
    EXPECT_EQ(LastError().Text, "Chunk stack corruption");
}

TEST_F(HostileChunkInputTest, StartTagCutByTheParentsEndIsRefused)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, IntBytes(1) + IntBytes(Head)) + IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Modl));
    EXPECT_FALSE(m_file.OpenChunk(VChunkedFile::AnyChunk));
    EXPECT_EQ(LastError().Text, "Tried to read chunk data beyond chunk size");
}

TEST_F(HostileChunkInputTest, StringLongerThanItsChunkFailsBeforeReading)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Head, IntBytes(0x7FFFFFF0) + "abc") + IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Head));
    EXPECT_EQ(m_file.ReadString(), "");
    EXPECT_EQ(LastError().Text, "Tried to read chunk data beyond chunk size");
    EXPECT_EQ(m_file.GetPosition(), 24u);
}

TEST_F(HostileChunkInputTest, ForgedStringLengthInAForgedChunkSizeEndsAtTheDataEnd)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + StartTag(0, Head, 0x7FFFFFFF) + IntBytes(0x7FFFFFF0) + "abc"));
    ASSERT_TRUE(m_file.OpenChunk(Head));
    EXPECT_EQ(m_file.ReadString(), "");
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::EndOfInput);
    EXPECT_EQ(m_file.GetRemainingChunkBytes(), 0);
    EXPECT_FALSE(m_file.EndChunk());
    EXPECT_FALSE(m_file.Close());
}

TEST_F(HostileChunkInputTest, SkippingAForgedChunkSizeEndsAtTheDataEnd)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + StartTag(0, Head, 0x7FFFFFFF) + std::string(5000, 'q')));
    ASSERT_TRUE(m_file.OpenChunk(Head));
    EXPECT_FALSE(m_file.EndChunk());
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::EndOfInput);
    EXPECT_EQ(m_file.GetPosition(), 20u + 5000u);
}

TEST_F(HostileChunkInputTest, FindChunkStopsAtDamageInsteadOfLooping)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, "") + IntBytes(0) + IntBytes(Geom) + IntBytes(0) +
                          IntBytes(0) + IntBytes(Modl)));
    EXPECT_FALSE(m_file.FindChunk(nullptr, nullptr, Head));
    EXPECT_EQ(LastError().Text, "Chunk stack corruption");
}

TEST_F(HostileChunkInputTest, DeepNestingWithoutEndTagsIsReadUntilTheDataEnds)
{
    constexpr uint32_t levels = 5000;
    std::string bytes = HeaderBytes();
    for (uint32_t depth = 0; depth < levels; ++depth)
        bytes += StartTag(depth, Head, 0x7FFFFFFF - 20 * depth);
    ASSERT_TRUE(OpenBytes(bytes));
    uint32_t opened = 0;
    while (m_file.OpenChunk(Head))
        ++opened;
    EXPECT_EQ(opened, levels);
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::EndOfInput);
    EXPECT_FALSE(m_file.Close());
}

TEST_F(HostileChunkInputTest, ChildLoopEndsAfterAnErrorInsideAChild)
{
    ASSERT_TRUE(OpenBytes(HeaderBytes() + Chunk(0, Modl, StartTag(1, Head, 0) + IntBytes(7) + IntBytes(Head)) +
                          IntBytes(EndMarker)));
    ASSERT_TRUE(m_file.OpenChunk(Modl));
    int rounds = 0;
    while (m_file.GetRemainingChunkBytes() > 0 && rounds < 10) {
        ++rounds;
        m_file.OpenChunk(VChunkedFile::AnyChunk);
        m_file.EndChunk();
    }
    EXPECT_EQ(rounds, 1);
    EXPECT_EQ(m_file.GetMode(), VChunkedFile::Mode::Error);
    EXPECT_EQ(LastError().Text, "Chunk stack corruption");
}
