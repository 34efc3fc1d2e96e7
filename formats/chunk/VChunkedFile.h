#pragma once
// Reader and writer of the tagged chunk container that every binary asset file uses.
//
// File:   "VBIN" magic (0x4E494256), version (0x00010000), top-level chunks, end marker -1.
// Chunk:  depth, identifier, content size (all 32-bit little-endian), the content with its
//         nested chunks, then the depth and identifier again as the end tag; size + 20 bytes.
//
// The writer need not know a size in advance: StartChunk(id) gathers the chunk in memory, patches
// the size fields of it and of its nested chunks in place and writes the whole top-level chunk in
// one piece when it ends, so the output never seeks.
//
// The reader trusts no size from the file: a chunk must lie within its parent, no read passes the
// end of the innermost chunk, and strings are read no faster than bytes arrive, so a damaged or
// hostile file ends in an error and never in an out-of-bounds access or a huge allocation.
//
// Every error puts the file in the error mode, after which every operation fails, and is stored as
// the module's last error (formats/chunk/LastError.h) with the chunk identifier and the position.
// The destructor does not close: call Close, which alone commits a written file.

#include "formats/chunk/VChunkStream.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class VChunkedFile {
public:
    enum class Mode { Closed = 0, Reading = 1, Writing = 2, EndOfInput = 3, Error = 4 };

    static constexpr uint32_t Magic = 0x4E494256;
    static constexpr uint32_t CurrentVersion = 0x00010000;
    // As an expected or wanted identifier: accept any chunk. Never an identifier itself.
    static constexpr uint32_t AnyChunk = 0xFFFFFFFF;
    static constexpr int32_t DeferredSize = -1;

    VChunkedFile() = default;
    virtual ~VChunkedFile() = default;
    VChunkedFile(const VChunkedFile&) = delete;
    VChunkedFile& operator=(const VChunkedFile&) = delete;

    // Both take the default provider, plain files by path, when given none, and fail while a stream
    // is still attached.
    bool Create(std::string_view path, VChunkStreamProvider* provider = nullptr);
    bool Open(std::string_view path, VChunkStreamProvider* provider = nullptr);
    // Writes the end marker and commits a written file; a file in the error mode is dropped, the
    // previous target staying as it was. False in the error mode or with a chunk still open.
    bool Close();

    // size is the content size when known, DeferredSize to have it computed by EndChunk. A chunk
    // of known size is filled up with zero bytes when it ends short.
    bool StartChunk(uint32_t id, int32_t size = DeferredSize);
    // Writing: closes the innermost chunk. Reading: skips what is left of it and checks its end tag.
    bool EndChunk();
    int Write(const void* data, int length);
    bool WriteInt(int32_t value);
    // Length, then the bytes without terminator; a null text is the length -1 alone.
    bool WriteString(const char* text);
    bool WriteString(std::string_view text);
    bool WriteFill(int count, uint8_t value);

    // False without an error at the end marker, which switches to the end-of-input mode.
    bool OpenChunk(uint32_t expectedId, uint32_t* id = nullptr, int32_t* size = nullptr);
    // Opens chunks one after another, skipping those that are not wantedId (unless that is
    // AnyChunk), and stops at the first match with that chunk open.
    bool FindChunk(uint32_t* id, int32_t* size, uint32_t wantedId);
    // The bytes left in the innermost chunk; 0 when none is open, its size is deferred, or the
    // file has left the reading and writing modes, so that loops over children always end.
    int32_t GetRemainingChunkBytes() const;
    // Fewer bytes than asked switch to the end-of-input mode; later reads answer 0.
    int Read(void* data, int length);
    // 4, or 0 when the value could not be read whole.
    int ReadInt(int32_t& value);
    // Read, then each element converted from little-endian: the layout has one letter per element
    // ('i' 32-bit integer, 's' 16-bit integer, 'f' float) and repeats over the data ("fff" for an
    // array of vectors).
    int ReadTyped(void* data, int length, const char* layout);
    // A null text (negative length) and a failed read both give the empty string.
    std::string ReadString();

    Mode GetMode() const { return m_mode; }
    uint32_t GetVersion() const { return m_version; }
    // Bytes that have passed through the stream, header included; bytes gathered for a deferred
    // chunk count once they are written out.
    uint32_t GetPosition() const { return static_cast<uint32_t>(m_position); }
    int32_t GetDepth() const { return m_depth; }
    uint32_t GetCurrentChunkId() const { return m_currentId; }

protected:
    virtual void OnHeaderWritten() {}
    virtual void OnCloseWrite() {}
    virtual void OnHeaderRead() {}
    virtual void OnCloseRead() {}
    // The result becomes that of OpenChunk.
    virtual bool OnStartChunk(uint32_t, int32_t) { return true; }
    // False fails EndChunk before the end tag is read.
    virtual bool OnEndChunk(uint32_t) { return true; }
    virtual void OnError(const std::string&, uint32_t, uint32_t) {}
    virtual void OnWarning(const std::string&, uint32_t, uint32_t) {}

private:
    void Reset(Mode mode, uint32_t version, std::string_view path);
    void ReportError(const std::string& message);
    void PushDepth();
    // Stream position plus the bytes gathered for a deferred chunk: where the next byte will land.
    int64_t LogicalPosition() const;
    bool FitsWriteBound(int64_t length) const;
    // The end of the innermost chunk whose end is known: the enclosing chunk while a tag is read.
    int64_t ReadLimit() const;
    size_t Emit(const void* data, size_t length);
    bool EmitInt(uint32_t value);
    bool FlushDeferred();
    bool EndWrittenChunk();
    bool EndReadChunk();

    Mode m_mode = Mode::Closed;
    uint32_t m_version = 0;
    std::string m_path;
    std::unique_ptr<VChunkInStream> m_input;
    std::unique_ptr<VChunkOutStream> m_output;
    uint32_t m_currentId = 0;
    int32_t m_depth = -1;
    std::vector<uint32_t> m_idStack;
    // -1 while a written chunk's size is deferred.
    std::vector<int64_t> m_endStack;
    // Offset of a deferred chunk's size field in m_deferred; -1 when the size was given.
    std::vector<int32_t> m_sizeFieldStack;
    // Depth of the outermost deferred chunk; -1 while nothing is gathered.
    int32_t m_deferredStartDepth = -1;
    std::vector<uint8_t> m_deferred;
    uint64_t m_position = 0;
};
