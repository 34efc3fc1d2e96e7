#include "WideTerrainScene.h"

#include "GridMesh.h"

#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

constexpr double Width = 52000.0;
constexpr int ShaderCount = 4;
constexpr int TileQuads = 37;

double Height(double x, double z) { return 300.0 * std::sin(0.0007 * x) * std::cos(0.0005 * z); }

standin::MeshDescription Tile(int tileColumn, int tileRow, double step)
{
    return GridMesh(TileQuads, TileQuads, [&](int column, int row) {
        const double x = step * (tileColumn * TileQuads + column);
        const double z = step * (tileRow * TileQuads + row);
        return MPoint(x, Height(x, z), z);
    });
}

} // namespace

int BuildWideTerrainScene(int triangleCount)
{
    const int tiles = std::max(1, static_cast<int>(std::lround(std::sqrt(triangleCount / 2.0) / TileQuads)));
    const double step = Width / (tiles * TileQuads);
    standin::NewScene();
    std::vector<MObject> shadingEngines;
    for (int s = 0; s < ShaderCount; ++s)
        shadingEngines.push_back(standin::CreateShader("lambert", "ground" + std::to_string(s)));
    for (int row = 0; row < tiles; ++row)
        for (int column = 0; column < tiles; ++column) {
            const std::string name = "tile" + std::to_string(row * tiles + column);
            const standin::MeshDescription mesh = Tile(column, row, step);
            const MObject shape = standin::CreateMesh(name + "Shape", standin::CreateNode("transform", name), mesh);
            standin::SetUVs(shape, GridUVs(mesh, TileQuads, TileQuads));
            standin::Assign(shadingEngines[static_cast<size_t>((column + 3 * row) % ShaderCount)], shape);
        }
    return 2 * TileQuads * TileQuads * tiles * tiles;
}
