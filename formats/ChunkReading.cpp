#include "formats/ChunkReading.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/chunk/LastError.h"

#include <new>

std::string ChunkName(uint32_t id)
{
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = static_cast<char>((id >> shift) & 0xFF);
        name += (c >= 0x20 && c < 0x7F) ? c : '?';
    }
    return name;
}

bool ReadChunkFile(std::string_view path, VChunkStreamProvider* provider, const char* kindName,
                   const std::function<std::string(VChunkedFile&)>& parse)
{
    const std::string shownPath = ShownPath(path);
    VChunkedFile file;
    if (!file.Open(path, provider)) {
        SetLastError(Format("Failed to open file '%s': %s", shownPath.c_str(), LastError().Text.c_str()));
        file.Close();
        return false;
    }
    std::string problem;
    try {
        problem = parse(file);
    } catch (const std::bad_alloc&) {
        problem = "out of memory";
    }
    file.Close();
    if (!problem.empty()) {
        SetLastError(Format("File '%s' is not a readable %s: %s", shownPath.c_str(), kindName, problem.c_str()));
        return false;
    }
    return true;
}
