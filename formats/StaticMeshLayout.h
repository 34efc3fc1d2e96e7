#pragma once
// The vertex order and index numbers that the static mesh file is written in.

#include <cstdint>
#include <vector>

class VMWorld;
struct VMVertex;

struct VStaticMeshLayout {
    // In output order. After a per-submesh numbering a world vertex appears once for every
    // submesh that uses it.
    std::vector<const VMVertex*> Vertices;
    // Output vertex numbers, the submeshes' lists one after another.
    std::vector<int32_t> RenderIndices;
    std::vector<int32_t> ShadowIndices;
};

// Without perSubmesh the world's vertex list is the output order and each vertex's index (its
// final number, set by BuildSubmeshes) is its number. With perSubmesh each submesh gets its own
// contiguous range: its shadow list, then its render list, is walked in order, and the first
// use of a vertex in the submesh takes the next number. The submeshes' first and last vertex
// numbers are updated to the output numbers.
//
// The world's vertex list itself is left alone: its primitives still refer to it, and the
// collision mesh is written from it after the static mesh.
VStaticMeshLayout LayOutStaticMesh(VMWorld& world, bool perSubmesh);
