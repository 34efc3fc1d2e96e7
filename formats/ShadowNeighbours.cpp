#include "formats/ShadowNeighbours.h"

#include <cstddef>

namespace {

// For every vertex, the triangles that use it, in triangle order.
class VertexTriangles {
public:
    VertexTriangles(const std::vector<int32_t>& indices, int32_t vertexCount)
        : m_start(static_cast<size_t>(vertexCount) + 1, 0)
    {
        const size_t cornerCount = indices.size() / 3 * 3;
        for (size_t corner = 0; corner < cornerCount; ++corner) {
            if (IsVertex(indices[corner], vertexCount))
                ++m_start[static_cast<size_t>(indices[corner]) + 1];
        }
        for (size_t v = 1; v < m_start.size(); ++v)
            m_start[v] += m_start[v - 1];
        m_triangles.resize(m_start.back());
        std::vector<size_t> fill(m_start.begin(), m_start.end() - 1);
        for (size_t corner = 0; corner < cornerCount; ++corner) {
            const int32_t vertex = indices[corner];
            if (IsVertex(vertex, vertexCount))
                m_triangles[fill[static_cast<size_t>(vertex)]++] = static_cast<int32_t>(corner / 3);
        }
    }

    static bool IsVertex(int32_t vertex, int32_t vertexCount) { return vertex >= 0 && vertex < vertexCount; }

    const int32_t* Begin(int32_t vertex) const { return m_triangles.data() + m_start[static_cast<size_t>(vertex)]; }
    const int32_t* End(int32_t vertex) const { return m_triangles.data() + m_start[static_cast<size_t>(vertex) + 1]; }

private:
    std::vector<size_t> m_start;
    std::vector<int32_t> m_triangles;
};

bool HasEdge(const int32_t* triangle, int32_t from, int32_t to)
{
    for (int e = 0; e < 3; ++e) {
        if (triangle[e] == from && triangle[(e + 1) % 3] == to)
            return true;
    }
    return false;
}

bool PointsTo(const std::vector<int32_t>& neighbours, int32_t triangle, int32_t target)
{
    const size_t base = static_cast<size_t>(triangle) * 3;
    return neighbours[base] == target || neighbours[base + 1] == target || neighbours[base + 2] == target;
}

} // namespace

std::vector<int32_t> ComputeShadowNeighbours(const std::vector<int32_t>& indices, int32_t vertexCount)
{
    const size_t triangleCount = indices.size() / 3;
    std::vector<int32_t> neighbours(triangleCount * 3, -1);
    const VertexTriangles users(indices, vertexCount);

    for (size_t t = 0; t < triangleCount; ++t) {
        for (int e = 0; e < 3; ++e) {
            const int32_t from = indices[t * 3 + static_cast<size_t>(e)];
            const int32_t to = indices[t * 3 + static_cast<size_t>((e + 1) % 3)];
            if (!VertexTriangles::IsVertex(from, vertexCount))
                continue;
            for (const int32_t* other = users.Begin(from); other != users.End(from); ++other) {
                if (HasEdge(indices.data() + static_cast<size_t>(*other) * 3, to, from)) {
                    neighbours[t * 3 + static_cast<size_t>(e)] = *other;
                    break;
                }
            }
        }
    }

    for (bool changed = true; changed;) {
        changed = false;
        for (size_t entry = 0; entry < neighbours.size(); ++entry) {
            const int32_t neighbour = neighbours[entry];
            if (neighbour >= 0 && !PointsTo(neighbours, neighbour, static_cast<int32_t>(entry / 3))) {
                neighbours[entry] = -1;
                changed = true;
            }
        }
    }
    return neighbours;
}
