#pragma once
// The transparency modes of a material: the number held by the material and written in the
// material chunk, and the name written in materials.xml.

#include <cstdint>
#include <string_view>

// Null for a number that names no mode.
const char* TransparencyModeName(uint32_t mode);
// Compares without regard to case; false (mode unchanged) for an unknown name.
bool ParseTransparencyMode(std::string_view name, uint32_t& mode);
