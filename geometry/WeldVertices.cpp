#include "geometry/WeldVertices.h"

#include "geometry/ExactPositionGroups.h"
#include "geometry/MemberTable.h"

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

int64_t CellNumber(double coordinate, double inverseCellSize)
{
    return static_cast<int64_t>(std::clamp(std::floor(coordinate * inverseCellSize), -CellLimit, CellLimit));
}

bool IsFinite(const float position[3])
{
    return std::isfinite(position[0]) && std::isfinite(position[1]) && std::isfinite(position[2]);
}

using Position = std::array<float, 3>;

// How many vertices ahead the table slots they lead to are asked for.
constexpr size_t PrefetchDistance = 24;

struct CellHash {
    uint64_t operator()(const Cell& cell) const
    {
        return HashWords(static_cast<uint64_t>(cell.X), static_cast<uint64_t>(cell.Y), static_cast<uint64_t>(cell.Z));
    }
};

// A member's cell: the one its position lies in.
struct CellOfMember {
    const std::vector<Position>* Positions;
    double InverseCellSize;
    Cell operator()(int member) const
    {
        const float* p = (*Positions)[static_cast<size_t>(member)].data();
        return {CellNumber(p[0], InverseCellSize), CellNumber(p[1], InverseCellSize),
                CellNumber(p[2], InverseCellSize)};
    }
};

// Vertices bucketed by grid cell, each cell a chain through m_next whose head the cell table
// keeps.
class CellGrid {
public:
    CellGrid(const std::vector<Position>& positions, double cellSize)
        : m_cellOf{&positions, 1.0 / cellSize}
        // The positions are distinct and cells a few tolerances wide, so nearly every position
        // opens a cell of its own.
        , m_heads(positions.size(), m_cellOf, CellHash{})
    {
        const size_t count = positions.size();
        m_next.assign(count, -1);
        // Chains are built from the top so that each lists its vertices in ascending order.
        for (size_t i = count; i-- > 0;) {
            if (i >= PrefetchDistance && IsFinite(positions[i - PrefetchDistance].data()))
                m_heads.Prefetch(m_cellOf(static_cast<int>(i - PrefetchDistance)));
            if (!IsFinite(positions[i].data()))
                continue;
            int& head = m_heads.Member(m_cellOf(static_cast<int>(i)));
            m_next[i] = head;
            head = static_cast<int>(i);
        }
    }

    int64_t CellNumberOf(double coordinate) const { return CellNumber(coordinate, m_cellOf.InverseCellSize); }

    // The first vertex of the cell, or -1 for an empty cell.
    int Head(const Cell& cell) const { return m_heads.Find(cell); }

    void Prefetch(const Cell& cell) const { m_heads.Prefetch(cell); }

    int Next(int vertex) const { return m_next[static_cast<size_t>(vertex)]; }

private:
    CellOfMember m_cellOf;
    MemberTable<Cell, CellOfMember, CellHash> m_heads;
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

PositionRings WeldVertices(const VMOwnedList<VMVertex>& vertices, float epsVert, float epsUV)
{
    const int count = vertices.Count();
    // Harvested corners share each position several ways, six in a regular mesh.
    ExactPositionGroups groups(vertices, static_cast<size_t>(count) / 4);
    // A squared tolerance of 0 (or below, or NaN) admits no squared distance: nothing can weld.
    if (!(epsVert * epsVert > 0.0f) || count == 0)
        return std::move(groups).Rings();

    // Vertices at one position share their fate: any seed's distance to them is the same, and the
    // first of them to seed claims the others. So the search runs over distinct positions, each
    // standing for its group and seeding in the order of its lowest member.
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
    const auto searchBox = [&](size_t position, int64_t low[3], int64_t high[3]) {
        const float* p = positions[position].data();
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = grid.CellNumberOf(static_cast<double>(p[axis]) - reach);
            high[axis] = grid.CellNumberOf(static_cast<double>(p[axis]) + reach);
        }
    };
    std::vector<int> candidates;
    for (int s = 0; s < static_cast<int>(positionCount); ++s) {
        if (s % 4096 == 0)
            GeometryLog("AdjustTri: Merging Vertices (%d / %d)\r\n", lowest[static_cast<size_t>(s)], count);
        if (const size_t ahead = static_cast<size_t>(s) + PrefetchDistance; ahead < positionCount) {
            int64_t low[3];
            int64_t high[3];
            searchBox(ahead, low, high);
            for (int64_t x = low[0]; x <= high[0]; ++x)
                for (int64_t y = low[1]; y <= high[1]; ++y)
                    for (int64_t z = low[2]; z <= high[2]; ++z)
                        grid.Prefetch({x, y, z});
        }
        if (seedOf[static_cast<size_t>(s)] >= 0)
            continue;
        const float* seed = positions[static_cast<size_t>(s)].data();
        int64_t low[3];
        int64_t high[3];
        searchBox(static_cast<size_t>(s), low, high);
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

    // A claimed position now lies exactly on its seed's, which no unclaimed position does: its
    // group joins the seed's.
    PositionRings rings = std::move(groups).Rings();
    for (size_t w = 0; w < positionCount; ++w) {
        const int s = seedOf[w];
        if (s >= 0 && static_cast<size_t>(s) != w)
            rings.Join(lowest[w], lowest[static_cast<size_t>(s)]);
    }
    return rings;
}
