#include "geometry/WeldVertices.h"

#include "model/VMVertex.h"
#include "report/GeometryLog.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

constexpr float NormalTolerance = 0.002f;
// Far beyond any real coordinate; clamping keeps cell numbers finite and neighbouring cells
// neighbours, so clamped vertices merely share a cell.
constexpr double CellLimit = 1099511627776.0;

struct Cell {
    int64_t X, Y, Z;
    bool operator==(const Cell&) const = default;
};

uint64_t Hash(const Cell& cell)
{
    uint64_t h = static_cast<uint64_t>(cell.X) * 0x9E3779B97F4A7C15ull;
    h ^= static_cast<uint64_t>(cell.Y) * 0xC2B2AE3D27D4EB4Full;
    h ^= static_cast<uint64_t>(cell.Z) * 0x165667B19E3779F9ull;
    h ^= h >> 29;
    h *= 0xBF58476D1CE4E5B9ull;
    h ^= h >> 32;
    return h;
}

int64_t CellNumber(double coordinate, double inverseCellSize)
{
    return static_cast<int64_t>(std::clamp(std::floor(coordinate * inverseCellSize), -CellLimit, CellLimit));
}

bool IsFinite(const float position[3])
{
    return std::isfinite(position[0]) && std::isfinite(position[1]) && std::isfinite(position[2]);
}

// Vertices bucketed by grid cell: per cell a chain through m_next.
class CellGrid {
public:
    CellGrid(const std::vector<VMVertex*>& vertices, double cellSize)
        : m_inverseCellSize(1.0 / cellSize)
    {
        const size_t count = vertices.size();
        m_next.assign(count, -1);
        size_t tableSize = 16;
        while (tableSize < 2 * count)
            tableSize *= 2;
        m_slots.assign(tableSize, -1);
        for (size_t i = 0; i < count; ++i) {
            const VMVertex* vertex = vertices[i];
            if (vertex == nullptr || !IsFinite(vertex->Position))
                continue;
            const Cell cell = CellOf(vertex->Position);
            int& head = m_heads[static_cast<size_t>(FindOrAddCell(cell))];
            m_next[i] = head;
            head = static_cast<int>(i);
        }
    }

    Cell CellOf(const float position[3]) const
    {
        return {CellNumber(position[0], m_inverseCellSize), CellNumber(position[1], m_inverseCellSize),
                CellNumber(position[2], m_inverseCellSize)};
    }

    int64_t CellNumberOf(double coordinate) const { return CellNumber(coordinate, m_inverseCellSize); }

    // The first vertex of the cell, or -1 for an empty cell.
    int Head(const Cell& cell) const
    {
        const size_t mask = m_slots.size() - 1;
        for (size_t slot = Hash(cell) & mask; m_slots[slot] >= 0; slot = (slot + 1) & mask) {
            const size_t id = static_cast<size_t>(m_slots[slot]);
            if (m_cells[id] == cell)
                return m_heads[id];
        }
        return -1;
    }

    int Next(int vertex) const { return m_next[static_cast<size_t>(vertex)]; }

private:
    int FindOrAddCell(const Cell& cell)
    {
        const size_t mask = m_slots.size() - 1;
        size_t slot = Hash(cell) & mask;
        for (; m_slots[slot] >= 0; slot = (slot + 1) & mask) {
            if (m_cells[static_cast<size_t>(m_slots[slot])] == cell)
                return m_slots[slot];
        }
        m_slots[slot] = static_cast<int>(m_cells.size());
        m_cells.push_back(cell);
        m_heads.push_back(-1);
        return m_slots[slot];
    }

    double m_inverseCellSize;
    std::vector<int> m_slots;
    std::vector<Cell> m_cells;
    std::vector<int> m_heads;
    std::vector<int> m_next;
};

// How far a candidate can lie from its seed on one axis. With a normal float square the sphere
// bounds it (with room for rounding); a square that underflows no longer does, and then only
// the box is left to bound it. An infinite tolerance puts every vertex into one cell or two.
double ReachPerAxis(float epsVert)
{
    if (!std::isfinite(epsVert))
        return std::numeric_limits<double>::max() / 8.0;
    const float squared = epsVert * epsVert;
    const double bound = squared >= std::numeric_limits<float>::min() ? epsVert : 3.0 * epsVert;
    return bound * 1.001;
}

bool IsWeldCandidate(const float s[3], const float w[3], float epsVert)
{
    const float box = 3.0f * epsVert;
    const float dx = w[0] - s[0];
    const float dy = w[1] - s[1];
    const float dz = w[2] - s[2];
    if (!(std::fabs(dx) <= box && std::fabs(dy) <= box && std::fabs(dz) <= box))
        return false;
    return dx * dx + dy * dy + dz * dz < epsVert * epsVert;
}

void WeldOnto(const VMVertex& s, VMVertex& w, float epsUV)
{
    std::copy(std::begin(s.Position), std::end(s.Position), w.Position);
    const bool uvClose = s.BaseUV[0] - epsUV <= w.BaseUV[0] && w.BaseUV[0] <= s.BaseUV[0] + epsUV &&
                         s.BaseUV[1] - epsUV <= w.BaseUV[1] && w.BaseUV[1] <= s.BaseUV[1] + epsUV;
    if (uvClose)
        std::copy(std::begin(s.BaseUV), std::end(s.BaseUV), w.BaseUV);
    const bool normalClose = std::fabs(w.Normal[0] - s.Normal[0]) <= NormalTolerance &&
                             std::fabs(w.Normal[1] - s.Normal[1]) <= NormalTolerance &&
                             std::fabs(w.Normal[2] - s.Normal[2]) <= NormalTolerance;
    if (normalClose)
        std::copy(std::begin(s.Normal), std::end(s.Normal), w.Normal);
}

}

void WeldVertices(const VMOwnedList<VMVertex>& vertices, float epsVert, float epsUV)
{
    const int count = vertices.Count();
    // A tolerance of 0 (or below, or NaN) admits no squared distance: nothing can weld.
    if (!(epsVert > 0.0f) || count == 0)
        return;

    std::vector<VMVertex*> list(vertices.begin(), vertices.end());
    // Candidates are tested on a packed copy of the positions: only unclaimed, hence unmoved,
    // vertices are ever compared, and the copy keeps the scan out of the scattered records.
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    std::vector<std::array<float, 3>> positions(static_cast<size_t>(count), {nan, nan, nan});
    for (size_t i = 0; i < list.size(); ++i) {
        if (list[i])
            positions[i] = {list[i]->Position[0], list[i]->Position[1], list[i]->Position[2]};
    }
    const double reach = ReachPerAxis(epsVert);
    // Cells several reaches wide: a seed usually needs only its own cell.
    const CellGrid grid(list, 8.0 * reach);
    std::vector<uint8_t> claimed(static_cast<size_t>(count), 0);
    std::vector<int> candidates;

    for (int s = 0; s < count; ++s) {
        if (s % 4096 == 0)
            GeometryLog("AdjustTri: Merging Vertices (%d / %d)\r\n", s, count);
        const float* seed = positions[static_cast<size_t>(s)].data();
        if (claimed[static_cast<size_t>(s)] || !IsFinite(seed))
            continue;

        int64_t low[3];
        int64_t high[3];
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = grid.CellNumberOf(static_cast<double>(seed[axis]) - reach);
            high[axis] = grid.CellNumberOf(static_cast<double>(seed[axis]) + reach);
        }
        candidates.clear();
        for (int64_t x = low[0]; x <= high[0]; ++x) {
            for (int64_t y = low[1]; y <= high[1]; ++y) {
                for (int64_t z = low[2]; z <= high[2]; ++z) {
                    for (int w = grid.Head({x, y, z}); w >= 0; w = grid.Next(w)) {
                        if (w != s && !claimed[static_cast<size_t>(w)] &&
                            IsWeldCandidate(seed, positions[static_cast<size_t>(w)].data(), epsVert))
                            candidates.push_back(w);
                    }
                }
            }
        }
        if (candidates.empty())
            continue;
        claimed[static_cast<size_t>(s)] = 1;
        const VMVertex& seedVertex = *list[static_cast<size_t>(s)];
        for (int w : candidates) {
            claimed[static_cast<size_t>(w)] = 1;
            WeldOnto(seedVertex, *list[static_cast<size_t>(w)], epsUV);
        }
    }
}
