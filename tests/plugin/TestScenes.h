#pragma once
// Tiny scenes for the end-to-end tests, built as a Maya script would.

#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>

#include <string>

// A cube of edge size with its lower corner at (x, y, z) in Maya's axes (y up): 8 vertices,
// 6 quads, under the transform named name.
inline MObject AddCube(const std::string& name, double x, double y, double z, double size = 1.0)
{
    const MObject transform = standin::CreateNode("transform", name);
    standin::MeshDescription description;
    for (int corner = 0; corner < 8; ++corner)
        description.points.emplace_back(x + size * (corner & 1), y + size * ((corner >> 1) & 1), z + size * ((corner >> 2) & 1));
    description.counts = {4, 4, 4, 4, 4, 4};
    //     6----7
    //    /|   /|     corner = x + 2y + 4z
    //   2----3 |
    //   | 4--|-5
    //   |/   |/
    //   0----1
    description.connects = {0, 2, 3, 1, 4, 5, 7, 6, 0, 1, 5, 4, 2, 6, 7, 3, 0, 4, 6, 2, 1, 3, 7, 5};
    return standin::CreateMesh(name + "Shape", transform, description);
}

// A lambert material with its shading group, given to the whole shape.
inline MObject AssignMaterial(const MObject& shape, const std::string& material,
                              const std::string& textureFile = {})
{
    const MObject shadingGroup = standin::CreateShader("lambert", material);
    if (!textureFile.empty())
        standin::CreateFileTexture(material + "File", textureFile, material + ".color");
    standin::Assign(shadingGroup, shape);
    return shadingGroup;
}
