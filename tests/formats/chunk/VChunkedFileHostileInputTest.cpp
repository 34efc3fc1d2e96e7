#include "formats/chunk/VChunkedFile.h"

#include "ChunkTestBytes.h"
#include "formats/chunk/ChunkId.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr uint32_t Head = MakeChunkId("HEAD");
constexpr uint32_t Modl = MakeChunkId("MODL");
constexpr uint32_t Geom = MakeChunkId("GEOM");
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

class HostileChunkInputTest : public ::testing::Test {
protected:
    bool OpenBytes(const std::string& bytes)
    {
        m_files.SetFile("in.model", bytes);
        return m_file.Open("in.model", &m_files);
    }

    VMemoryStreamProvider m_files;
    VChunkedFile m_file;
};

} // namespace

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
