#include "TiledGridScene.h"

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
standin::MeshDescription Grid()
{
    standin::MeshDescription mesh;
    for (int y = 0; y <= kQuadsY; ++y)
        for (int x = 0; x <= kQuadsX; ++x)
            mesh.points.emplace_back(
                x, 0.01 * ((x - kQuadsX / 2) * (x - kQuadsX / 2) + (y - kQuadsY / 2) * (y - kQuadsY / 2)), y);
    for (int y = 0; y < kQuadsY; ++y)
        for (int x = 0; x < kQuadsX; ++x) {
            const int corner = y * (kQuadsX + 1) + x;
            mesh.counts.push_back(4);
            for (int c : {corner, corner + kQuadsX + 1, corner + kQuadsX + 2, corner + 1})
                mesh.connects.push_back(c);
        }
    return mesh;
}

standin::UVSpec GridUVs(const standin::MeshDescription& mesh)
{
    standin::UVSpec uvs;
    for (int y = 0; y <= kQuadsY; ++y)
        for (int x = 0; x <= kQuadsX; ++x) {
            uvs.u.push_back(static_cast<float>(x) / kQuadsX);
            uvs.v.push_back(static_cast<float>(y) / kQuadsY);
        }
    uvs.ids = mesh.connects;
    return uvs;
}

} // namespace

void BuildTiledGridScene()
{
    standin::NewScene();
    const standin::MeshDescription grid = Grid();
    const standin::UVSpec uvs = GridUVs(grid);
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
