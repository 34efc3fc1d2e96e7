#pragma once
// Random indexed meshes for the atlas tests: the shapes a level is made of, each with seams
// where harvesting splits vertices, placed and turned at random.

#include <cstdint>
#include <random>
#include <vector>

struct IndexedMesh {
    std::vector<float> Positions;
    std::vector<uint32_t> Indices;
    int TriangleCount() const { return static_cast<int>(Indices.size() / 3); }
};

// A rolling height field of columns x rows cells with some cells left out.
void AddTerrain(IndexedMesh& mesh, int columns, int rows, float roughness, std::mt19937& random);
// A closed sphere of six subdivided cube faces pushed out to the radius.
void AddCubeSphere(IndexedMesh& mesh, int subdivisions, float radius, std::mt19937& random);
// A closed box of the given size, each face cut into cells of about cellSize.
void AddBox(IndexedMesh& mesh, const float (&size)[3], float cellSize, std::mt19937& random);
// An open cylinder (a surface that flattens without stretch only once cut).
void AddCylinder(IndexedMesh& mesh, int around, int along, float radius, float height, std::mt19937& random);

// One to four of the shapes above, of random sizes, some vertices split in two along seams.
IndexedMesh RandomMesh(std::mt19937& random);
