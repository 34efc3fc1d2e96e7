#pragma once
// The vertex layout of the static mesh's buffer and the 48-byte descriptor that states it.
//
// A vertex is position (0), normal (12) and base UV (24), 32 bytes, followed by the optional
// components in this order: second UV (8 bytes), tangent (12), colour (4, as stored). The
// descriptor holds 21 16-bit words, then 0xFF, 0 and a 32-bit 0. Word 0 is the stride; a
// component word holds the offset in its low 12 bits and a format code in its high 4 bits
// (3: three floats, 2: two floats, 0: 32-bit colour); 0xFFFF marks an absent component.

#include <array>
#include <cstdint>

struct VVertexLayout {
    int32_t Stride = 32;
    // -1 when the component is absent.
    int32_t SecondUVOffset = -1;
    int32_t TangentOffset = -1;
    int32_t ColourOffset = -1;
};

inline constexpr int VertexDescriptorWordCount = 21;
inline constexpr int VertexDescriptorSize = 48;
inline constexpr uint16_t AbsentComponent = 0xFFFF;

enum VVertexDescriptorWord {
    DescriptorStride = 0,
    DescriptorPosition = 1,
    DescriptorColour = 2,
    DescriptorNormal = 3,
    DescriptorBaseUV = 4,
    DescriptorSecondUV = 5,
    DescriptorTangent = 6,
};

VVertexLayout MakeVertexLayout(bool secondUV, bool tangents, bool colours);
std::array<uint16_t, VertexDescriptorWordCount> MakeVertexDescriptorWords(const VVertexLayout& layout);
// The descriptor as stored: the words little-endian, then 0xFF, 0, and four zero bytes.
std::array<uint8_t, VertexDescriptorSize> MakeVertexDescriptor(const VVertexLayout& layout);
