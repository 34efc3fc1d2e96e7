#pragma once
// The chunk identifiers and fixed words of the static mesh and collision mesh files.

#include "formats/chunk/ChunkId.h"

#include <cstdint>

inline constexpr uint32_t ChunkVMSH = MakeChunkId("VMSH");
inline constexpr uint32_t ChunkMTRS = MakeChunkId("MTRS");
inline constexpr uint32_t ChunkMTRL = MakeChunkId("MTRL");
inline constexpr uint32_t ChunkSMSH = MakeChunkId("SMSH");
inline constexpr uint32_t ChunkSUBM = MakeChunkId("SUBM");
inline constexpr uint32_t ChunkSMPG = MakeChunkId("SMPG");
inline constexpr uint32_t ChunkCOLM = MakeChunkId("COLM");
inline constexpr uint32_t ChunkVIND = MakeChunkId("VIND");

inline constexpr int32_t StaticMeshVersion = 1;
// The collision mesh's header repeats its identifier byte-reversed ("LOCV" on disk).
inline constexpr uint32_t CollisionMeshTag = 0x56434F4C;
inline constexpr int32_t CollisionMeshVersion = 1;

// The shadow mesh's consumer numbers a submesh's vertices with 16-bit local indices, so its
// ranges must stay below 32,768; a split keeps whole triangles, hence 32,766.
inline constexpr int32_t MaxShadowRange = 32767;
inline constexpr int32_t SplitIndexCount = 32766;
