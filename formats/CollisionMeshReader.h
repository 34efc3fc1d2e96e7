#pragma once
// Reads a collision mesh file back, for tests and for "kestrel info", with every count checked
// against its chunk before anything is allocated.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class VChunkStreamProvider;

struct VCollisionMeshFile {
    // The top-level chunks in file order.
    std::vector<uint32_t> Chunks;
    int32_t Version = 0;
    // Three floats per vertex.
    std::vector<float> Positions;
    // Three per triangle, each a vertex number below Positions.size() / 3.
    std::vector<int32_t> Indices;
};

// False with the last-error text set when the file cannot be read or is damaged.
bool ReadCollisionMesh(std::string_view path, VCollisionMeshFile& mesh, VChunkStreamProvider* provider = nullptr);

// The file as text: chunks, counts and bounds.
std::string DescribeCollisionMesh(const VCollisionMeshFile& mesh);
