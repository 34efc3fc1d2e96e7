#pragma once
// The material chunk (MTRL) that the static mesh file and the model file share.
//
// version u16 2 | name | flags u32 | int 1 | specular multiplier, exponent f32 | transparency u8 |
// no-stripping u8 | diffuse, specular, normal map | further textures: i32 count + strings |
// user data | int 2 | colour 1 (ambient) RGB 0xFF | int 3 | colour 2 RGB 0xFF | parallax scale,
// bias f32 | shaders: i32 count + (library, effect, parameter string)
//
// The flag word carries the material's four booleans in its low bits: 1 double-sided, 2 model,
// 4 lighting, 8 the fourth flag.

#include <cstdint>

class VChunkedFile;
struct VMMaterial;

inline constexpr uint16_t MaterialChunkVersion = 2;

// Writes the whole chunk, start and end tag included. False once the chunk file has failed.
bool WriteMaterialChunk(VChunkedFile& file, const VMMaterial& material);

// Reads the content of an open MTRL chunk (versions 0 to 2) into material; the caller ends the
// chunk. Version 1 has no further textures; version 0 neither, and instead of integer 1 and the
// specular values it has three bytes (integer 1, the kind, a specular level 0..8 from which the
// specular values follow), a further value in percent after the three texture names, and no
// parallax values. The shader assignments are read back
// with their parameter string as one parameter named "paramstring". False on a damaged or
// unsupported chunk, with the last-error text set.
bool ReadMaterialChunk(VChunkedFile& file, VMMaterial& material);
