#pragma once
// Where the bytes of a chunk file come from and go to. A chunk file only reads forward and
// appends, so streams need no seeking. A provider obtains the stream for a path; chunk files
// take one so that tests and fuzzers can run on memory instead of the disk.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

class VChunkInStream {
public:
    virtual ~VChunkInStream() = default;
    // Copies up to length bytes into data and answers how many; fewer only at the end of the data.
    virtual size_t Read(void* data, size_t length) = 0;
};

class VChunkOutStream {
public:
    // A stream dropped without Commit leaves its target as it was.
    virtual ~VChunkOutStream() = default;
    // Appends and answers how many bytes were taken.
    virtual size_t Write(const void* data, size_t length) = 0;
    // Makes everything written the target's contents in one step; on failure the target keeps its
    // previous contents and error tells why.
    virtual bool Commit(std::string& error) = 0;
};

class VChunkStreamProvider {
public:
    virtual ~VChunkStreamProvider() = default;
    // Null when there is nothing readable at path.
    virtual std::unique_ptr<VChunkInStream> OpenInput(std::string_view path) = 0;
    // Null when no file can be created at path.
    virtual std::unique_ptr<VChunkOutStream> CreateOutput(std::string_view path) = 0;
};
