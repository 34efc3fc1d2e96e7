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

// The world harvesting would make of the mesh: one material, one vertex per corner.
std::unique_ptr<VMWorld> MakeHarvestedWorld(const HarvestedMesh& mesh);

// The largest distance by which a nudged corner lies off its exact position.
constexpr float HarvestNudge = 0.0005f;
