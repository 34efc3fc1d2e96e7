#pragma once
// The static mesh file (".qmesh"): a chunk file of VMSH (the mesh buffer and the world's box),
// MTRS (the materials), SMSH (the shadow mesh), SUBM (the submeshes) and, when some submesh has
// a group, SMPG.
//
// VMSH:  "HSMV" | version 1 | mesh buffer | box: 6 floats | i32 0
// MTRS:  i32 count | one MTRL chunk per material
// SMSH:  i32 S | S shadow indices | S/3 planes (4 floats) | S neighbour entries
// SUBM:  i32 count | per submesh: render first index, count; shadow first index, count; render
//        first vertex, count; shadow first vertex, count; box (6 floats); material number
// SMPG:  one i32 group per submesh, negative groups as 0

#include "formats/SaveParams.h"

#include <string_view>

class VMWorld;

// Rebuilds the world's submeshes, splits those whose shadow range is too large, writes the file
// (tangents are always written, so the world is marked as carrying them) and then the side
// files with the same path and flags. Clears the last-error text first; on failure sets it
// ("Failed to create file '%s'" when the file cannot be made) and answers false. The file is
// replaced only when it was written whole.
bool SaveWorld(VMWorld& world, std::string_view path, const VSaveParams& params);
