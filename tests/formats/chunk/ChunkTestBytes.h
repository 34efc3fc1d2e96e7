#pragma once
// Golden files are spelled out byte by byte in the tests, with the fields named under them.

#include <cstdint>
#include <initializer_list>
#include <string>

std::string Bytes(std::initializer_list<uint8_t> bytes);

// The 8 header bytes every chunk file starts with: "VBIN", version 0x00010000.
std::string HeaderBytes();
// A 32-bit little-endian value.
std::string IntBytes(uint32_t value);
