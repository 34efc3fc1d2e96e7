#pragma once
// The engine's older world text files ("*.V3D"), read for the static translators' import.
//
// One record per line, fields split on commas outside double quotes, tabs counting as spaces,
// each field trimmed; field 0 is the keyword (any case). Lines starting "//" are comments;
// "[HEADER_START]" and "[HEADER_END]" are ignored. "VNUM=a.bc" (optionally in brackets) gives the
// version (a * 10 + b) * 10 + c; records are read from version 120 on. "NUM<SECTION>=n" lines
// announce section sizes. The records read here:
//
//   D, x, y, z, u, v, -, - [, nx, ny, nz (150+)] [, tx, ty, tz (176+)], material
//       a vertex: position in hundredths, base UV in 1/1024, normal in 1/256 from version 150,
//       tangent unscaled from version 176, material 1-based (0 none, not read here)
//   P, material, n, v0, ..., v(n-1)
//       a polygon of n >= 3 corners, each a 0-based number of a D record read before it
//
// Every other record keyword of the format (SRF, TLS, L, VISAREA ...) is recognised and skipped;
// a keyword the format does not have fails the load.

#include <cstdint>
#include <string>
#include <string_view>

class VMWorld;

inline constexpr int32_t V3DCannotOpen = -201;
inline constexpr int32_t V3DOldVersion = -212;
inline constexpr int32_t V3DBadRecord = -213;
inline constexpr int32_t V3DOutOfMemory = -301;

// The longest line read; a longer one fails the load.
inline constexpr size_t V3DMaxLineLength = 4u << 20;

// Adds the file's vertices and polygons to the world. 0 on success; otherwise one of the codes
// above with the reason (and line number) in error, the world holding what was read before it.
int32_t ReadV3DWorld(std::string_view text, VMWorld& world, std::string& error);
int32_t LoadV3DWorld(std::string_view path, VMWorld& world, std::string& error);

// The version of a "VNUM=" line (brackets allowed); -1 when the line is no version line.
int32_t V3DVersion(std::string_view line);
