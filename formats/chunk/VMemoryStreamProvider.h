#pragma once
// Chunk file streams on named byte strings instead of the disk, for tests and fuzzing. Names
// compare case-insensitively, as file names do. A file appears (or is replaced) only when the
// chunk file writing it closes successfully.

#include "formats/chunk/VChunkStream.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class VMemoryStreamProvider : public VChunkStreamProvider {
public:
    void SetFile(std::string_view path, std::string bytes);
    // Null when there is no such file.
    const std::string* FindFile(std::string_view path) const;

    std::unique_ptr<VChunkInStream> OpenInput(std::string_view path) override;
    std::unique_ptr<VChunkOutStream> CreateOutput(std::string_view path) override;

private:
    struct File {
        std::string Path;
        std::string Bytes;
    };
    std::vector<File> m_files;
};
