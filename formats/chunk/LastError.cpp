#include "formats/chunk/LastError.h"

#include <utility>

namespace {

VLastError g_lastError;

} // namespace

const VLastError& LastError()
{
    return g_lastError;
}

void SetLastError(std::string text, uint32_t chunkId, uint32_t position)
{
    g_lastError.Text = std::move(text);
    g_lastError.ChunkId = chunkId;
    g_lastError.Position = position;
}

void ClearLastError()
{
    g_lastError = VLastError {};
}
