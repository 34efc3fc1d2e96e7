#pragma once
// Worlds for the stripping tests: literal vertex rows and grids of shared vertices, and the
// triangles of a world read back as vertex-number triples.

#include "model/VMWorld.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using Triangle = std::array<int, 3>;

inline VMMaterial* AddStripMaterial(VMWorld& world, uint32_t kind = 5)
{
    VMMaterial* material = VMWorld::NewMaterial().release();
    material->Kind = kind;
    world.Materials.Add(material);
    return material;
}

inline VMVertex* AddStripVertex(VMWorld& world, float x, float y, float z = 0.0f)
{
    VMVertex* vertex = VMWorld::NewVertex().release();
    vertex->Position[0] = x;
    vertex->Position[1] = y;
    vertex->Position[2] = z;
    world.Vertices.Add(vertex);
    return vertex;
}

inline VMPolygon* AddStripTriangle(VMWorld& world, const Triangle& corners, VMMaterial* material,
                                   VMVisArea* area = nullptr)
{
    VMPolygon* triangle = VMWorld::NewTriangle(world.Vertices.Get(corners[0]), world.Vertices.Get(corners[1]),
                                               world.Vertices.Get(corners[2]))
                              .release();
    triangle->SetMaterial(material);
    world.Polygons.Add(triangle);
    if (area != nullptr)
        area->Link(*triangle);
    return triangle;
}

// A grid of (columns + 1) x (rows + 1) shared vertices, two triangles per cell, all wound the
// same way. Vertex numbers continue from the world's vertex count.
inline std::vector<VMPolygon*> AddGrid(VMWorld& world, int columns, int rows, VMMaterial* material,
                                       float originX = 0.0f, float cell = 1.0f, VMVisArea* area = nullptr)
{
    const int first = world.Vertices.Count();
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column <= columns; ++column)
            AddStripVertex(world, originX + cell * static_cast<float>(column), cell * static_cast<float>(row));
    std::vector<VMPolygon*> triangles;
    const auto at = [&](int column, int row) { return first + row * (columns + 1) + column; };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            triangles.push_back(AddStripTriangle(
                world, {at(column, row), at(column + 1, row), at(column + 1, row + 1)}, material, area));
            triangles.push_back(AddStripTriangle(
                world, {at(column, row), at(column + 1, row + 1), at(column, row + 1)}, material, area));
        }
    }
    return triangles;
}

inline int VertexNumber(const VMWorld& world, const VMVertex* vertex) { return world.Vertices.Find(vertex); }

inline std::vector<int> CornerNumbers(const VMWorld& world, const VMPrimitive& primitive)
{
    std::vector<int> numbers;
    for (const VMVertex* corner : primitive.Corners)
        numbers.push_back(VertexNumber(world, corner));
    return numbers;
}

// The same triangle whichever corner it is read from; the winding is kept.
inline Triangle Canonical(Triangle triangle)
{
    const auto lowest = std::min_element(triangle.begin(), triangle.end());
    std::rotate(triangle.begin(), lowest, triangle.end());
    return triangle;
}

// Every triangle with three distinct corner records, from polygons and tri-lists, identified by
// the positions of its corners (so that it survives a rebuilt vertex list), sorted. The
// degenerate triangles that join stitched strips are left out.
using PositionTriangle = std::array<std::array<float, 3>, 3>;

inline PositionTriangle PositionsOf(const VMVertex* a, const VMVertex* b, const VMVertex* c)
{
    PositionTriangle triangle;
    const VMVertex* corners[3] = {a, b, c};
    for (int k = 0; k < 3; ++k)
        for (int axis = 0; axis < 3; ++axis)
            triangle[static_cast<size_t>(k)][static_cast<size_t>(axis)] = corners[k]->Position[axis];
    const auto lowest = std::min_element(triangle.begin(), triangle.end());
    std::rotate(triangle.begin(), lowest, triangle.end());
    return triangle;
}

inline void AddSurfaceTriangle(const VMVertex* a, const VMVertex* b, const VMVertex* c,
                               std::vector<PositionTriangle>& triangles)
{
    if (a != b && b != c && a != c)
        triangles.push_back(PositionsOf(a, b, c));
}

inline std::vector<PositionTriangle> SurfaceTriangles(const VMWorld& world)
{
    std::vector<PositionTriangle> triangles;
    for (const VMPolygon* polygon : world.Polygons)
        for (size_t k = 2; k < polygon->Corners.size(); ++k)
            AddSurfaceTriangle(polygon->Corners[0], polygon->Corners[k - 1], polygon->Corners[k], triangles);
    for (const VMTriList* triList : world.TriLists) {
        const auto& corners = triList->Corners;
        for (size_t i = 0; i + 2 < corners.size(); i += 3)
            AddSurfaceTriangle(corners[i], corners[i + 1], corners[i + 2], triangles);
    }
    std::sort(triangles.begin(), triangles.end());
    return triangles;
}
