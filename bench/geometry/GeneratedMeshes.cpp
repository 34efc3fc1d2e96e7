#include "GeneratedMeshes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace {

struct GridPoint {
    float Position[3];
    float Normal[3];
};

int SideFor(int triangleCount)
{
    return std::max(1, static_cast<int>(std::sqrt(triangleCount / 2.0)));
}

// Two triangles per cell; corner (column, row) of the cell's lattice taken through point().
template <class Point, class UV>
HarvestedMesh Triangulate(int side, Point point, UV uv, uint32_t seed)
{
    HarvestedMesh mesh;
    mesh.Corners.reserve(static_cast<size_t>(side) * side * 6);
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> nudgeChance(0, 15);
    std::uniform_real_distribution<float> nudge(-HarvestNudge, HarvestNudge);
    const auto corner = [&](int column, int row, int cellColumn, int cellRow) {
        const GridPoint p = point(column, row);
        HarvestedCorner c{};
        std::copy(std::begin(p.Position), std::end(p.Position), c.Position);
        std::copy(std::begin(p.Normal), std::end(p.Normal), c.Normal);
        uv(column, row, cellColumn, cellRow, c.UV);
        if (nudgeChance(random) == 0)
            c.Position[0] += nudge(random);
        mesh.Corners.push_back(c);
    };
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            corner(column, row, column, row);
            corner(column + 1, row, column, row);
            corner(column + 1, row + 1, column, row);
            corner(column, row, column, row);
            corner(column + 1, row + 1, column, row);
            corner(column, row + 1, column, row);
        }
    }
    return mesh;
}

}

HarvestedMesh MakeNoisyTerrain(int triangleCount, uint32_t seed)
{
    const int side = SideFor(triangleCount);
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> noise(-0.4f, 0.4f);
    std::vector<float> heights(static_cast<size_t>(side + 1) * (side + 1));
    for (int row = 0; row <= side; ++row) {
        for (int column = 0; column <= side; ++column)
            heights[static_cast<size_t>(row) * (side + 1) + column] =
                30.0f * std::sin(column * 0.05f) * std::cos(row * 0.07f) + noise(random);
    }
    const auto height = [&](int column, int row) {
        column = std::clamp(column, 0, side);
        row = std::clamp(row, 0, side);
        return heights[static_cast<size_t>(row) * (side + 1) + column];
    };
    const auto point = [&](int column, int row) {
        GridPoint p{};
        p.Position[0] = static_cast<float>(column) * 10.0f;
        p.Position[1] = static_cast<float>(row) * 10.0f;
        p.Position[2] = height(column, row);
        const float dx = (height(column + 1, row) - height(column - 1, row)) / 20.0f;
        const float dy = (height(column, row + 1) - height(column, row - 1)) / 20.0f;
        const float length = std::sqrt(dx * dx + dy * dy + 1.0f);
        p.Normal[0] = -dx / length;
        p.Normal[1] = -dy / length;
        p.Normal[2] = 1.0f / length;
        return p;
    };
    // Each block of 64 cells has its own UV island, so corners on a block border differ in UV.
    const auto uv = [](int column, int row, int cellColumn, int cellRow, float out[2]) {
        out[0] = static_cast<float>(column - cellColumn / 64 * 64) / 64.0f;
        out[1] = static_cast<float>(row - cellRow / 64 * 64) / 64.0f;
    };
    return Triangulate(side, point, uv, seed + 1);
}

HarvestedMesh MakeClosedMesh(int triangleCount)
{
    const int side = SideFor(triangleCount);
    const auto point = [side](int column, int row) {
        const double u = 2.0 * std::numbers::pi * (column % side) / side;
        const double v = 2.0 * std::numbers::pi * (row % side) / side;
        const double ring = 1000.0 + 300.0 * std::cos(v);
        GridPoint p{};
        p.Position[0] = static_cast<float>(ring * std::cos(u));
        p.Position[1] = static_cast<float>(ring * std::sin(u));
        p.Position[2] = static_cast<float>(300.0 * std::sin(v));
        p.Normal[0] = static_cast<float>(std::cos(v) * std::cos(u));
        p.Normal[1] = static_cast<float>(std::cos(v) * std::sin(u));
        p.Normal[2] = static_cast<float>(std::sin(v));
        return p;
    };
    // u and v run 0..1 once around; the wrapped corners read 1 where their neighbours read 0.
    const auto uv = [side](int column, int row, int, int, float out[2]) {
        out[0] = static_cast<float>(column) / static_cast<float>(side);
        out[1] = static_cast<float>(row) / static_cast<float>(side);
    };
    return Triangulate(side, point, uv, 11);
}

std::unique_ptr<VMWorld> MakeHarvestedWorld(const HarvestedMesh& mesh)
{
    auto world = std::make_unique<VMWorld>();
    VMMaterial* material = VMWorld::NewMaterial().release();
    world->Materials.Add(material);
    world->Vertices.Reserve(static_cast<int>(mesh.Corners.size()));
    world->Polygons.Reserve(mesh.TriangleCount());
    VMVertex* corners[3];
    for (size_t i = 0; i < mesh.Corners.size(); ++i) {
        const HarvestedCorner& c = mesh.Corners[i];
        VMVertex* vertex = VMWorld::NewVertex().release();
        std::copy(std::begin(c.Position), std::end(c.Position), vertex->Position);
        std::copy(std::begin(c.Normal), std::end(c.Normal), vertex->Normal);
        std::copy(std::begin(c.UV), std::end(c.UV), vertex->BaseUV);
        world->Vertices.Add(vertex);
        corners[i % 3] = vertex;
        if (i % 3 == 2) {
            VMPolygon* triangle = VMWorld::NewTriangle(corners[0], corners[1], corners[2]).release();
            triangle->SetMaterial(material);
            world->Polygons.Add(triangle);
        }
    }
    return world;
}
