#pragma once
// Small literal worlds for the model tests.

#include "model/VMWorld.h"

#include <string>

inline VMVertex* AddVertex(VMWorld& world, float x, float y, float z)
{
    VMVertex* vertex = VMWorld::NewVertex().release();
    vertex->Position[0] = x;
    vertex->Position[1] = y;
    vertex->Position[2] = z;
    world.Vertices.Add(vertex);
    return vertex;
}

inline VMMaterial* AddMaterial(VMWorld& world, const std::string& name)
{
    VMMaterial* material = VMWorld::NewMaterial().release();
    material->Name = name;
    world.Materials.Add(material);
    return material;
}

inline VMPolygon* AddTriangle(VMWorld& world, VMVertex* a, VMVertex* b, VMVertex* c, VMMaterial* material)
{
    VMPolygon* polygon = VMWorld::NewTriangle(a, b, c).release();
    polygon->SetMaterial(material);
    world.Polygons.Add(polygon);
    return polygon;
}

inline VMVisArea* AddVisArea(VMWorld& world, const std::string& name)
{
    VMVisArea* area = VMWorld::NewVisArea().release();
    area->Name = name;
    world.VisAreas.Add(area);
    return area;
}
