#pragma once
// The module's last error: one record shared by every chunk file and every writer. A writer
// clears it when it starts and sets it when it fails; the export session reads it after a failed
// save. Chunk files also store the chunk identifier and the byte position the error was met at.
// Not guarded: exports run on one thread.

#include <cstdint>
#include <string>

struct VLastError {
    std::string Text;
    uint32_t ChunkId = 0;
    uint32_t Position = 0;
};

const VLastError& LastError();
void SetLastError(std::string text, uint32_t chunkId = 0, uint32_t position = 0);
void ClearLastError();
