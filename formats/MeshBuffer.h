#pragma once
// The engine's mesh buffer, written into the open VMSH chunk of a static mesh file.
//
// buffer magic 0x4455ABCD | version 1 | descriptor magic 0x01020A0B | descriptor size 48 |
// descriptor | descriptor magic | vertex count i32 | u8 0 | i32 0 | index count i32 |
// index width i32 (16 up to 65,535 vertices, else 32) | triangle count i32 | u8 0, 1, 1 |
// u32 0x01810000 | u8 1, 0 | u16 0 | vertex records | indices (16- or 32-bit)

#include "formats/VertexDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class VChunkedFile;
struct VMVertex;

inline constexpr uint32_t MeshBufferMagic = 0x4455ABCD;
inline constexpr uint32_t MeshBufferVersion = 1;
inline constexpr uint32_t VertexDescriptorMagic = 0x01020A0B;
inline constexpr uint32_t MeshBufferStreamWord = 0x01810000;
inline constexpr int32_t MaxVerticesFor16BitIndices = 65535;

int32_t IndexWidthFor(size_t vertexCount);

// Every vertex record is zeroed, then each component of the layout copied to its offset. The
// indices are output vertex numbers. False at the first failed write; the chunk is left open.
bool WriteMeshBuffer(VChunkedFile& file, const VVertexLayout& layout, const std::vector<const VMVertex*>& vertices,
                     const std::vector<int32_t>& indices);
