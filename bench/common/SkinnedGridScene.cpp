#include "SkinnedGridScene.h"

#include "GridMesh.h"

#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>
#include <standin/SkinWeights.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr double kJointSpacing = 10.0;
constexpr double kWeights[4] = {0.1, 0.4, 0.3, 0.2};

// Spans the chain: x from 0 to the last joint, 250 cm high.
standin::MeshDescription Grid(int quadsX, int quadsY)
{
    const double length = kJointSpacing * (SkinnedGridJointCount - 1);
    return GridMesh(quadsX, quadsY, [&](int x, int y) {
        return MPoint(length * x / quadsX, 250.0 * y / quadsY, 5.0 * ((x + y) % 3));
    });
}

// The joint just behind the vertex, its predecessor and the two after it.
standin::SkinWeights ChainWeights(const standin::MeshDescription& mesh)
{
    standin::SkinWeights weights;
    for (const MPoint& point : mesh.points) {
        const int behind = static_cast<int>(point.x / kJointSpacing);
        const int first = std::clamp(behind - 1, 0, SkinnedGridJointCount - 4);
        for (int k = 0; k < 4; ++k)
            weights.Add(static_cast<unsigned int>(first + k), kWeights[k]);
        weights.EndVertex();
    }
    return weights;
}

} // namespace

void BuildSkinnedGridScene(int quadsX, int quadsY)
{
    standin::NewScene();
    std::vector<MObject> joints;
    for (int j = 0; j < SkinnedGridJointCount; ++j) {
        const MObject joint = standin::CreateNode("joint", "bone" + std::to_string(j), joints.empty() ? MObject() : joints.back());
        if (j > 0)
            standin::SetAttr("bone" + std::to_string(j) + ".translateX", kJointSpacing);
        joints.push_back(joint);
    }
    const standin::MeshDescription grid = Grid(quadsX, quadsY);
    const MObject shape = standin::CreateMesh("bodyShape", standin::CreateNode("transform", "body"), grid);
    standin::SetUVs(shape, GridUVs(grid, quadsX, quadsY));
    standin::Assign(standin::CreateShader("lambert", "skin"), shape);
    standin::SkinMesh(shape, joints, ChainWeights(grid));
    standin::SaveBindPose(joints);
}
