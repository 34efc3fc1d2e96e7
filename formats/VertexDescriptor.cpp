#include "formats/VertexDescriptor.h"

#include <cstddef>

namespace {

constexpr uint16_t FormatThreeFloats = 0x3000;
constexpr uint16_t FormatTwoFloats = 0x2000;

uint16_t Component(uint16_t format, int32_t offset)
{
    return offset < 0 ? AbsentComponent : static_cast<uint16_t>(format | offset);
}

} // namespace

VVertexLayout MakeVertexLayout(bool secondUV, bool tangents, bool colours)
{
    VVertexLayout layout;
    if (secondUV) {
        layout.SecondUVOffset = layout.Stride;
        layout.Stride += 8;
    }
    if (tangents) {
        layout.TangentOffset = layout.Stride;
        layout.Stride += 12;
    }
    if (colours) {
        layout.ColourOffset = layout.Stride;
        layout.Stride += 4;
    }
    return layout;
}

std::array<uint16_t, VertexDescriptorWordCount> MakeVertexDescriptorWords(const VVertexLayout& layout)
{
    std::array<uint16_t, VertexDescriptorWordCount> words;
    words.fill(AbsentComponent);
    words[DescriptorStride] = static_cast<uint16_t>(layout.Stride);
    words[DescriptorPosition] = Component(FormatThreeFloats, 0);
    words[DescriptorColour] = Component(0, layout.ColourOffset);
    words[DescriptorNormal] = Component(0, 12);
    words[DescriptorBaseUV] = Component(FormatTwoFloats, 24);
    words[DescriptorSecondUV] = Component(FormatTwoFloats, layout.SecondUVOffset);
    words[DescriptorTangent] = Component(FormatThreeFloats, layout.TangentOffset);
    return words;
}

std::array<uint8_t, VertexDescriptorSize> MakeVertexDescriptor(const VVertexLayout& layout)
{
    std::array<uint8_t, VertexDescriptorSize> bytes {};
    const auto words = MakeVertexDescriptorWords(layout);
    for (int i = 0; i < VertexDescriptorWordCount; ++i) {
        bytes[static_cast<size_t>(2 * i)] = static_cast<uint8_t>(words[static_cast<size_t>(i)] & 0xFF);
        bytes[static_cast<size_t>(2 * i + 1)] = static_cast<uint8_t>(words[static_cast<size_t>(i)] >> 8);
    }
    bytes[2 * VertexDescriptorWordCount] = 0xFF;
    return bytes;
}
