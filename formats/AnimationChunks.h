#pragma once
// The animation file (".anim" beside the ".model"): every bone and vertex animation of one
// model, with the skeleton repeated so that the file can be read without the model.
//
// ANIM:  u16 0 | HEAD | SKEL | BANI... | VANI...   (SKEL only with a skeleton of at least one
//        bone; bone animations, then vertex animations, each in list order)
// HEAD:  i32 number of animations
// SKEL:  as in the model file (ModelChunks.h)
// BANI:  u16 0 | u16 skeleton number | u16 bone count | name | VSBX | ODTA | RDTA | BPOS | BROT |
//        BSCL | EVNT | BMSK   (BPOS and BROT always, the others only as below)
// VANI:  u16 1 | name | u16 vertex count (65535 for more) | VDEL | EVNT | VMSK
//
// A key list is i32 K, then per key its time (f32, seconds since the first key) and a payload.
// Bone payloads run over the skeleton's bones in skeleton order, each from the frame slot of the
// bone's track (VMBone::TrackIndex, or its skeleton position when that is negative); a slot the
// frame has no room for reads as the identity. The pose written is the bone's local transform,
// relative to its parent, as the skeleton's rest pose is.
//
// VSBX:  key list of boxes (6 f32)                     with per-key boxes (HasBoundaries)
// ODTA:  u16 0 | key list of motion translations (3 f32)   with a move flag on any axis
// RDTA:  u16 0 | u8 axis (2 z, 1 y, 0 x) | key list of motion rotations about it (1 f32, degrees)
//                                                          with a rotation axis flag
// BPOS:  key list, per bone the translation (3 f32)
// BROT:  key list, per bone the rotation as a unit quaternion x, y, z, w (4 f32)
// BSCL:  key list, per bone the scale (3 f32)              when the frames keep scales
// EVNT:  u16 0 | i32 count | per event: time (f32), name   with events
// BMSK:  as in the model file                              with bone masks
// VDEL:  key list, per key: i32 N | N entries sorted by vertex number: i32 vertex number,
//        position delta (3 f32), normal (3 f32)
// VMSK:  i32 B (highest vertex number moved + 1) | ceil(B / 32) u32 words, vertex v being bit
//        v mod 32 of word v / 32                           when some key moves a vertex

#include "formats/chunk/ChunkId.h"

#include <cstdint>

inline constexpr uint32_t ChunkANIM = MakeChunkId("ANIM");
inline constexpr uint32_t ChunkHEAD = MakeChunkId("HEAD");
inline constexpr uint32_t ChunkBANI = MakeChunkId("BANI");
inline constexpr uint32_t ChunkVANI = MakeChunkId("VANI");
inline constexpr uint32_t ChunkVSBX = MakeChunkId("VSBX");
inline constexpr uint32_t ChunkODTA = MakeChunkId("ODTA");
inline constexpr uint32_t ChunkRDTA = MakeChunkId("RDTA");
inline constexpr uint32_t ChunkBPOS = MakeChunkId("BPOS");
inline constexpr uint32_t ChunkBROT = MakeChunkId("BROT");
inline constexpr uint32_t ChunkBSCL = MakeChunkId("BSCL");
inline constexpr uint32_t ChunkEVNT = MakeChunkId("EVNT");
inline constexpr uint32_t ChunkVDEL = MakeChunkId("VDEL");
inline constexpr uint32_t ChunkVMSK = MakeChunkId("VMSK");

inline constexpr uint16_t BoneAnimationVersion = 0;
inline constexpr uint16_t VertexAnimationVersion = 1;
