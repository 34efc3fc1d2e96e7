#pragma once
// Small literal worlds for the geometry tests.

#include "model/VMWorld.h"

#include <cstdint>
#include <initializer_list>
#include <random>
#include <vector>

inline VMMaterial* AddMaterial(VMWorld& world)
{
    VMMaterial* material = VMWorld::NewMaterial().release();
    world.Materials.Add(material);
    return material;
}

inline VMVertex* AddVertex(VMWorld& world, float x, float y, float z)
{
    VMVertex* vertex = VMWorld::NewVertex().release();
    vertex->Position[0] = x;
    vertex->Position[1] = y;
    vertex->Position[2] = z;
    vertex->Normal[2] = 1.0f;
    world.Vertices.Add(vertex);
    return vertex;
}

inline VMPolygon* AddPolygon(VMWorld& world, std::initializer_list<VMVertex*> corners, VMMaterial* material)
{
    VMPolygon* polygon = VMWorld::NewPolygon().release();
    polygon->Corners.assign(corners.begin(), corners.end());
    polygon->Neighbours.assign(corners.size(), nullptr);
    polygon->SetMaterial(material);
    world.Polygons.Add(polygon);
    return polygon;
}

inline VMPolygon* AddTriangle(VMWorld& world, VMVertex* a, VMVertex* b, VMVertex* c, VMMaterial* material)
{
    return AddPolygon(world, {a, b, c}, material);
}

// As harvesting delivers it: one vertex per corner, so that neighbouring triangles share
// positions but no records.
inline VMPolygon* AddHarvestedTriangle(VMWorld& world, const float (&points)[3][3], VMMaterial* material)
{
    VMVertex* corners[3];
    for (int k = 0; k < 3; ++k)
        corners[k] = AddVertex(world, points[k][0], points[k][1], points[k][2]);
    return AddTriangle(world, corners[0], corners[1], corners[2], material);
}

inline std::vector<int> CornerIndices(const VMPolygon& polygon)
{
    std::vector<int> indices;
    for (const VMVertex* corner : polygon.Corners)
        indices.push_back(static_cast<int>(corner->Index));
    return indices;
}

// A grid of quads split into triangles, one vertex per corner, on coordinates of a coarse
// lattice so that many corners coincide exactly and others lie a jitter apart; UVs, normals
// and colours drawn from few values so that duplicates and near-duplicates both occur.
inline void AddRandomHarvestedMesh(VMWorld& world, VMMaterial* material, int triangleCount, uint32_t seed,
                                   float jitter)
{
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> lattice(0, 7);
    std::uniform_int_distribution<int> small(0, 2);
    std::uniform_real_distribution<float> offset(-jitter, jitter);
    for (int t = 0; t < triangleCount; ++t) {
        VMVertex* corners[3];
        for (VMVertex*& corner : corners) {
            const bool exact = small(random) != 0;
            corner = AddVertex(world, static_cast<float>(lattice(random)) + (exact ? 0.0f : offset(random)),
                               static_cast<float>(lattice(random)) + (exact ? 0.0f : offset(random)),
                               static_cast<float>(small(random)) * 0.5f);
            corner->BaseUV[0] = 0.25f * static_cast<float>(small(random));
            corner->BaseUV[1] = 0.001f * static_cast<float>(small(random));
            corner->Normal[0] = 0.001f * static_cast<float>(small(random));
            corner->Colour[0] = small(random) == 0 ? 0 : 255;
        }
        AddTriangle(world, corners[0], corners[1], corners[2], material);
    }
}
