#include "RandomMeshes.h"

#include <cmath>
#include <numbers>

namespace {

// A random rotation and offset, applied to every shape so that nothing lines up with the axes.
struct Placement {
    float Rotation[3][3];
    float Offset[3];
};

Placement RandomPlacement(std::mt19937& random)
{
    std::uniform_real_distribution<float> angle(0.0f, 2.0f * std::numbers::pi_v<float>);
    std::uniform_real_distribution<float> offset(-500.0f, 500.0f);
    const float a = angle(random), b = angle(random);
    const float ca = std::cos(a), sa = std::sin(a), cb = std::cos(b), sb = std::sin(b);
    return Placement{{{ca, -sa * cb, sa * sb}, {sa, ca * cb, -ca * sb}, {0.0f, sb, cb}},
                     {offset(random), offset(random), offset(random)}};
}

// Adds the placed vertex and answers its index.
uint32_t AddPoint(IndexedMesh& mesh, const Placement& placement, float x, float y, float z)
{
    const float p[3] = {x, y, z};
    for (int row = 0; row < 3; ++row) {
        mesh.Positions.push_back(placement.Rotation[row][0] * p[0] + placement.Rotation[row][1] * p[1] +
                                 placement.Rotation[row][2] * p[2] + placement.Offset[row]);
    }
    return static_cast<uint32_t>(mesh.Positions.size() / 3 - 1);
}

// A grid of (columns + 1) x (rows + 1) points; point(i, j, out) gives each. Cells for which
// keep(i, j) is false are left out; a quarter of the points are split in two.
template <class Point, class Keep>
void AddGrid(IndexedMesh& mesh, int columns, int rows, Point point, Keep keep, std::mt19937& random, bool flip = false)
{
    const Placement placement = RandomPlacement(random);
    std::vector<uint32_t> first;
    std::vector<uint32_t> second;
    for (int j = 0; j <= rows; ++j) {
        for (int i = 0; i <= columns; ++i) {
            float p[3];
            point(i, j, p);
            first.push_back(AddPoint(mesh, placement, p[0], p[1], p[2]));
            second.push_back(random() % 4 == 0 ? AddPoint(mesh, placement, p[0], p[1], p[2]) : first.back());
        }
    }
    const auto at = [&](int i, int j, bool split) {
        const size_t k = static_cast<size_t>(j) * static_cast<size_t>(columns + 1) + static_cast<size_t>(i);
        return split ? second[k] : first[k];
    };
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < columns; ++i) {
            if (!keep(i, j))
                continue;
            const bool split = random() % 2 == 0;
            uint32_t quad[4] = {at(i, j, split), at(i + 1, j, split), at(i + 1, j + 1, split), at(i, j + 1, split)};
            if (flip)
                std::swap(quad[1], quad[3]);
            mesh.Indices.insert(mesh.Indices.end(), {quad[0], quad[1], quad[2], quad[0], quad[2], quad[3]});
        }
    }
}

} // namespace

void AddTerrain(IndexedMesh& mesh, int columns, int rows, float roughness, std::mt19937& random)
{
    std::uniform_real_distribution<float> phase(0.0f, 6.0f);
    std::uniform_real_distribution<float> noise(-roughness, roughness);
    const float p1 = phase(random), p2 = phase(random);
    const int holeEvery = 5 + static_cast<int>(random() % 20);
    AddGrid(
        mesh, columns, rows,
        [&](int i, int j, float out[3]) {
            out[0] = 10.0f * static_cast<float>(i);
            out[1] = 10.0f * static_cast<float>(j);
            out[2] = 25.0f * std::sin(0.11f * static_cast<float>(i) + p1) * std::cos(0.07f * static_cast<float>(j) + p2) +
                     noise(random);
        },
        [&](int i, int j) { return (i * 7 + j * 13) % holeEvery != 0; }, random);
}

void AddCubeSphere(IndexedMesh& mesh, int subdivisions, float radius, std::mt19937& random)
{
    for (int face = 0; face < 6; ++face) {
        const int axis = face / 2;
        const float sign = face % 2 == 0 ? 1.0f : -1.0f;
        AddGrid(
            mesh, subdivisions, subdivisions,
            [&](int i, int j, float out[3]) {
                float c[3];
                c[axis] = sign;
                c[(axis + 1) % 3] = (-1.0f + 2.0f * static_cast<float>(i) / static_cast<float>(subdivisions)) * sign;
                c[(axis + 2) % 3] = -1.0f + 2.0f * static_cast<float>(j) / static_cast<float>(subdivisions);
                const float length = std::sqrt(c[0] * c[0] + c[1] * c[1] + c[2] * c[2]);
                for (int k = 0; k < 3; ++k)
                    out[k] = c[k] / length * radius;
            },
            [](int, int) { return true; }, random);
    }
}

void AddBox(IndexedMesh& mesh, const float (&size)[3], float cellSize, std::mt19937& random)
{
    const Placement placement = RandomPlacement(random);
    for (int face = 0; face < 6; ++face) {
        const int axis = face / 2;
        const bool upper = face % 2 == 1;
        const int a1 = (axis + 1) % 3;
        const int a2 = (axis + 2) % 3;
        const int n1 = std::max(1, static_cast<int>(std::round(size[a1] / cellSize)));
        const int n2 = std::max(1, static_cast<int>(std::round(size[a2] / cellSize)));
        const uint32_t base = static_cast<uint32_t>(mesh.Positions.size() / 3);
        for (int j = 0; j <= n2; ++j) {
            for (int i = 0; i <= n1; ++i) {
                float p[3];
                p[axis] = upper ? size[axis] : 0.0f;
                p[a1] = size[a1] * static_cast<float>(i) / static_cast<float>(n1);
                p[a2] = size[a2] * static_cast<float>(j) / static_cast<float>(n2);
                AddPoint(mesh, placement, p[0], p[1], p[2]);
            }
        }
        const auto at = [&](int i, int j) { return base + static_cast<uint32_t>(j * (n1 + 1) + i); };
        for (int j = 0; j < n2; ++j) {
            for (int i = 0; i < n1; ++i) {
                const uint32_t a = at(i, j), b = at(i + 1, j), c = at(i + 1, j + 1), d = at(i, j + 1);
                if (upper)
                    mesh.Indices.insert(mesh.Indices.end(), {a, b, c, a, c, d});
                else
                    mesh.Indices.insert(mesh.Indices.end(), {a, c, b, a, d, c});
            }
        }
    }
}

void AddCylinder(IndexedMesh& mesh, int around, int along, float radius, float height, std::mt19937& random)
{
    AddGrid(
        mesh, around, along,
        [&](int i, int j, float out[3]) {
            const float angle = 2.0f * std::numbers::pi_v<float> * static_cast<float>(i % around) / static_cast<float>(around);
            out[0] = radius * std::cos(angle);
            out[1] = radius * std::sin(angle);
            out[2] = height * static_cast<float>(j) / static_cast<float>(along);
        },
        [](int, int) { return true; }, random, true);
}

IndexedMesh RandomMesh(std::mt19937& random)
{
    IndexedMesh mesh;
    const int shapes = 1 + static_cast<int>(random() % 4);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    for (int s = 0; s < shapes; ++s) {
        switch (random() % 4) {
        case 0:
            AddTerrain(mesh, 4 + static_cast<int>(random() % 30), 4 + static_cast<int>(random() % 30),
                       unit(random) < 0.5f ? 0.0f : 8.0f, random);
            break;
        case 1: AddCubeSphere(mesh, 2 + static_cast<int>(random() % 10), 20.0f + 200.0f * unit(random), random); break;
        case 2: {
            const int boxes = 1 + static_cast<int>(random() % 12);
            for (int b = 0; b < boxes; ++b) {
                const float size[3] = {5.0f + 300.0f * unit(random), 5.0f + 300.0f * unit(random),
                                       5.0f + 300.0f * unit(random)};
                AddBox(mesh, size, 20.0f + 60.0f * unit(random), random);
            }
            break;
        }
        default:
            AddCylinder(mesh, 6 + static_cast<int>(random() % 30), 1 + static_cast<int>(random() % 10),
                        10.0f + 100.0f * unit(random), 10.0f + 300.0f * unit(random), random);
            break;
        }
    }
    return mesh;
}
