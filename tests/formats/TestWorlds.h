#pragma once
// Small literal worlds for the writer tests.

#include "model/VMWorld.h"

#include <cstdint>
#include <initializer_list>
#include <string>

inline VMMaterial& AddMaterial(VMWorld& world, const std::string& name)
{
    auto material = VMMeshBase::NewMaterial();
    material->Name = name;
    VMMaterial& record = *material;
    world.Materials.Add(std::move(material));
    return record;
}

inline VMVertex& AddVertex(VMWorld& world, float x, float y, float z)
{
    auto vertex = VMWorld::NewVertex();
    vertex->Position[0] = x;
    vertex->Position[1] = y;
    vertex->Position[2] = z;
    world.Bounds.Grow(vertex->Position);
    world.Vertices.Add(std::move(vertex));
    return *world.Vertices.Get(world.Vertices.Count() - 1);
}

// A polygon of the listed vertex numbers, in no group.
inline VMPolygon& AddPolygon(VMWorld& world, std::initializer_list<int> corners, VMMaterial& material)
{
    auto polygon = VMWorld::NewPolygon();
    for (int corner : corners) {
        polygon->Corners.push_back(world.Vertices[corner]);
        polygon->Neighbours.push_back(nullptr);
    }
    polygon->SetMaterial(&material);
    polygon->Group = NoGroup;
    VMPolygon& record = *polygon;
    world.Polygons.Add(std::move(polygon));
    return record;
}

// A tri-list of the listed vertex numbers (three per triangle), in no group.
inline VMTriList& AddTriList(VMWorld& world, std::initializer_list<int> corners, VMMaterial& material)
{
    auto triList = VMWorld::NewTriList();
    for (int corner : corners)
        triList->Corners.push_back(world.Vertices[corner]);
    triList->SetMaterial(&material);
    triList->Group = NoGroup;
    VMTriList& record = *triList;
    world.TriLists.Add(std::move(triList));
    return record;
}

// n x n quads of two triangles each on a grid of (n + 1)^2 vertices; one polygon per triangle.
inline void AddGrid(VMWorld& world, int n, VMMaterial& material)
{
    const int first = world.Vertices.Count();
    for (int y = 0; y <= n; ++y) {
        for (int x = 0; x <= n; ++x)
            AddVertex(world, static_cast<float>(x), static_cast<float>(y), 0.0f);
    }
    for (int y = 0; y < n; ++y) {
        for (int x = 0; x < n; ++x) {
            const int a = first + y * (n + 1) + x;
            const int b = a + 1;
            const int c = a + n + 1;
            const int d = c + 1;
            AddPolygon(world, {a, b, d}, material);
            AddPolygon(world, {a, d, c}, material);
        }
    }
}
