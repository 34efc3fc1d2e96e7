#pragma once
// Meshes shaped as harvesting delivers them, for the geometry benchmarks: one vertex per
// triangle corner, so that neighbouring triangles share positions but no records, with UV seams
// that keep some coincident corners apart, and a share of corners nudged by a hair so that a
// small EpsVert has welding to do.

#include "model/VMWorld.h"

#include <cstdint>
#include <memory>
#include <vector>

struct HarvestedCorner {
    float Position[3];
    float Normal[3];
    float UV[2];
};

struct HarvestedMesh {
    // Three per triangle, in winding order.
    std::vector<HarvestedCorner> Corners;
    int TriangleCount() const { return static_cast<int>(Corners.size() / 3); }
};

// A height field with long waves and noise, 10 units per cell, a UV seam every 64 cells.
HarvestedMesh MakeNoisyTerrain(int triangleCount, uint32_t seed);
// A closed torus; the UV seams where u and v wrap around keep those corners apart.
HarvestedMesh MakeClosedMesh(int triangleCount);
// A sphere of radius 1000 made of the six faces of a subdivided cube, its radius rippled by a
// twentieth of a cell; each cube face has UVs of its own.
HarvestedMesh MakeNoisyCubeSphere(int triangleCount, uint32_t seed);
// Boxes side by side as a building kit has them: walls, pillars, slabs and crates, their faces
// cut into cells of about 25 units, each face with UVs of its own.
HarvestedMesh MakeBoxKit(int triangleCount, uint32_t seed);

// The world harvesting would make of the mesh: one material, one vertex per corner.
std::unique_ptr<VMWorld> MakeHarvestedWorld(const HarvestedMesh& mesh);

// The largest distance by which a nudged corner lies off its exact position.
constexpr float HarvestNudge = 0.0005f;
