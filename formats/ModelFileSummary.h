#pragma once
// What "kestrel info" shows of a model file: its chunks, skeleton, materials, counts and bounds.
// The vertex, triangle and weight records are counted and skipped, not kept. Every count is
// checked against its chunk before anything is allocated.

#include "model/VMBoundingBox.h"
#include "model/VMMaterial.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class VChunkStreamProvider;

struct VModelFileSummary {
    uint16_t Version = 0;
    // The children of MODL in file order.
    std::vector<uint32_t> Chunks;
    std::vector<std::string> BoneNames;
    std::vector<std::unique_ptr<VMMaterial>> Materials;
    int32_t VertexCount = 0;
    uint16_t VertexFlags = 0;
    int32_t TriangleCount = 0;
    int32_t WeightCount = 0;
    VMBoundingBox Bounds;
    float Radius = 0.0f;
    VMBoundingBox SecondBounds;
};

// False with the last-error text set when the file cannot be read or is damaged.
bool ReadModelFileSummary(std::string_view path, VModelFileSummary& summary, VChunkStreamProvider* provider = nullptr);

std::string DescribeModelFile(const VModelFileSummary& summary);
