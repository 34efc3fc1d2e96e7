#pragma once
// The collision mesh file (".qcolmesh"): a bare triangle soup for physics.
//
// COLM:  "LOCV" (0x56434F4C) | i32 1 | i32 0
// VIND:  i32 vertex count V | i32 index count I | V positions (3 floats) | I vertex numbers

#include "formats/SaveParams.h"

#include <cstdint>
#include <string_view>
#include <vector>

class VMWorld;

struct VCollisionTriangles {
    // Positions, three floats per vertex, in the world's vertex order with unused vertices left out.
    std::vector<float> Positions;
    // Three per triangle, numbers into Positions.
    std::vector<int32_t> Indices;
    // The Maya source node of each triangle's primitive.
    std::vector<uint32_t> Objects;
};

// The colliding triangles: a fan from the first corner of every polygon whose collision flags
// are set, each corner replaced by the vertex it was welded into, then the corners of every
// colliding tri-list as they stand. Vertices that no triangle uses are dropped and the rest
// renumbered in order. Answers false when a primitive refers to a vertex outside the world's
// vertex list.
bool CollectCollisionTriangles(const VMWorld& world, VCollisionTriangles& triangles);

// Drops the positions that no triangle uses, keeping the order of the rest, and renumbers.
void DropUnusedPositions(VCollisionTriangles& triangles);

// Clears the last-error text first; on failure sets it ("Failed to create file '%s'" when the
// file cannot be made) and answers false. Only params.Streams is read.
bool SaveCollisionMesh(const VMWorld& world, std::string_view path, const VSaveParams& params = {});
// The same file of triangles made elsewhere (convex hulls).
bool SaveCollisionMesh(const VCollisionTriangles& triangles, std::string_view path, const VSaveParams& params = {});
