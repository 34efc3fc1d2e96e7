#pragma once
// Streams over memory: a file read whole, and written files gathered for tests and fuzzers.

#include "formats/chunk/VChunkStream.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

class VMemoryInStream : public VChunkInStream {
public:
    explicit VMemoryInStream(std::string bytes);
    size_t Read(void* data, size_t length) override;

private:
    std::string m_bytes;
    size_t m_offset = 0;
};

// Gathers everything written and hands it to the commit function in one piece.
class VBufferedOutStream : public VChunkOutStream {
public:
    using CommitFunction = std::function<bool(std::string_view bytes, std::string& error)>;

    explicit VBufferedOutStream(CommitFunction commit);
    size_t Write(const void* data, size_t length) override;
    bool Commit(std::string& error) override;

private:
    CommitFunction m_commit;
    std::string m_bytes;
};
