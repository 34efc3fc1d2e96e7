#include "geometry/lightmap/AtlasMesh.h"

#include "geometry/lightmap/FaceAdjacency.h"

AtlasMesh::AtlasMesh(std::span<const float> positions, std::span<const uint32_t> indices)
    : Positions(positions)
    , Indices(indices)
    , Shared(SharedPositions(positions))
    , Across(BuildFaceAdjacency(Shared, indices))
{
    const int faceCount = FaceCount();
    Normals.resize(static_cast<size_t>(faceCount));
    Areas.resize(static_cast<size_t>(faceCount));
    Centroids.resize(static_cast<size_t>(faceCount));
    for (int face = 0; face < faceCount; ++face) {
        const Vec3 a = Corner(face, 0);
        const Vec3 b = Corner(face, 1);
        const Vec3 c = Corner(face, 2);
        const Vec3 normal = Cross(b - a, c - a);
        const double length = Length(normal);
        const size_t f = static_cast<size_t>(face);
        Areas[f] = 0.5 * length;
        Normals[f] = length > 0.0 ? normal * (1.0 / length) : Vec3{};
        Centroids[f] = (a + b + c) * (1.0 / 3.0);
    }
}
