#pragma once
// Golden files spelled out field by field: each call appends one little-endian field, so a test
// reads as the layout it pins.

#include "formats/StaticMeshChunks.h"

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>

class GoldenBytes {
public:
    GoldenBytes& U8(std::initializer_list<uint8_t> values)
    {
        for (uint8_t value : values)
            m_bytes.push_back(static_cast<char>(value));
        return *this;
    }
    GoldenBytes& U16(uint16_t value) { return Raw(&value, 2); }
    GoldenBytes& I32(int32_t value) { return Raw(&value, 4); }
    GoldenBytes& U32(uint32_t value) { return Raw(&value, 4); }
    GoldenBytes& F32(std::initializer_list<float> values)
    {
        for (float value : values)
            Raw(&value, 4);
        return *this;
    }
    GoldenBytes& I32s(std::initializer_list<int32_t> values)
    {
        for (int32_t value : values)
            I32(value);
        return *this;
    }
    // The chunk file's string: length, then the bytes without terminator.
    GoldenBytes& Str(std::string_view text)
    {
        I32(static_cast<int32_t>(text.size()));
        m_bytes.append(text);
        return *this;
    }
    GoldenBytes& Bytes(const std::string& bytes)
    {
        m_bytes += bytes;
        return *this;
    }
    // Start tag, content, end tag.
    GoldenBytes& Chunk(int32_t depth, uint32_t id, const GoldenBytes& content)
    {
        I32(depth).U32(id).I32(static_cast<int32_t>(content.m_bytes.size()));
        m_bytes += content.m_bytes;
        return I32(depth).U32(id);
    }
    GoldenBytes& FileHeader() { return U8({0x56, 0x42, 0x49, 0x4E}).U32(0x00010000); }
    GoldenBytes& FileEnd() { return I32(-1); }

    const std::string& Str() const { return m_bytes; }
    size_t Size() const { return m_bytes.size(); }

private:
    GoldenBytes& Raw(const void* data, size_t length)
    {
        m_bytes.append(static_cast<const char*>(data), length);
        return *this;
    }

    std::string m_bytes;
};

// The material chunk of a material with nothing but its name set, at the depth its file nests it.
inline GoldenBytes DefaultMaterialChunk(const std::string& name, int32_t depth = 1)
{
    return GoldenBytes().Chunk(depth, ChunkMTRL, GoldenBytes()
        .U16(2)                                   // version
        .Str(name)
        .U32(8)                                   // flags: the fourth flag defaults on
        .I32(0)                                   // integer 1
        .F32({0.0f, 0.0f})                        // specular multiplier, exponent
        .U8({0, 0})                               // transparency, no-stripping byte
        .Str("").Str("").Str("")                  // diffuse, specular map, normal map
        .I32(0)                                   // further textures
        .Str("")                                  // user data
        .I32(0)                                   // integer 2
        .U8({0, 0, 0, 0xFF})                      // colour 1
        .I32(0)                                   // integer 3
        .U8({0, 0, 0, 0xFF})                      // colour 2
        .F32({-0.03f, -0.015f})                   // parallax scale, bias
        .I32(0));                                 // shader assignments
}
