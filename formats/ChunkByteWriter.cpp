#include "formats/ChunkByteWriter.h"

#include "formats/chunk/VChunkedFile.h"

#include <algorithm>

namespace {

constexpr size_t BlockSize = 64 * 1024;

} // namespace

ChunkByteWriter::ChunkByteWriter(VChunkedFile& file)
    : m_file(file)
{
    m_block.reserve(BlockSize);
}

ChunkByteWriter::~ChunkByteWriter()
{
    Flush();
}

void ChunkByteWriter::PutBytes(const void* data, size_t length)
{
    const auto* bytes = static_cast<const uint8_t*>(data);
    while (m_ok && length > 0) {
        if (m_block.size() == BlockSize && !Flush())
            return;
        const size_t count = std::min(length, BlockSize - m_block.size());
        m_block.insert(m_block.end(), bytes, bytes + count);
        bytes += count;
        length -= count;
    }
}

void ChunkByteWriter::PutFill(size_t count, uint8_t value)
{
    while (m_ok && count > 0) {
        if (m_block.size() == BlockSize && !Flush())
            return;
        const size_t run = std::min(count, BlockSize - m_block.size());
        m_block.insert(m_block.end(), run, value);
        count -= run;
    }
}

bool ChunkByteWriter::Flush()
{
    if (m_ok && !m_block.empty()) {
        const int length = static_cast<int>(m_block.size());
        m_ok = m_file.Write(m_block.data(), length) == length;
    }
    m_block.clear();
    return m_ok;
}
