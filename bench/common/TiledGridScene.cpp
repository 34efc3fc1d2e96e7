#include "TiledGridScene.h"

#include "GridMesh.h"

#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>

#include <string>
#include <vector>

namespace {

constexpr int kNodeCount = TiledGridNodeCount;
constexpr int kQuadsX = TiledGridQuadsX;
constexpr int kQuadsY = TiledGridQuadsY;
constexpr int kShaderCount = 8;

// Bent into a bowl so that normals vary across it.
MPoint BowlPoint(int x, int y)
{
    return MPoint(x, 0.01 * ((x - kQuadsX / 2) * (x - kQuadsX / 2) + (y - kQuadsY / 2) * (y - kQuadsY / 2)), y);
}

} // namespace

void BuildTiledGridScene()
{
    standin::NewScene();
    const standin::MeshDescription grid = GridMesh(kQuadsX, kQuadsY, BowlPoint);
    const standin::UVSpec uvs = GridUVs(grid, kQuadsX, kQuadsY);
    std::vector<MObject> shadingEngines;
    for (int s = 0; s < kShaderCount; ++s)
        shadingEngines.push_back(standin::CreateShader(s % 2 ? "blinn" : "lambert", "shader" + std::to_string(s)));
    for (int n = 0; n < kNodeCount; ++n) {
        const std::string name = "tile" + std::to_string(n);
        const MObject transform = standin::CreateNode("transform", name);
        const MObject shape = standin::CreateMesh(name + "Shape", transform, grid);
        standin::SetUVs(shape, uvs);
        standin::SetAttr(name + ".translateX", 50.0 * (n % 20));
        standin::SetAttr(name + ".translateZ", 50.0 * (n / 20));
        standin::Assign(shadingEngines[static_cast<size_t>(n % kShaderCount)], shape);
    }
}
