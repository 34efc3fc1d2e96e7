#pragma once
// Appends little-endian values to the open chunk of a chunk file through a small block, so that
// large arrays reach the file in few writes. Once a write fails every later one is dropped and
// Ok() stays false.

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

class VChunkedFile;

class ChunkByteWriter {
public:
    explicit ChunkByteWriter(VChunkedFile& file);
    ~ChunkByteWriter();
    ChunkByteWriter(const ChunkByteWriter&) = delete;
    ChunkByteWriter& operator=(const ChunkByteWriter&) = delete;

    // Values are stored in host order, which is little-endian on every platform we build for.
    template <class T>
    void Put(T value)
    {
        static_assert(std::is_arithmetic_v<T>);
        PutBytes(&value, sizeof value);
    }
    void PutBytes(const void* data, size_t length);
    void PutFill(size_t count, uint8_t value);

    // Hands the block to the chunk file; false when this or any earlier write failed.
    bool Flush();
    bool Ok() const { return m_ok; }

private:
    VChunkedFile& m_file;
    std::vector<uint8_t> m_block;
    bool m_ok = true;
};
