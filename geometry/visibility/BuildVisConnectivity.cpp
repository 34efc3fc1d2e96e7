// Corner contacts are found through a hash grid of cells a little wider than the search box, so
// each corner looks at one or two cells instead of walking a search tree. Since the contact
// relation is symmetric, each pair is found once, from the polygon earlier in the list; every
// polygon's connections then come out in list order, corner contacts first and intersections
// after them.
//
// Intersection candidates are, as the rule has it, the polygons owning a corner within the
// polygon's radius (plus 0.1) of its centre; but only those whose box meets the polygon's box
// can pierce it or be pierced, so the box tree offers just those, and the corner rule and the
// piercing tests then decide as before.

#include "geometry/visibility/VBBoxTree.h"
#include "geometry/visibility/VBGeometry.h"
#include "geometry/visibility/VBStages.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double ContactHalfWidth = 0.05;
// Cells five times the search box's width: most searches then stay within one cell on an axis,
// and so look up one to two cells instead of eight.
constexpr double CellsPerUnit = 1.0 / (10.0 * ContactHalfWidth);
constexpr double IntersectionMargin = 0.1;

// Coordinates beyond this many cells (or not finite) get no cell: such a corner touches nothing.
constexpr double CellLimit = 4.0e15;

bool CellCoordinate(double scaled, int64_t& cell)
{
    const double floored = std::floor(scaled);
    if (!(std::fabs(floored) < CellLimit))
        return false;
    cell = static_cast<int64_t>(floored);
    return true;
}

uint64_t CellHash(int64_t x, int64_t y, int64_t z)
{
    uint64_t hash = static_cast<uint64_t>(x) * 0x9E3779B97F4A7C15ull;
    hash ^= static_cast<uint64_t>(y) * 0xC2B2AE3D27D4EB4Full + (hash << 6) + (hash >> 2);
    hash ^= static_cast<uint64_t>(z) * 0x165667B19E3779F9ull + (hash << 6) + (hash >> 2);
    return hash ^ (hash >> 29);
}

// The corners of the listed polygons in hash buckets of their cells. Cells that share a bucket
// only cost a few extra distance tests: the exact test decides.
class CornerGrid {
public:
    explicit CornerGrid(const VBState& state) : m_state(state)
    {
        struct Placed {
            uint32_t Corner;
            int32_t Polygon;
            uint64_t Bucket;
        };
        std::vector<Placed> placed;
        for (const int32_t number : state.List) {
            const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
            for (uint32_t k = 0; k < polygon.CornerCount; ++k) {
                const VBVector& point = state.Corners[polygon.FirstCorner + k];
                int64_t x = 0;
                int64_t y = 0;
                int64_t z = 0;
                if (CellCoordinate(point.X * CellsPerUnit, x) && CellCoordinate(point.Y * CellsPerUnit, y) &&
                    CellCoordinate(point.Z * CellsPerUnit, z))
                    placed.push_back(Placed {polygon.FirstCorner + k, number, CellHash(x, y, z)});
            }
        }
        uint64_t buckets = 1;
        while (buckets < 2 * placed.size())
            buckets *= 2;
        m_mask = buckets - 1;
        m_start.assign(buckets + 1, 0);
        for (const Placed& entry : placed)
            ++m_start[(entry.Bucket & m_mask) + 1];
        for (size_t b = 0; b < buckets; ++b)
            m_start[b + 1] += m_start[b];
        std::vector<uint32_t> fill(m_start.begin(), m_start.end() - 1);
        m_entries.resize(placed.size());
        for (const Placed& entry : placed)
            m_entries[fill[entry.Bucket & m_mask]++] = Entry {entry.Corner, entry.Polygon};
    }

    // Calls visit(polygon) for every corner within the half-width of point on every axis (a
    // polygon once per such corner and possibly more often).
    template <class Visit>
    void ForEachNear(const VBVector& point, Visit visit) const
    {
        // A little slack, so that rounding in the scaling never loses a neighbouring cell.
        int64_t low[3];
        int64_t high[3];
        for (int axis = 0; axis < 3; ++axis) {
            const double lowScaled = (point[axis] - ContactHalfWidth) * CellsPerUnit;
            const double highScaled = (point[axis] + ContactHalfWidth) * CellsPerUnit;
            if (!CellCoordinate(lowScaled - 1e-6 - 1e-12 * std::fabs(lowScaled), low[axis]) ||
                !CellCoordinate(highScaled + 1e-6 + 1e-12 * std::fabs(highScaled), high[axis]))
                return;
        }
        for (int64_t x = low[0]; x <= high[0]; ++x)
            for (int64_t y = low[1]; y <= high[1]; ++y)
                for (int64_t z = low[2]; z <= high[2]; ++z) {
                    const uint64_t bucket = CellHash(x, y, z) & m_mask;
                    for (uint32_t k = m_start[bucket]; k < m_start[bucket + 1]; ++k) {
                        const Entry& entry = m_entries[k];
                        const VBVector& corner = m_state.Corners[entry.Corner];
                        if (std::fabs(corner.X - point.X) <= ContactHalfWidth &&
                            std::fabs(corner.Y - point.Y) <= ContactHalfWidth &&
                            std::fabs(corner.Z - point.Z) <= ContactHalfWidth)
                            visit(entry.Polygon);
                    }
                }
    }

private:
    struct Entry {
        uint32_t Corner;
        int32_t Polygon;
    };

    const VBState& m_state;
    uint64_t m_mask = 0;
    std::vector<uint32_t> m_start;
    std::vector<Entry> m_entries;
};

// Pieces on opposite sides of one portal stay apart: a and b, or the polygons they were cut or
// copied from, carry the same portal and differ in their back bit.
bool SeparatedByPortal(const VBState& state, int32_t a, int32_t b)
{
    if (state.Polygons[static_cast<size_t>(a)].Portal < 0 || state.Polygons[static_cast<size_t>(b)].Portal < 0)
        return false;
    for (int32_t p = a; p >= 0; p = state.Polygons[static_cast<size_t>(p)].Source) {
        const VBPolygon& pa = state.Polygons[static_cast<size_t>(p)];
        if (pa.Portal < 0)
            continue;
        for (int32_t q = b; q >= 0; q = state.Polygons[static_cast<size_t>(q)].Source) {
            const VBPolygon& qb = state.Polygons[static_cast<size_t>(q)];
            if (qb.Portal == pa.Portal && ((qb.Flags ^ pa.Flags) & VBFlagBack) != 0)
                return true;
        }
    }
    return false;
}

struct Pair {
    int32_t From;
    int32_t To;
};

// Pairs found by corner contact, each once with From earlier in the list than To.
std::vector<Pair> CornerContacts(const VBState& state)
{
    const CornerGrid grid(state);
    std::vector<Pair> pairs;
    std::vector<int32_t> found;
    for (const int32_t number : state.List) {
        const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
        const VBVector* corners = state.CornersOf(polygon);
        found.clear();
        for (uint32_t k = 0; k < polygon.CornerCount; ++k)
            grid.ForEachNear(corners[k], [&](int32_t other) {
                if (state.Polygons[static_cast<size_t>(other)].ListIndex > polygon.ListIndex)
                    found.push_back(other);
            });
        std::sort(found.begin(), found.end(), [&](int32_t a, int32_t b) {
            return state.Polygons[static_cast<size_t>(a)].ListIndex < state.Polygons[static_cast<size_t>(b)].ListIndex;
        });
        found.erase(std::unique(found.begin(), found.end()), found.end());
        for (const int32_t other : found)
            if (!SeparatedByPortal(state, number, other))
                pairs.push_back(Pair {number, other});
    }
    return pairs;
}

bool Straddles(const VBState& state, const VBPolygon& candidate, const VBPlane& plane)
{
    const VBVector* corners = state.CornersOf(candidate);
    const bool firstAbove = Dot(plane.Normal, corners[0]) - plane.D > 0.0;
    for (uint32_t k = 1; k < candidate.CornerCount; ++k)
        if ((Dot(plane.Normal, corners[k]) - plane.D > 0.0) != firstAbove)
            return true;
    return false;
}

bool OwnsCornerWithin(const VBState& state, const VBPolygon& candidate, const VBBox& cube)
{
    const VBVector* corners = state.CornersOf(candidate);
    for (uint32_t k = 0; k < candidate.CornerCount; ++k)
        if (cube.Contains(corners[k]))
            return true;
    return false;
}

// The box a polygon's intersection points can reach: its corners' box, widened by how far the
// corners stray from the plane (the piercing test measures points in the plane) and by rounding.
VBBox ReachBox(const VBState& state, const VBPolygon& polygon)
{
    const VBVector* corners = state.CornersOf(polygon);
    VBBox box = BoxOfCorners(corners, polygon.CornerCount);
    double extent = 0.0;
    for (int axis = 0; axis < 3; ++axis)
        extent = std::max({extent, std::fabs(box.Min[axis]), std::fabs(box.Max[axis])});
    box.Enlarge(2.0 * PlaneDeviation(corners, polygon.CornerCount, polygon.Plane) + 1e-9 * (1.0 + extent));
    return box;
}

// Directed pairs in the order they are connected: P to Q, then Q to P.
std::vector<Pair> IntersectionContacts(VBContext& context)
{
    const VBState& state = context.State;
    VBLog(context, "  VBVisBuilder: Creating additional intersecting connectivity...\r\n");
    std::vector<VBBox> boxes;
    boxes.reserve(state.List.size());
    for (const int32_t number : state.List)
        boxes.push_back(ReachBox(state, state.Polygons[static_cast<size_t>(number)]));
    VBBoxTree tree;
    tree.Build(boxes);

    std::vector<Pair> pairs;
    std::vector<int32_t> candidates;
    const auto count = static_cast<int>(state.List.size());
    for (int position = 0; position < count; ++position) {
        if (position % 256 == 0)
            VBLog(context, "  VBVisBuilder: Intersecting %i of %i \r\n", position, count);
        const int32_t number = state.List[static_cast<size_t>(position)];
        const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
        if (!polygon.Plane.Valid)
            continue;
        const VBVector* corners = state.CornersOf(polygon);
        const VBVector centre = CentreOfCorners(corners, polygon.CornerCount);
        double radius = 0.0;
        for (uint32_t k = 0; k < polygon.CornerCount; ++k)
            radius = std::max(radius, Length(corners[k] - centre));
        VBBox cube {centre, centre};
        cube.Enlarge(radius + IntersectionMargin);

        candidates.clear();
        tree.ForEachOverlapping(boxes[static_cast<size_t>(position)], [&](int32_t item) {
            if (item != position)
                candidates.push_back(item);
        });
        std::sort(candidates.begin(), candidates.end());
        for (const int32_t item : candidates) {
            const int32_t other = state.List[static_cast<size_t>(item)];
            const VBPolygon& candidate = state.Polygons[static_cast<size_t>(other)];
            if (candidate.CornerCount == 0 || !OwnsCornerWithin(state, candidate, cube) ||
                !Straddles(state, candidate, polygon.Plane))
                continue;
            const VBVector* otherCorners = state.CornersOf(candidate);
            if (EdgePierces(corners, polygon.CornerCount, otherCorners, candidate.CornerCount, candidate.Plane) ||
                EdgePierces(otherCorners, candidate.CornerCount, corners, polygon.CornerCount, polygon.Plane)) {
                if (SeparatedByPortal(state, number, other))
                    continue;
                pairs.push_back(Pair {number, other});
                pairs.push_back(Pair {other, number});
            }
        }
    }
    return pairs;
}

} // namespace

void BuildVisConnectivity(VBContext& context)
{
    VBState& state = context.State;
    size_t cornerTotal = 0;
    for (const int32_t number : state.List)
        cornerTotal += state.Polygons[static_cast<size_t>(number)].CornerCount;
    VBLog(context, "  VBVisBuilder: Total vertices %i;\r\n", static_cast<int>(cornerTotal));
    const size_t bytes = state.Polygons.capacity() * sizeof(VBPolygon) + state.Corners.capacity() * sizeof(VBVector);
    VBLog(context, "  VBVisBuilder: Memory used for polygons and vertices %ik \r\n", static_cast<int>(bytes / 1024));

    const std::vector<Pair> corners = CornerContacts(state);
    const std::vector<Pair> intersections =
        state.Mode >= VBModeIntersections ? IntersectionContacts(context) : std::vector<Pair> {};

    // Corner contacts in list order from both ends, then intersections in the order found,
    // without repeats.
    const size_t polygonCount = state.Polygons.size();
    std::vector<uint32_t> degree(polygonCount + 1, 0);
    for (const Pair& pair : corners) {
        ++degree[static_cast<size_t>(pair.From)];
        ++degree[static_cast<size_t>(pair.To)];
    }
    for (const Pair& pair : intersections)
        ++degree[static_cast<size_t>(pair.From)];
    state.ConnectionStart.assign(polygonCount + 1, 0);
    for (size_t p = 0; p < polygonCount; ++p)
        state.ConnectionStart[p + 1] = state.ConnectionStart[p] + degree[p];
    std::vector<uint32_t> fill(state.ConnectionStart.begin(), state.ConnectionStart.end() - 1);
    state.ConnectionTargets.assign(state.ConnectionStart.back(), -1);
    // Corner contacts come once per pair; only intersections can repeat a connection.
    for (const Pair& pair : corners) {
        state.ConnectionTargets[fill[static_cast<size_t>(pair.From)]++] = pair.To;
        state.ConnectionTargets[fill[static_cast<size_t>(pair.To)]++] = pair.From;
    }
    for (const Pair& pair : intersections) {
        const auto p = static_cast<size_t>(pair.From);
        const auto begin = state.ConnectionTargets.begin() + state.ConnectionStart[p];
        const auto end = state.ConnectionTargets.begin() + fill[p];
        if (std::find(begin, end, pair.To) == end)
            state.ConnectionTargets[fill[p]++] = pair.To;
    }
    // Squeeze out the room that repeats left unused.
    uint32_t write = 0;
    for (size_t p = 0; p < polygonCount; ++p) {
        const uint32_t begin = state.ConnectionStart[p];
        state.ConnectionStart[p] = write;
        for (uint32_t k = begin; k < fill[p]; ++k)
            state.ConnectionTargets[write++] = state.ConnectionTargets[k];
    }
    state.ConnectionStart[polygonCount] = write;
    state.ConnectionTargets.resize(write);
}
