#pragma once
// Reading helpers for our own chunk files that treat every count as hostile: an array is
// allocated only once the open chunk is known to hold all of it.

#include "formats/chunk/VChunkedFile.h"

#include <algorithm>
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

// The chunk's size is the file's word too: a short file can claim a chunk of 2 GB, so the array
// grows a block at a time as its bytes arrive and never holds much more than the file does.
template <class T>
bool ReadChunkArray(VChunkedFile& file, int64_t count, std::vector<T>& values)
{
    if (count < 0 || count > file.GetRemainingChunkBytes() / static_cast<int64_t>(sizeof(T)))
        return false;
    constexpr int64_t block = std::max<int64_t>(1, (int64_t(1) << 20) / static_cast<int64_t>(sizeof(T)));
    values.clear();
    for (int64_t done = 0; done < count;) {
        const int64_t step = std::min(count - done, block);
        values.resize(static_cast<size_t>(done + step));
        const int length = static_cast<int>(step * static_cast<int64_t>(sizeof(T)));
        if (file.Read(values.data() + done, length) != length)
            return false;
        done += step;
    }
    return true;
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
