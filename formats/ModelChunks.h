#pragma once
// The model file (".model"): one chunk MODL holding the skeleton, the geometry, the skin weights
// and the bounds of one skinned model.
//
// MODL:  u16 0 | SKEL | BMSK | GEOM | WGHT | BBBX | CBPR | BNDS   (SKEL, BMSK, WGHT, BBBX and CBPR
//        only with a skeleton of at least one bone; BMSK only with bone masks)
// SKEL:  u16 0 | u16 N | N bones: name | u16 parent (65535 for none) | inverse of the global
//        transform as translation (3 f32) and quaternion x, y, z, w (4 f32) | local transform
//        likewise | u16 0
// BMSK:  u16 0 | u16 count | per mask: u16 0 | name | u16 V | V u32
// GEOM:  u16 0 | i32 M | M MTRL chunks | i32 V | u16 vertex flags | V vertices | i32 T |
//        T triangles: 3 i32 vertex numbers, u16 material number (65535 for none)
// WGHT:  i32 W | W records: i32 vertex number, u16 bone number, f32 weight (each vertex's
//        influences in turn, strongest first)
// BBBX:  u16 N | N bone-space boxes (6 f32); BBOX is the older name of the same chunk
// CBPR:  u16 N | N strings (the bones' text properties, all empty)
// BNDS:  box (6 f32) | sphere: centre 0, 0, 0 and radius (4 f32) | collision box (6 f32)
//
// A vertex holds one field per flag bit, in this order: 0x001 position, 0x002 normal, 0x004
// tangent (3 f32 each), 0x080 colour (4 bytes), 0x008 base UV, 0x010 second UV (2 f32 each),
// 0x100 skin values: the weight of the strongest influence (f32, 1 without bones) and its bone
// number (i32, -1 without bones), 0x200 the number of the vertex's ID link (i32, -1 for none).

#include "formats/chunk/ChunkId.h"

#include <cstdint>

inline constexpr uint32_t ChunkMODL = MakeChunkId("MODL");
inline constexpr uint32_t ChunkSKEL = MakeChunkId("SKEL");
inline constexpr uint32_t ChunkBMSK = MakeChunkId("BMSK");
inline constexpr uint32_t ChunkGEOM = MakeChunkId("GEOM");
inline constexpr uint32_t ChunkWGHT = MakeChunkId("WGHT");
inline constexpr uint32_t ChunkBBBX = MakeChunkId("BBBX");
inline constexpr uint32_t ChunkBBOX = MakeChunkId("BBOX");
inline constexpr uint32_t ChunkCBPR = MakeChunkId("CBPR");
inline constexpr uint32_t ChunkBNDS = MakeChunkId("BNDS");

enum VModelVertexFlag : uint16_t {
    ModelVertexPosition = 0x001,
    ModelVertexNormal = 0x002,
    ModelVertexTangent = 0x004,
    ModelVertexBaseUV = 0x008,
    ModelVertexSecondUV = 0x010,
    ModelVertexColour = 0x080,
    ModelVertexSkin = 0x100,
    ModelVertexIdLink = 0x200,
};

inline constexpr uint16_t ModelVertexFlags = 0x031F;
inline constexpr uint16_t NoParentBone = 65535;
inline constexpr uint16_t NoModelMaterial = 65535;
