#include "formats/chunk/VChunkedFile.h"

#include "base/TextUtil.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VFileStreamProvider.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <limits>
#include <utility>

namespace {

constexpr int64_t MaxChunkBytes = std::numeric_limits<int32_t>::max();
constexpr int SkipBlockBytes = 1024;
// Strings are read in steps of this size so that a forged length costs no more memory than the
// bytes actually present.
constexpr int StringStepBytes = 64 * 1024;

void PutUint32(uint8_t* out, uint32_t value)
{
    out[0] = static_cast<uint8_t>(value);
    out[1] = static_cast<uint8_t>(value >> 8);
    out[2] = static_cast<uint8_t>(value >> 16);
    out[3] = static_cast<uint8_t>(value >> 24);
}

uint32_t GetUint32(const uint8_t* in)
{
    return static_cast<uint32_t>(in[0]) | static_cast<uint32_t>(in[1]) << 8 | static_cast<uint32_t>(in[2]) << 16 |
           static_cast<uint32_t>(in[3]) << 24;
}

void ConvertFromLittleEndian(uint8_t* data, size_t length, const char* layout)
{
    const size_t letters = layout ? std::strlen(layout) : 0;
    if (letters == 0)
        return;
    for (size_t offset = 0, index = 0;; index = (index + 1) % letters) {
        const char letter = layout[index];
        assert(letter == 'i' || letter == 's' || letter == 'f');
        const size_t width = letter == 's' ? 2 : 4;
        if (offset + width > length)
            return;
        if (width == 2) {
            const auto value = static_cast<uint16_t>(data[offset] | data[offset + 1] << 8);
            std::memcpy(data + offset, &value, 2);
        } else {
            const uint32_t value = GetUint32(data + offset);
            std::memcpy(data + offset, &value, 4);
        }
        offset += width;
    }
}

} // namespace

bool VChunkedFile::Create(std::string_view path, VChunkStreamProvider* provider)
{
    if (m_input || m_output)
        return false;
    Reset(Mode::Writing, CurrentVersion, path);
    m_output = (provider ? *provider : DefaultChunkStreamProvider()).CreateOutput(path);
    if (!m_output) {
        ReportError(Format("File '%s' could not be created", m_path.c_str()));
        return false;
    }
    EmitInt(Magic);
    EmitInt(m_version);
    OnHeaderWritten();
    return m_mode == Mode::Writing;
}

bool VChunkedFile::Open(std::string_view path, VChunkStreamProvider* provider)
{
    if (m_input || m_output)
        return false;
    Reset(Mode::Reading, 0, path);
    m_input = (provider ? *provider : DefaultChunkStreamProvider()).OpenInput(path);
    if (!m_input) {
        ReportError(Format("File '%s' not found", m_path.c_str()));
        return false;
    }
    int32_t magic = 0;
    if (ReadInt(magic) != 4 || static_cast<uint32_t>(magic) != Magic) {
        ReportError("File is not a valid binary file");
        return false;
    }
    int32_t version = 0;
    if (ReadInt(version) != 4 || static_cast<uint32_t>(version) > CurrentVersion) {
        ReportError("File version not supported");
        return false;
    }
    m_version = static_cast<uint32_t>(version);
    OnHeaderRead();
    return m_mode == Mode::Reading;
}

bool VChunkedFile::Close()
{
    if (!m_input && !m_output)
        return false;
    if (m_mode != Mode::Error) {
        if (m_depth != -1)
            ReportError("Chunk stack corruption. Missing end tag?");
        else if (m_mode == Mode::Writing)
            EmitInt(0xFFFFFFFF);
    }
    if (m_mode == Mode::Writing)
        OnCloseWrite();
    else
        OnCloseRead();
    std::string reason;
    if (m_output && m_mode == Mode::Writing && !m_output->Commit(reason))
        ReportError(Format("File '%s' could not be written: %s", m_path.c_str(), reason.c_str()));
    if (m_mode != Mode::Error)
        m_mode = Mode::Closed;
    m_input.reset();
    m_output.reset();
    m_deferred = {};
    return m_mode != Mode::Error;
}

bool VChunkedFile::StartChunk(uint32_t id, int32_t size)
{
    assert(size >= DeferredSize);
    if (m_mode != Mode::Writing)
        return false;
    const bool deferred = size < 0;
    PushDepth();
    m_endStack[m_depth] = -1;
    m_currentId = id;
    EmitInt(static_cast<uint32_t>(m_depth));
    EmitInt(id);
    if (m_deferredStartDepth == -1 && deferred) {
        m_deferredStartDepth = m_depth;
        m_deferred.clear();
        m_deferred.reserve(16);
    }
    m_idStack[m_depth] = id;
    if (deferred) {
        m_sizeFieldStack[m_depth] = static_cast<int32_t>(m_deferred.size());
    } else {
        m_endStack[m_depth] = LogicalPosition() + size + 4;
        m_sizeFieldStack[m_depth] = -1;
    }
    EmitInt(static_cast<uint32_t>(deferred ? DeferredSize : size));
    return m_mode == Mode::Writing;
}

bool VChunkedFile::EndChunk()
{
    if (m_mode == Mode::Writing)
        return EndWrittenChunk();
    if (m_mode == Mode::Reading)
        return EndReadChunk();
    return false;
}

bool VChunkedFile::EndWrittenChunk()
{
    if (m_depth < 0) {
        ReportError("Chunk stack corruption");
        return false;
    }
    const int32_t depth = m_depth;
    m_currentId = m_idStack[depth];
    const int32_t sizeField = m_sizeFieldStack[depth];
    if (sizeField == -1) {
        const int64_t missing = m_endStack[depth] - LogicalPosition();
        if (missing < 0) {
            // Writes into a nested chunk are bounded by its own end only, so overrunning the parent
            // shows here.
            ReportError("Tried to write chunk data beyond chunk size");
            return false;
        }
        if (missing > 0) {
            const int count = static_cast<int>(missing);
            OnWarning(Format("Not enough bytes written to chunk. Filling up %i bytes", count), m_currentId,
                      GetPosition());
            if (!WriteFill(count, 0))
                return false;
        }
    } else {
        const auto contentBytes = static_cast<uint32_t>(m_deferred.size() - static_cast<size_t>(sizeField) - 4);
        PutUint32(m_deferred.data() + sizeField, contentBytes);
    }
    if (m_deferredStartDepth == depth || m_deferredStartDepth == -1) {
        m_endStack[depth] = -1;
        if (!FlushDeferred())
            return false;
    }
    EmitInt(static_cast<uint32_t>(depth));
    EmitInt(m_currentId);
    --m_depth;
    if (m_depth >= 0)
        m_currentId = m_idStack[m_depth];
    return m_mode == Mode::Writing;
}

bool VChunkedFile::FlushDeferred()
{
    m_deferredStartDepth = -1;
    const std::vector<uint8_t> gathered = std::exchange(m_deferred, {});
    return gathered.empty() || Emit(gathered.data(), gathered.size()) == gathered.size();
}

int VChunkedFile::Write(const void* data, int length)
{
    if (m_mode != Mode::Writing || length <= 0)
        return 0;
    if (!FitsWriteBound(length)) {
        ReportError("Tried to write chunk data beyond chunk size");
        return 0;
    }
    return static_cast<int>(Emit(data, static_cast<size_t>(length)));
}

bool VChunkedFile::WriteInt(int32_t value)
{
    uint8_t bytes[4];
    PutUint32(bytes, static_cast<uint32_t>(value));
    return Write(bytes, 4) == 4;
}

bool VChunkedFile::WriteString(const char* text)
{
    return text ? WriteString(std::string_view(text)) : WriteInt(-1);
}

bool VChunkedFile::WriteString(std::string_view text)
{
    if (m_mode != Mode::Writing)
        return false;
    // Checked whole so that a string that does not fit leaves no stray length behind.
    if (text.size() > static_cast<size_t>(MaxChunkBytes) || !FitsWriteBound(4 + static_cast<int64_t>(text.size()))) {
        ReportError("Tried to write chunk data beyond chunk size");
        return false;
    }
    const int length = static_cast<int>(text.size());
    return WriteInt(length) && (length == 0 || Write(text.data(), length) == length);
}

bool VChunkedFile::WriteFill(int count, uint8_t value)
{
    if (m_mode != Mode::Writing)
        return false;
    if (count < 1)
        return true;
    int64_t allowed = count;
    if (m_depth >= 0 && m_endStack[m_depth] != -1)
        allowed = std::clamp<int64_t>(m_endStack[m_depth] - LogicalPosition(), 0, count);
    uint8_t block[SkipBlockBytes];
    std::memset(block, value, sizeof block);
    for (int64_t left = allowed; left > 0;) {
        const auto step = static_cast<size_t>(std::min<int64_t>(left, SkipBlockBytes));
        if (Emit(block, step) != step)
            return false;
        left -= static_cast<int64_t>(step);
    }
    if (allowed < count) {
        ReportError("Tried to write chunk data beyond chunk size");
        return false;
    }
    return true;
}

bool VChunkedFile::OpenChunk(uint32_t expectedId, uint32_t* id, int32_t* size)
{
    if (m_mode != Mode::Reading)
        return false;
    PushDepth();
    m_endStack[m_depth] = -1;
    int32_t depth = 0;
    if (ReadInt(depth) != 4)
        return false;
    if (depth == -1) {
        --m_depth;
        m_mode = Mode::EndOfInput;
        return false;
    }
    int32_t chunkId = 0;
    int32_t chunkSize = 0;
    if (ReadInt(chunkId) != 4 || ReadInt(chunkSize) != 4)
        return false;
    const auto foundId = static_cast<uint32_t>(chunkId);
    if (depth != m_depth) {
        ReportError("Chunk stack corruption");
        return false;
    }
    if (expectedId != AnyChunk && expectedId != foundId) {
        ReportError(Format("Unexpected chunk ID; actual: 0x%08X, expected: 0x%08X", foundId, expectedId));
        return false;
    }
    if (chunkSize < 0) {
        ReportError("Chunk stack corruption");
        return false;
    }
    const int64_t end = static_cast<int64_t>(m_position) + chunkSize;
    // Reads are bounded by the innermost chunk alone, so a child, end tag included, must lie within
    // its parent for the parent's bound to hold.
    const int64_t enclosingEnd = ReadLimit();
    if (enclosingEnd != -1 && end + 8 > enclosingEnd) {
        ReportError("Tried to read chunk data beyond chunk size");
        return false;
    }
    m_currentId = foundId;
    m_idStack[m_depth] = foundId;
    m_endStack[m_depth] = end;
    if (id)
        *id = foundId;
    if (size)
        *size = chunkSize;
    return OnStartChunk(foundId, chunkSize);
}

bool VChunkedFile::EndReadChunk()
{
    if (m_depth < 0) {
        ReportError("Chunk stack corruption");
        return false;
    }
    const int32_t depth = m_depth;
    uint8_t block[SkipBlockBytes];
    for (int64_t left = m_endStack[depth] - static_cast<int64_t>(m_position); left > 0;) {
        const int step = static_cast<int>(std::min<int64_t>(left, SkipBlockBytes));
        if (Read(block, step) != step)
            return false;
        left -= step;
    }
    m_endStack[depth] = -1;
    m_currentId = m_idStack[depth];
    if (!OnEndChunk(m_currentId) || m_mode != Mode::Reading)
        return false;
    int32_t endDepth = 0;
    int32_t endId = 0;
    if (ReadInt(endDepth) != 4 || ReadInt(endId) != 4)
        return false;
    if (endDepth != depth || static_cast<uint32_t>(endId) != m_currentId) {
        ReportError("Chunk stack corruption");
        return false;
    }
    --m_depth;
    if (m_depth >= 0)
        m_currentId = m_idStack[m_depth];
    return true;
}

bool VChunkedFile::FindChunk(uint32_t* id, int32_t* size, uint32_t wantedId)
{
    if (m_mode == Mode::EndOfInput)
        return false;
    uint32_t foundId = 0;
    for (;;) {
        if (!OpenChunk(AnyChunk, &foundId, size))
            return false;
        if (wantedId == AnyChunk || wantedId == foundId)
            break;
        if (!EndChunk() && m_mode != Mode::Reading)
            return false;
    }
    if (id)
        *id = foundId;
    return true;
}

int32_t VChunkedFile::GetRemainingChunkBytes() const
{
    if ((m_mode != Mode::Reading && m_mode != Mode::Writing) || m_depth < 0 || m_endStack[m_depth] == -1)
        return 0;
    const int64_t position = m_mode == Mode::Writing ? LogicalPosition() : static_cast<int64_t>(m_position);
    return static_cast<int32_t>(std::clamp<int64_t>(m_endStack[m_depth] - position, -MaxChunkBytes, MaxChunkBytes));
}

int VChunkedFile::Read(void* data, int length)
{
    if (m_mode != Mode::Reading || length <= 0)
        return 0;
    const int64_t limit = ReadLimit();
    if (limit != -1 && static_cast<int64_t>(m_position) + length > limit) {
        ReportError("Tried to read chunk data beyond chunk size");
        return 0;
    }
    const size_t got = m_input->Read(data, static_cast<size_t>(length));
    m_position += got;
    if (got < static_cast<size_t>(length))
        m_mode = Mode::EndOfInput;
    return static_cast<int>(got);
}

int VChunkedFile::ReadInt(int32_t& value)
{
    uint8_t bytes[4];
    if (Read(bytes, 4) != 4)
        return 0;
    value = static_cast<int32_t>(GetUint32(bytes));
    return 4;
}

int VChunkedFile::ReadTyped(void* data, int length, const char* layout)
{
    const int got = Read(data, length);
    ConvertFromLittleEndian(static_cast<uint8_t*>(data), static_cast<size_t>(got), layout);
    return got;
}

std::string VChunkedFile::ReadString()
{
    int32_t length = 0;
    if (ReadInt(length) != 4 || length <= 0)
        return {};
    const int64_t limit = ReadLimit();
    if (limit != -1 && static_cast<int64_t>(m_position) + length > limit) {
        ReportError("Tried to read chunk data beyond chunk size");
        return {};
    }
    std::string text;
    while (static_cast<int32_t>(text.size()) < length) {
        const int step = std::min(length - static_cast<int32_t>(text.size()), StringStepBytes);
        const size_t offset = text.size();
        text.resize(offset + static_cast<size_t>(step));
        if (Read(text.data() + offset, step) != step)
            return {};
    }
    return text;
}

void VChunkedFile::Reset(Mode mode, uint32_t version, std::string_view path)
{
    ClearLastError();
    m_mode = mode;
    m_version = version;
    m_path = path;
    m_currentId = 0;
    m_depth = -1;
    m_deferredStartDepth = -1;
    m_deferred = {};
    m_position = 0;
}

void VChunkedFile::ReportError(const std::string& message)
{
    m_mode = Mode::Error;
    SetLastError(message, m_currentId, GetPosition());
    OnError(message, m_currentId, GetPosition());
}

void VChunkedFile::PushDepth()
{
    ++m_depth;
    const auto needed = static_cast<size_t>(m_depth) + 1;
    if (m_idStack.size() < needed) {
        const size_t capacity = std::max<size_t>(16, m_idStack.size() * 2);
        m_idStack.resize(capacity);
        m_endStack.resize(capacity, -1);
        m_sizeFieldStack.resize(capacity, -1);
    }
}

int64_t VChunkedFile::LogicalPosition() const
{
    const size_t gathered = m_deferredStartDepth == -1 ? 0 : m_deferred.size();
    return static_cast<int64_t>(m_position + gathered);
}

bool VChunkedFile::FitsWriteBound(int64_t length) const
{
    return m_depth < 0 || m_endStack[m_depth] == -1 || LogicalPosition() + length <= m_endStack[m_depth];
}

int64_t VChunkedFile::ReadLimit() const
{
    for (int32_t depth = m_depth; depth >= 0 && depth >= m_depth - 1; --depth)
        if (m_endStack[depth] != -1)
            return m_endStack[depth];
    return -1;
}

size_t VChunkedFile::Emit(const void* data, size_t length)
{
    if (m_deferredStartDepth != -1) {
        if (static_cast<int64_t>(m_deferred.size() + length) > MaxChunkBytes) {
            ReportError("Tried to write chunk data beyond chunk size");
            return 0;
        }
        const auto* bytes = static_cast<const uint8_t*>(data);
        m_deferred.insert(m_deferred.end(), bytes, bytes + length);
        return length;
    }
    const size_t accepted = m_output->Write(data, length);
    m_position += accepted;
    if (accepted < length)
        ReportError(Format("File '%s' could not be written", m_path.c_str()));
    return accepted;
}

bool VChunkedFile::EmitInt(uint32_t value)
{
    uint8_t bytes[4];
    PutUint32(bytes, value);
    return Emit(bytes, 4) == 4;
}
