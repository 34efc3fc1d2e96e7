#pragma once
// One material's triangles as the chart passes see them: positions, the faces that meet along
// each edge, and what each face looks like in space.

#include "geometry/lightmap/Vec.h"

#include <cstdint>
#include <span>
#include <vector>

struct AtlasMesh {
    // Three floats per vertex and three indices per triangle; the caller has made sure that the
    // positions are finite and the indices in range. Both spans must outlive the mesh.
    AtlasMesh(std::span<const float> positions, std::span<const uint32_t> indices);

    int FaceCount() const { return static_cast<int>(Indices.size() / 3); }
    Vec3 Position(uint32_t vertex) const
    {
        const float* p = &Positions[3 * static_cast<size_t>(vertex)];
        return {p[0], p[1], p[2]};
    }
    Vec3 Corner(int face, int corner) const { return Position(Indices[3 * static_cast<size_t>(face) + static_cast<size_t>(corner)]); }

    std::span<const float> Positions;
    std::span<const uint32_t> Indices;
    // Per vertex: the lowest vertex at exactly its position.
    std::vector<uint32_t> Shared;
    // Three per face: the face across each edge, -1 for an open edge.
    std::vector<int> Across;
    // Per face: unit normal (zero for a face without area), area and centroid.
    std::vector<Vec3> Normals;
    std::vector<double> Areas;
    std::vector<Vec3> Centroids;
};
