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

// Two triangles per cell of a columns x rows grid, appended to the mesh; corner (column, row) of
// the cell's lattice taken through point().
template <class Point, class UV>
void AddTriangulated(HarvestedMesh& mesh, int columns, int rows, Point point, UV uv, std::mt19937& random)
{
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
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            corner(column, row, column, row);
            corner(column + 1, row, column, row);
            corner(column + 1, row + 1, column, row);
            corner(column, row, column, row);
            corner(column + 1, row + 1, column, row);
            corner(column, row + 1, column, row);
        }
    }
}

template <class Point, class UV>
HarvestedMesh Triangulate(int side, Point point, UV uv, uint32_t seed)
{
    HarvestedMesh mesh;
    mesh.Corners.reserve(static_cast<size_t>(side) * side * 6);
    std::mt19937 random(seed);
    AddTriangulated(mesh, side, side, point, uv, random);
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

HarvestedMesh MakeNoisyCubeSphere(int triangleCount, uint32_t seed)
{
    const int side = std::max(1, static_cast<int>(std::sqrt(triangleCount / 12.0)));
    // A twentieth of a cell, so that the surface is as rough at every resolution.
    const float ripple = 0.05f * 2000.0f / static_cast<float>(side);
    HarvestedMesh mesh;
    std::mt19937 random(seed);
    for (int face = 0; face < 6; ++face) {
        const int axis = face / 2;
        const auto point = [&](int column, int row) {
            // On the lattice of the cube's surface, in whole steps, so that a point shared by two
            // faces comes out with the same bits from either and the faces meet exactly.
            int lattice[3];
            lattice[axis] = face % 2 == 0 ? side : -side;
            lattice[(axis + 1) % 3] = (2 * column - side) * (face % 2 == 0 ? 1 : -1);
            lattice[(axis + 2) % 3] = 2 * row - side;
            float cube[3];
            for (int k = 0; k < 3; ++k)
                cube[k] = static_cast<float>(lattice[k]) / static_cast<float>(side);
            const float length = std::sqrt(cube[0] * cube[0] + cube[1] * cube[1] + cube[2] * cube[2]);
            const uint32_t hash = static_cast<uint32_t>(lattice[0]) * 73856093u ^ static_cast<uint32_t>(lattice[1]) * 19349663u ^
                                  static_cast<uint32_t>(lattice[2]) * 83492791u;
            const float radius = 1000.0f + ripple * (static_cast<float>(hash % 2001) / 1000.0f - 1.0f);
            GridPoint p{};
            for (int k = 0; k < 3; ++k) {
                p.Normal[k] = cube[k] / length;
                p.Position[k] = p.Normal[k] * radius;
            }
            return p;
        };
        const auto uv = [side](int column, int row, int, int, float out[2]) {
            out[0] = static_cast<float>(column) / static_cast<float>(side);
            out[1] = static_cast<float>(row) / static_cast<float>(side);
        };
        AddTriangulated(mesh, side, side, point, uv, random);
    }
    return mesh;
}

HarvestedMesh MakeBoxKit(int triangleCount, uint32_t seed)
{
    constexpr float CellSize = 25.0f;
    HarvestedMesh mesh;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    for (int box = 0; mesh.TriangleCount() < triangleCount; ++box) {
        float size[3];
        switch (random() % 4) {
        case 0: size[0] = 100 + 400 * unit(random); size[1] = 10 + 20 * unit(random); size[2] = 200 + 100 * unit(random); break;
        case 1: size[0] = size[1] = 20 + 30 * unit(random); size[2] = 200 + 200 * unit(random); break;
        case 2: size[0] = 100 + 200 * unit(random); size[1] = 100 + 200 * unit(random); size[2] = 10 + 10 * unit(random); break;
        default: for (float& s : size) s = 50 + 100 * unit(random); break;
        }
        const float origin[3] = {static_cast<float>(box % 64) * 700.0f, static_cast<float>(box / 64) * 700.0f, 0.0f};
        for (int face = 0; face < 6; ++face) {
            const int axis = face / 2;
            const bool upper = face % 2 == 1;
            // Across and along the face, turning so that the face looks outward.
            const int a1 = upper ? (axis + 1) % 3 : (axis + 2) % 3;
            const int a2 = upper ? (axis + 2) % 3 : (axis + 1) % 3;
            const int columns = std::max(1, static_cast<int>(std::round(size[a1] / CellSize)));
            const int rows = std::max(1, static_cast<int>(std::round(size[a2] / CellSize)));
            const auto point = [&](int column, int row) {
                GridPoint p{};
                p.Position[axis] = origin[axis] + (upper ? size[axis] : 0.0f);
                p.Position[a1] = origin[a1] + size[a1] * static_cast<float>(column) / static_cast<float>(columns);
                p.Position[a2] = origin[a2] + size[a2] * static_cast<float>(row) / static_cast<float>(rows);
                p.Normal[axis] = upper ? 1.0f : -1.0f;
                return p;
            };
            const auto uv = [&](int column, int row, int, int, float out[2]) {
                out[0] = static_cast<float>(column) / static_cast<float>(columns);
                out[1] = static_cast<float>(row) / static_cast<float>(rows);
            };
            AddTriangulated(mesh, columns, rows, point, uv, random);
        }
    }
    return mesh;
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
