#include "formats/ChunkReading.h"

std::string ChunkName(uint32_t id)
{
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = static_cast<char>((id >> shift) & 0xFF);
        name += (c >= 0x20 && c < 0x7F) ? c : '?';
    }
    return name;
}
