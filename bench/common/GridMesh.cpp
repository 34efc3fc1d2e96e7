#include "GridMesh.h"

standin::MeshDescription GridMesh(int quadsX, int quadsY, const std::function<MPoint(int x, int y)>& place)
{
    standin::MeshDescription mesh;
    for (int y = 0; y <= quadsY; ++y)
        for (int x = 0; x <= quadsX; ++x)
            mesh.points.push_back(place(x, y));
    for (int y = 0; y < quadsY; ++y)
        for (int x = 0; x < quadsX; ++x) {
            const int corner = y * (quadsX + 1) + x;
            mesh.counts.push_back(4);
            for (int c : {corner, corner + quadsX + 1, corner + quadsX + 2, corner + 1})
                mesh.connects.push_back(c);
        }
    return mesh;
}

standin::UVSpec GridUVs(const standin::MeshDescription& grid, int quadsX, int quadsY)
{
    standin::UVSpec uvs;
    for (int y = 0; y <= quadsY; ++y)
        for (int x = 0; x <= quadsX; ++x) {
            uvs.u.push_back(static_cast<float>(x) / static_cast<float>(quadsX));
            uvs.v.push_back(static_cast<float>(y) / static_cast<float>(quadsY));
        }
    uvs.ids = grid.connects;
    return uvs;
}
