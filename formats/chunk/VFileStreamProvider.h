#pragma once
// Chunk file streams on the disk. A file is read whole into memory and written through
// WriteFileAtomically when the chunk file is closed, so a failed or abandoned export never
// leaves a half-written target behind.

#include "formats/chunk/VChunkStream.h"

#include <memory>
#include <string_view>

class VFileStreamProvider : public VChunkStreamProvider {
public:
    std::unique_ptr<VChunkInStream> OpenInput(std::string_view path) override;
    std::unique_ptr<VChunkOutStream> CreateOutput(std::string_view path) override;
};

// What chunk files use when they are given no provider.
VChunkStreamProvider& DefaultChunkStreamProvider();
