// Joining charts bottom-up, after Sander, Wood, Gortler, Snyder and Hoppe, "Multi-Chart Geometry
// Images" (Symposium on Geometry Processing 2003), restricted to joins that need no new
// flattening: two charts laid flat without stretch that meet along a border are one chart laid
// flat without stretch once one of them is turned onto the other, unless the two then overlap.

#include "geometry/lightmap/MergeCharts.h"

#include "geometry/lightmap/AtlasMesh.h"
#include "geometry/lightmap/ChartOverlap.h"
#include "geometry/lightmap/ChartStretch.h"
#include "geometry/lightmap/OrientChart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <queue>
#include <utility>

namespace {

// Within this share of a chart's extent two flattenings of one point count as the same spot.
constexpr double MeetTolerance = 1e-5;
// What rounding leaves of the stretch of a chart laid flat without distortion.
constexpr double NoStretch = 1e-6;
// The share of the atlas that charts usually fill, for an estimate of the gutter's length on
// the surface before the packing has chosen the scale.
constexpr double ExpectedFill = 0.65;
// No join grows a chart beyond this many faces: every join copies the joined chart, so that
// capping it keeps the joins linear in the faces.
constexpr size_t MaxJoinedFaces = 4096;

double SurfaceArea(const AtlasMesh& mesh, const Chart& chart)
{
    double area = 0.0;
    for (int face : chart.Faces)
        area += mesh.Areas[static_cast<size_t>(face)];
    return area;
}

double Extent(const Chart& chart)
{
    Vec2 low = chart.UV[0];
    Vec2 high = low;
    for (const Vec2& uv : chart.UV) {
        low = {std::min(low.X, uv.X), std::min(low.Y, uv.Y)};
        high = {std::max(high.X, uv.X), std::max(high.Y, uv.Y)};
    }
    return std::max(high.X - low.X, high.Y - low.Y);
}

// The charts that share border with this one and the length they share, longest first, the
// larger chart first where lengths tie.
std::vector<std::pair<int, double>> Neighbours(const AtlasMesh& mesh, const Chart& chart, int self,
                                               const std::vector<int>& chartOf, const std::vector<double>& area)
{
    std::vector<std::pair<int, double>> shared;
    for (int face : chart.Faces) {
        for (int k = 0; k < 3; ++k) {
            const int across = mesh.Across[3 * static_cast<size_t>(face) + static_cast<size_t>(k)];
            if (across < 0 || chartOf[static_cast<size_t>(across)] == self)
                continue;
            const int other = chartOf[static_cast<size_t>(across)];
            const double length = Length(mesh.Corner(face, (k + 1) % 3) - mesh.Corner(face, k));
            auto it = std::find_if(shared.begin(), shared.end(), [other](const auto& entry) { return entry.first == other; });
            if (it == shared.end())
                shared.emplace_back(other, length);
            else
                it->second += length;
        }
    }
    std::stable_sort(shared.begin(), shared.end(), [&area](const auto& a, const auto& b) {
        return a.second > b.second ||
               (a.second == b.second && area[static_cast<size_t>(a.first)] > area[static_cast<size_t>(b.first)]);
    });
    return shared;
}

// The rigid motion of the plane (no mirroring) that takes a onto b and the direction of c - a
// onto that of d - b.
struct Motion {
    Vec2 From;
    Vec2 To;
    double Cos = 1.0;
    double Sin = 0.0;
    Vec2 operator()(Vec2 p) const
    {
        const Vec2 q = p - From;
        return Vec2{Cos * q.X - Sin * q.Y, Sin * q.X + Cos * q.Y} + To;
    }
};

// Per face: its place in its chart's face list.
using Slots = std::vector<uint32_t>;

// The longest edge along which a face of the small chart meets one of the large chart, as the
// small chart's two points and the large chart's two points at the same spots on the surface;
// false when they share no edge.
bool LongestSharedEdge(const AtlasMesh& mesh, const Chart& small, const Chart& large, int largeIndex,
                       const std::vector<int>& chartOf, const Slots& slotOf, uint32_t (&here)[2], uint32_t (&there)[2])
{
    double longest = 0.0;
    for (size_t i = 0; i < small.Faces.size(); ++i) {
        const int face = small.Faces[i];
        for (int k = 0; k < 3; ++k) {
            const int across = mesh.Across[3 * static_cast<size_t>(face) + static_cast<size_t>(k)];
            if (across < 0 || chartOf[static_cast<size_t>(across)] != largeIndex)
                continue;
            const uint32_t p = small.Corners[3 * i + static_cast<size_t>(k)];
            const uint32_t q = small.Corners[3 * i + static_cast<size_t>(k + 1) % 3];
            const size_t slot = slotOf[static_cast<size_t>(across)];
            for (size_t j = 0; j < 3; ++j) {
                const uint32_t a = large.Corners[3 * slot + j];
                const uint32_t b = large.Corners[3 * slot + (j + 1) % 3];
                const double length = Length(mesh.Position(small.Points[p]) - mesh.Position(small.Points[q]));
                if (large.Points[a] == small.Points[q] && large.Points[b] == small.Points[p] && length > longest) {
                    longest = length;
                    here[0] = p;
                    here[1] = q;
                    there[0] = b;
                    there[1] = a;
                }
            }
        }
    }
    return longest > 0.0;
}

uint64_t EdgeKey(uint32_t from, uint32_t to)
{
    return uint64_t{from} << 32 | to;
}

// Turns the small chart about the longest edge it shares with the large one into the large
// one's plane and answers the joined chart, or false when they share no edge whose two
// flattenings have the same length. Points
// of the small chart that land on a point of the large one at the same surface position become
// one; the others stay apart, so the joined chart is cut where the two charts meet elsewhere on
// the surface, as a box's side is cut from its neighbours but the one it unfolds from.
// vertexPoint is scratch of one entry per mesh vertex, all -1, and is left so.
bool Join(const AtlasMesh& mesh, const Chart& small, const Chart& large, int largeIndex, const std::vector<int>& chartOf,
          const Slots& slotOf, Chart& joined, std::vector<int>& vertexPoint)
{
    uint32_t here[2] = {0, 0};
    uint32_t there[2] = {0, 0};
    if (!LongestSharedEdge(mesh, small, large, largeIndex, chartOf, slotOf, here, there))
        return false;
    const Vec2 from = small.UV[here[1]] - small.UV[here[0]];
    const Vec2 to = large.UV[there[1]] - large.UV[there[0]];
    const double tolerance = MeetTolerance * std::max(Extent(small), Extent(large));
    const double fromLength = std::sqrt(Dot(from, from));
    if (!(fromLength > tolerance) || std::abs(fromLength - std::sqrt(Dot(to, to))) > tolerance)
        return false;
    const Motion motion {small.UV[here[0]], large.UV[there[0]], Dot(from, to) / Dot(from, from),
                         Cross(from, to) / Dot(from, from)};

    joined.Faces = large.Faces;
    joined.Faces.insert(joined.Faces.end(), small.Faces.begin(), small.Faces.end());
    joined.Points = large.Points;
    joined.UV = large.UV;
    // The large chart's points by vertex: the first in vertexPoint, the others chained.
    std::vector<int> nextAtVertex(large.Points.size(), -1);
    for (size_t point = 0; point < large.Points.size(); ++point) {
        int& first = vertexPoint[large.Points[point]];
        nextAtVertex[point] = first;
        first = static_cast<int>(point);
    }
    std::vector<uint32_t> pointOf(small.Points.size());
    for (size_t point = 0; point < small.Points.size(); ++point) {
        const Vec2 uv = motion(small.UV[point]);
        int meeting = vertexPoint[small.Points[point]];
        while (meeting >= 0) {
            const Vec2 miss = joined.UV[static_cast<size_t>(meeting)] - uv;
            if (Dot(miss, miss) <= tolerance * tolerance)
                break;
            meeting = nextAtVertex[static_cast<size_t>(meeting)];
        }
        if (meeting < 0) {
            meeting = static_cast<int>(joined.Points.size());
            joined.Points.push_back(small.Points[point]);
            joined.UV.push_back(uv);
        }
        pointOf[point] = static_cast<uint32_t>(meeting);
    }
    for (uint32_t vertex : large.Points)
        vertexPoint[vertex] = -1;

    joined.Corners = large.Corners;
    for (uint32_t corner : small.Corners)
        joined.Corners.push_back(pointOf[corner]);
    // Border edges of the two that now run against each other lie inside the joined chart.
    std::vector<uint64_t> closed;
    for (const auto& [p, q] : small.Border) {
        if (pointOf[p] < large.Points.size() && pointOf[q] < large.Points.size())
            closed.push_back(EdgeKey(pointOf[q], pointOf[p]));
    }
    std::sort(closed.begin(), closed.end());
    std::vector<uint64_t> matched;
    for (const auto& edge : large.Border) {
        if (std::binary_search(closed.begin(), closed.end(), EdgeKey(edge.first, edge.second)))
            matched.push_back(EdgeKey(edge.second, edge.first));
        else
            joined.Border.push_back(edge);
    }
    std::sort(matched.begin(), matched.end());
    for (const auto& [p, q] : small.Border) {
        if (!std::binary_search(matched.begin(), matched.end(), EdgeKey(pointOf[p], pointOf[q])))
            joined.Border.emplace_back(pointOf[p], pointOf[q]);
    }
    return true;
}

bool LiesFlat(const AtlasMesh& mesh, const Chart& chart)
{
    const ChartShape shape = MeasureChart(mesh, chart);
    return !shape.Folded && shape.Stretch <= NoStretch && !OverlapsItself(chart);
}

// What a chart takes from the packing (PackCharts): its smallest rectangle grown by the gutter
// and the texel that its outline touches beyond the rectangle, both as long as they will be on
// the surface. A chart rarely fits beneath another's overhang with its gutter, so the rectangle
// is what counts.
double PaddedArea(const Chart& chart, double pad)
{
    std::vector<Vec2> outline;
    outline.reserve(chart.Border.size());
    for (const auto& edge : chart.Border)
        outline.push_back(chart.UV[edge.first]);
    const ChartRectangle rectangle = SmallestRectangle(std::move(outline));
    return (rectangle.Width + pad) * (rectangle.Height + pad);
}

struct Offer {
    double Shared = 0.0;
    size_t A = 0;
    size_t B = 0;
    // The charts' versions when offered: a chart that has grown since makes new offers.
    uint32_t VersionA = 0;
    uint32_t VersionB = 0;
};

bool Before(const Offer& a, const Offer& b)
{
    return a.Shared < b.Shared || (a.Shared == b.Shared && (a.A > b.A || (a.A == b.A && a.B > b.B)));
}

} // namespace

void MergeCharts(const AtlasMesh& mesh, std::vector<Chart>& charts, int atlasSize, int gutter)
{
    const size_t count = charts.size();
    if (count < 2)
        return;
    const double surface = std::accumulate(mesh.Areas.begin(), mesh.Areas.end(), 0.0);
    if (!(surface > 0.0))
        return;
    // The gutter and a texel, as long as they are on the surface if the atlas comes out as full
    // as usual.
    const double pad = (gutter + 1.0) * std::sqrt(surface / (ExpectedFill * atlasSize * atlasSize));

    std::vector<int> chartOf(static_cast<size_t>(mesh.FaceCount()), -1);
    Slots slotOf(static_cast<size_t>(mesh.FaceCount()), 0);
    std::vector<double> area(count);
    std::vector<double> cost(count);
    std::vector<bool> unstretched(count);
    std::vector<uint32_t> version(count, 0);
    for (size_t c = 0; c < count; ++c) {
        for (size_t i = 0; i < charts[c].Faces.size(); ++i) {
            chartOf[static_cast<size_t>(charts[c].Faces[i])] = static_cast<int>(c);
            slotOf[static_cast<size_t>(charts[c].Faces[i])] = static_cast<uint32_t>(i);
        }
        area[c] = SurfaceArea(mesh, charts[c]);
        unstretched[c] = MeasureChart(mesh, charts[c]).Stretch <= NoStretch;
        if (unstretched[c])
            cost[c] = PaddedArea(charts[c], pad);
    }

    // The joins that save the longest gutters first: a wall's long top joins its face before
    // the short ends do, which can no longer join it then (they meet the top at its corners).
    std::priority_queue<Offer, std::vector<Offer>, decltype(&Before)> offers(&Before);
    const auto offer = [&](size_t c) {
        for (const auto& [neighbour, shared] : Neighbours(mesh, charts[c], static_cast<int>(c), chartOf, area)) {
            const size_t n = static_cast<size_t>(neighbour);
            if (unstretched[n] && charts[c].Faces.size() + charts[n].Faces.size() <= MaxJoinedFaces)
                offers.push({shared, std::min(c, n), std::max(c, n), version[std::min(c, n)], version[std::max(c, n)]});
        }
    };
    for (size_t c = 0; c < count; ++c) {
        if (unstretched[c])
            offer(c);
    }

    std::vector<int> vertexPoint(mesh.Positions.size() / 3, -1);
    while (!offers.empty()) {
        const Offer next = offers.top();
        offers.pop();
        if (version[next.A] != next.VersionA || version[next.B] != next.VersionB || charts[next.A].Faces.empty() ||
            charts[next.B].Faces.empty())
            continue;
        // The larger chart stays where it lies and the smaller turns onto it.
        const size_t large = area[next.A] >= area[next.B] ? next.A : next.B;
        const size_t small = large == next.A ? next.B : next.A;
        Chart joined;
        if (!Join(mesh, charts[small], charts[large], static_cast<int>(large), chartOf, slotOf, joined, vertexPoint))
            continue;
        const double joinedCost = PaddedArea(joined, pad);
        if (joinedCost > cost[small] + cost[large] || !LiesFlat(mesh, joined))
            continue;
        for (size_t i = 0; i < charts[small].Faces.size(); ++i) {
            const size_t face = static_cast<size_t>(charts[small].Faces[i]);
            chartOf[face] = static_cast<int>(large);
            slotOf[face] = static_cast<uint32_t>(charts[large].Faces.size() + i);
        }
        area[large] += area[small];
        cost[large] = joinedCost;
        ++version[large];
        charts[large] = std::move(joined);
        charts[small] = Chart{};
        offer(large);
    }
    std::erase_if(charts, [](const Chart& chart) { return chart.Faces.empty(); });
}
