#include "ChunkTestBytes.h"

std::string Bytes(std::initializer_list<uint8_t> bytes)
{
    return std::string(bytes.begin(), bytes.end());
}

std::string HeaderBytes()
{
    return Bytes({0x56, 0x42, 0x49, 0x4E, 0x00, 0x00, 0x01, 0x00});
}

std::string IntBytes(uint32_t value)
{
    return Bytes({static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value >> 16),
                  static_cast<uint8_t>(value >> 24)});
}
