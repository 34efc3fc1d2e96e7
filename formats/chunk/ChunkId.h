#pragma once
// Chunk identifiers are four characters with the first in the most significant byte, the value a
// multi-character constant such as 'MODL' has. Written little-endian, the characters stand
// reversed on disk ("LDOM"). A function rather than the constant because g++ warns on those.

#include <cstdint>

constexpr uint32_t MakeChunkId(const char (&fourCharacters)[5])
{
    return static_cast<uint32_t>(static_cast<unsigned char>(fourCharacters[0])) << 24 |
           static_cast<uint32_t>(static_cast<unsigned char>(fourCharacters[1])) << 16 |
           static_cast<uint32_t>(static_cast<unsigned char>(fourCharacters[2])) << 8 |
           static_cast<uint32_t>(static_cast<unsigned char>(fourCharacters[3]));
}
