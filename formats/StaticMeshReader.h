#pragma once
// Reads a static mesh file back, for tests and for "kestrel info". Every count in the file is
// checked against the bytes its chunk holds before anything is allocated, so a damaged file
// ends in an error message, never in a crash or a huge allocation.

#include "formats/VertexDescriptor.h"
#include "model/VMBoundingBox.h"
#include "model/VMMaterial.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class VChunkStreamProvider;

struct VStaticMeshVertex {
    float Position[3] = {};
    float Normal[3] = {};
    float BaseUV[2] = {};
    float SecondUV[2] = {};
    float Tangent[3] = {};
    uint8_t Colour[4] = {};
};

struct VStaticMeshSubmesh {
    int32_t RenderFirstIndex = 0;
    int32_t RenderIndexCount = 0;
    int32_t ShadowFirstIndex = 0;
    int32_t ShadowIndexCount = 0;
    int32_t RenderFirstVertex = 0;
    int32_t RenderVertexCount = 0;
    int32_t ShadowFirstVertex = 0;
    int32_t ShadowVertexCount = 0;
    VMBoundingBox Box;
    int32_t Material = -1;
};

struct VStaticMeshFile {
    // The top-level chunks in file order.
    std::vector<uint32_t> Chunks;

    std::array<uint16_t, VertexDescriptorWordCount> DescriptorWords {};
    int32_t IndexWidth = 0;
    int32_t TriangleCount = 0;
    std::vector<VStaticMeshVertex> Vertices;
    std::vector<uint32_t> Indices;
    VMBoundingBox Bounds;

    std::vector<std::unique_ptr<VMMaterial>> Materials;

    std::vector<int32_t> ShadowIndices;
    // Four floats per shadow triangle.
    std::vector<float> ShadowPlanes;
    // Three per shadow triangle.
    std::vector<int32_t> ShadowNeighbours;

    std::vector<VStaticMeshSubmesh> Submeshes;
    // Empty when the file has no SMPG chunk.
    std::vector<int32_t> Groups;

    bool HasComponent(int word) const { return DescriptorWords[static_cast<size_t>(word)] != AbsentComponent; }
};

// False with the last-error text set when the file cannot be read or is damaged.
bool ReadStaticMesh(std::string_view path, VStaticMeshFile& mesh, VChunkStreamProvider* provider = nullptr);

// The file as text: chunks, counts, layout, bounds, materials and submeshes.
std::string DescribeStaticMesh(const VStaticMeshFile& mesh);
