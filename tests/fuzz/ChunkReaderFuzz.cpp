// Walks arbitrary bytes as a chunk file, twice. The first walk copies every chunk it reads into a
// new file with deferred sizes; when the input was read cleanly, the copy must be the input byte
// for byte. The second walk reads as our asset readers do: FindChunk, strings, integers, typed
// reads and skipping.

#include "formats/chunk/VChunkedFile.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

// Beyond this the walk skips instead of recursing, so that the fuzzer's own stack stays small.
constexpr int MaxWalkDepth = 200;

bool IsContainer(uint32_t id)
{
    return (id & 1) != 0;
}

bool CopyContent(VChunkedFile& reader, VChunkedFile& writer)
{
    uint8_t block[24];
    while (reader.GetRemainingChunkBytes() > 0) {
        const int remaining = reader.GetRemainingChunkBytes();
        int got = 0;
        if (remaining >= 24)
            got = reader.ReadTyped(block, 24, "ffsfi");
        else if (remaining >= 12)
            got = reader.ReadTyped(block, 12, "fff");
        else
            got = reader.Read(block, 1);
        if (got <= 0 || writer.Write(block, got) != got)
            return false;
    }
    return true;
}

bool CopyChunk(VChunkedFile& reader, VChunkedFile& writer, uint32_t id, int depth)
{
    if (!writer.StartChunk(id))
        return false;
    bool copied = false;
    if (depth >= MaxWalkDepth) {
        copied = false;
    } else if (IsContainer(id)) {
        copied = true;
        while (copied && reader.GetRemainingChunkBytes() > 0) {
            uint32_t childId = 0;
            copied = reader.OpenChunk(VChunkedFile::AnyChunk, &childId) &&
                     CopyChunk(reader, writer, childId, depth + 1);
        }
    } else {
        copied = CopyContent(reader, writer);
    }
    return reader.EndChunk() && writer.EndChunk() && copied;
}

void CheckCopyReproducesInput(const std::string& input)
{
    VMemoryStreamProvider files;
    files.SetFile("in.model", input);
    VChunkedFile reader;
    VChunkedFile writer;
    if (!reader.Open("in.model", &files) || !writer.Create("copy.model", &files)) {
        reader.Close();
        writer.Close();
        return;
    }
    bool clean = true;
    uint32_t id = 0;
    while (clean && reader.OpenChunk(VChunkedFile::AnyChunk, &id))
        clean = CopyChunk(reader, writer, id, 0);
    clean = clean && reader.GetMode() == VChunkedFile::Mode::EndOfInput && reader.GetVersion() == 0x00010000;
    const bool readerClosed = reader.Close();
    const bool writerClosed = writer.Close();
    if (!clean || !readerClosed)
        return;
    const std::string* copy = files.FindFile("copy.model");
    // The reader stops at the end marker, so only the input up to it has to come back.
    if (!writerClosed || !copy || copy->size() > input.size() || input.compare(0, copy->size(), *copy) != 0)
        std::abort();
}

void ReadLikeAnAssetReader(VChunkedFile& file, int depth)
{
    for (int round = 0; round < 64 && file.GetRemainingChunkBytes() > 0; ++round) {
        uint32_t id = 0;
        int32_t size = 0;
        const uint32_t wanted = round % 3 == 2 ? VChunkedFile::AnyChunk : file.GetCurrentChunkId() ^ 0x01000000;
        if (!file.FindChunk(&id, &size, wanted))
            return;
        switch ((id >> 8) & 3) {
        case 0:
            while (file.GetRemainingChunkBytes() > 0 && !file.ReadString().empty()) {
            }
            break;
        case 1: {
            int32_t value = 0;
            if (file.ReadInt(value) == 4 && value > 0 && value <= file.GetRemainingChunkBytes()) {
                float vectors[6];
                file.ReadTyped(vectors, value < 24 ? value : 24, "fff");
            }
            break;
        }
        case 2:
            if (depth < MaxWalkDepth)
                ReadLikeAnAssetReader(file, depth + 1);
            break;
        default:
            break;
        }
        if (!file.EndChunk())
            return;
    }
}

void ReadAsAssetFile(const std::string& input)
{
    VMemoryStreamProvider files;
    files.SetFile("in.model", input);
    VChunkedFile file;
    if (file.Open("in.model", &files)) {
        uint32_t id = 0;
        while (file.FindChunk(&id, nullptr, VChunkedFile::AnyChunk)) {
            ReadLikeAnAssetReader(file, 0);
            if (!file.EndChunk())
                break;
        }
    }
    file.Close();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string input(reinterpret_cast<const char*>(data), size);
    CheckCopyReproducesInput(input);
    ReadAsAssetFile(input);
    return 0;
}
