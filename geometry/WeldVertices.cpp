#include "geometry/WeldVertices.h"

#include "geometry/ExactPositionGroups.h"

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

using Position = std::array<float, 3>;

// Vertices bucketed by grid cell, each cell a chain through m_next. The cell table keeps only the
// chain's head; the head's own position names the cell, so no cell keys are stored. Fresh memory
// is most of what a weld of millions of vertices costs.
class CellGrid {
public:
    CellGrid(const std::vector<Position>& positions, double cellSize)
        : m_positions(positions)
        , m_inverseCellSize(1.0 / cellSize)
    {
        const size_t count = positions.size();
        m_next.assign(count, -1);
        // The positions are distinct and cells a few tolerances wide, so nearly every position
        // opens a cell of its own.
        size_t tableSize = 16;
        while (3 * tableSize < 4 * count)
            tableSize *= 2;
        m_heads.assign(tableSize, -1);
        // Chains are built from the top so that each lists its vertices in ascending order.
        for (size_t i = count; i-- > 0;) {
            if (!IsFinite(positions[i].data()))
                continue;
            // Room for one more cell, whether or not this vertex opens one.
            if (4 * (m_usedCells + 1) > 3 * m_heads.size())
                Grow();
            int& head = m_heads[SlotOf(CellOf(positions[i].data()))];
            m_usedCells += head < 0 ? 1 : 0;
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
    int Head(const Cell& cell) const { return m_heads[SlotOf(cell)]; }

    int Next(int vertex) const { return m_next[static_cast<size_t>(vertex)]; }

private:
    size_t SlotOf(const Cell& cell) const
    {
        const size_t mask = m_heads.size() - 1;
        size_t slot = Hash(cell) & mask;
        while (m_heads[slot] >= 0 && !(CellOf(m_positions[static_cast<size_t>(m_heads[slot])].data()) == cell))
            slot = (slot + 1) & mask;
        return slot;
    }

    void Grow()
    {
        std::vector<int> old(m_heads.size() * 2, -1);
        old.swap(m_heads);
        for (int head : old) {
            if (head >= 0)
                m_heads[SlotOf(CellOf(m_positions[static_cast<size_t>(head)].data()))] = head;
        }
    }

    const std::vector<Position>& m_positions;
    double m_inverseCellSize;
    std::vector<int> m_heads;
    std::vector<int> m_next;
    size_t m_usedCells = 0;
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
    // A squared tolerance of 0 (or below, or NaN) admits no squared distance: nothing can weld.
    if (!(epsVert * epsVert > 0.0f) || count == 0)
        return;

    // Vertices at one position share their fate: any seed's distance to them is the same, and the
    // first of them to seed claims the others. So the search runs over distinct positions, each
    // standing for its group and seeding in the order of its lowest member.
    const ExactPositionGroups groups(vertices, static_cast<size_t>(count) / 4);
    std::vector<uint8_t> isLowest(static_cast<size_t>(count), 0);
    for (int i = 0; i < count; ++i) {
        if (groups.IsHighest(i))
            isLowest[static_cast<size_t>(groups.Next(i))] = 1;
    }
    const auto positionCount = static_cast<size_t>(std::count(isLowest.begin(), isLowest.end(), 1));
    std::vector<Position> positions;
    std::vector<int> lowest;
    positions.reserve(positionCount);
    lowest.reserve(positionCount);
    for (int i = 0; i < count; ++i) {
        if (!isLowest[static_cast<size_t>(i)])
            continue;
        const float* position = vertices.Get(i)->Position;
        positions.push_back({position[0], position[1], position[2]});
        lowest.push_back(i);
    }
    isLowest = {};

    // Candidates are tested on a packed copy of the positions, which keeps the scan out of the
    // scattered records.
    const double reach = ReachPerAxis(epsVert);
    // Cells several reaches wide: a seed usually needs only its own cell.
    const CellGrid grid(positions, 8.0 * reach);
    // The seed position that claimed each position (a seed claims its own), -1 while unclaimed.
    std::vector<int> seedOf(positions.size(), -1);
    std::vector<int> candidates;
    for (int s = 0; s < static_cast<int>(positionCount); ++s) {
        if (s % 4096 == 0)
            GeometryLog("AdjustTri: Merging Vertices (%d / %d)\r\n", lowest[static_cast<size_t>(s)], count);
        if (seedOf[static_cast<size_t>(s)] >= 0)
            continue;
        const float* seed = positions[static_cast<size_t>(s)].data();
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
                        if (w != s && seedOf[static_cast<size_t>(w)] < 0 &&
                            IsWeldCandidate(seed, positions[static_cast<size_t>(w)].data(), epsVert))
                            candidates.push_back(w);
                    }
                }
            }
        }
        const int seedVertex = lowest[static_cast<size_t>(s)];
        const bool hasCopies = groups.Next(seedVertex) != seedVertex;
        if (candidates.empty() && !hasCopies)
            continue;
        seedOf[static_cast<size_t>(s)] = s;
        for (int w : candidates)
            seedOf[static_cast<size_t>(w)] = s;
    }

    // Every member of a claimed position but the seed vertex itself moves onto the seed vertex.
    for (int w = 0; w < static_cast<int>(positionCount); ++w) {
        const int s = seedOf[static_cast<size_t>(w)];
        if (s < 0)
            continue;
        const int seedVertex = lowest[static_cast<size_t>(s)];
        const VMVertex& seed = *vertices.Get(seedVertex);
        const int first = lowest[static_cast<size_t>(w)];
        int member = first;
        do {
            if (member != seedVertex)
                WeldOnto(seed, *vertices.Get(member), epsUV);
            member = groups.Next(member);
        } while (member != first);
    }
}
