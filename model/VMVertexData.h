#pragma once
// The fields that a static vertex and a skin vertex share, from the position to the material link.

#include <cstdint>

struct VMMaterial;

struct VMVertexData {
    float Position[3] = {0.0f, 0.0f, 0.0f};
    // Zero when no normal could be found.
    float Normal[3] = {0.0f, 0.0f, 0.0f};
    float BaseUV[2] = {0.0f, 0.0f};
    // The lightmap channel.
    float SecondUV[2] = {0.0f, 0.0f};
    float Tangent[3] = {0.0f, 0.0f, 0.0f};
    // All four bytes 255 when no colour was harvested.
    uint8_t Colour[4] = {255, 255, 255, 255};
    uint32_t SmoothingMask = 0xFFFFFFFFu;
    // Position in the container's vertex list, valid right after an enumeration.
    uint32_t Index = 0;
    // The material of the primitives that use the vertex; null marks an unreferenced vertex.
    VMMaterial* MaterialLink = nullptr;
};
