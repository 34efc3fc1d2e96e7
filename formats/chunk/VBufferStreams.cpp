#include "formats/chunk/VBufferStreams.h"

#include <algorithm>
#include <cstring>
#include <utility>

VMemoryInStream::VMemoryInStream(std::string bytes)
    : m_bytes(std::move(bytes))
{
}

size_t VMemoryInStream::Read(void* data, size_t length)
{
    const size_t count = std::min(length, m_bytes.size() - m_offset);
    if (count > 0)
        std::memcpy(data, m_bytes.data() + m_offset, count);
    m_offset += count;
    return count;
}

VBufferedOutStream::VBufferedOutStream(CommitFunction commit)
    : m_commit(std::move(commit))
{
}

size_t VBufferedOutStream::Write(const void* data, size_t length)
{
    m_bytes.append(static_cast<const char*>(data), length);
    return length;
}

bool VBufferedOutStream::Commit(std::string& error)
{
    return m_commit(m_bytes, error);
}
