#pragma once
// Reading helpers for our own chunk files that treat every count as hostile: an array is
// allocated only once the open chunk is known to hold all of it.

#include "formats/chunk/VChunkedFile.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

template <class T>
bool ReadChunkValue(VChunkedFile& file, T& value)
{
    return file.Read(&value, sizeof value) == static_cast<int>(sizeof value);
}

template <class T>
bool ReadChunkArray(VChunkedFile& file, int64_t count, std::vector<T>& values)
{
    if (count < 0 || count > file.GetRemainingChunkBytes() / static_cast<int64_t>(sizeof(T)))
        return false;
    values.resize(static_cast<size_t>(count));
    const int length = static_cast<int>(values.size() * sizeof(T));
    return length == 0 || file.Read(values.data(), length) == length;
}

// A string whose length field lies inside the open chunk; false when it cannot be read whole.
inline bool ReadChunkString(VChunkedFile& file, std::string& text)
{
    if (file.GetRemainingChunkBytes() < 4)
        return false;
    text = file.ReadString();
    return file.GetMode() == VChunkedFile::Mode::Reading;
}

// After the top-level chunks: true when the file closed with its end marker rather than
// running short (a short read leaves the depth of the chunk it was opening).
inline bool EndedAtMarker(const VChunkedFile& file)
{
    return file.GetMode() == VChunkedFile::Mode::EndOfInput && file.GetDepth() == -1;
}

// "VMSH" for a chunk identifier.
std::string ChunkName(uint32_t id);

// Opens path, runs parse (which answers "" or what makes the file unreadable) and closes the
// file; a failure sets the module's last error, naming the file and the kind of file expected.
bool ReadChunkFile(std::string_view path, VChunkStreamProvider* provider, const char* kindName,
                   const std::function<std::string(VChunkedFile&)>& parse);
