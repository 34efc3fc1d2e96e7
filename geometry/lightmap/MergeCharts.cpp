// Joining charts bottom-up, after Sander, Wood, Gortler, Snyder and Hoppe, "Multi-Chart Geometry
// Images" (Symposium on Geometry Processing 2003), restricted to joins that need no new
// flattening: two charts laid flat without stretch that meet along a border are one chart laid
// flat without stretch once one of them is turned onto the other, unless the two then overlap.

#include "geometry/lightmap/MergeCharts.h"

#include "geometry/lightmap/AtlasMesh.h"
#include "geometry/lightmap/ChartOverlap.h"
#include "geometry/lightmap/ChartStretch.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

namespace {

// Within this share of a chart's extent two flattenings of one point count as the same spot.
constexpr double MeetTolerance = 1e-5;
// What rounding leaves of the stretch of a chart laid flat without distortion.
constexpr double NoStretch = 1e-6;
// A chart is offered to at most this many neighbours, those it shares the most border with.
constexpr int MaxJoinTries = 3;

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

// Turns the small chart onto its neighbour and answers the joined chart, or false when their
// shared points do not meet or the result folds or overlaps itself. vertexPoint is scratch of
// one entry per mesh vertex, all -1, and is left so.
bool Join(const AtlasMesh& mesh, const Chart& small, const Chart& neighbour, Chart& joined,
          std::vector<int>& vertexPoint, std::vector<int>& pointOf, std::vector<int>& inChart)
{
    for (size_t point = 0; point < neighbour.Points.size(); ++point)
        vertexPoint[neighbour.Points[point]] = static_cast<int>(point);
    std::vector<std::pair<Vec2, Vec2>> shared;
    for (size_t point = 0; point < small.Points.size(); ++point) {
        const int there = vertexPoint[small.Points[point]];
        if (there >= 0)
            shared.emplace_back(small.UV[point], neighbour.UV[static_cast<size_t>(there)]);
    }
    for (uint32_t vertex : neighbour.Points)
        vertexPoint[vertex] = -1;
    if (shared.size() < 2)
        return false;

    // The shared point farthest from the first fixes the turn.
    size_t far = 1;
    for (size_t i = 2; i < shared.size(); ++i) {
        const Vec2 d = shared[i].first - shared[0].first;
        const Vec2 best = shared[far].first - shared[0].first;
        if (Dot(d, d) > Dot(best, best))
            far = i;
    }
    const Vec2 from = shared[far].first - shared[0].first;
    const Vec2 to = shared[far].second - shared[0].second;
    const double tolerance = MeetTolerance * std::max(Extent(small), Extent(neighbour));
    const double fromLength = std::sqrt(Dot(from, from));
    if (!(fromLength > tolerance) || std::abs(fromLength - std::sqrt(Dot(to, to))) > tolerance)
        return false;
    const Motion motion {shared[0].first, shared[0].second, Dot(from, to) / Dot(from, from),
                         Cross(from, to) / Dot(from, from)};
    for (const auto& [here, there] : shared) {
        const Vec2 miss = motion(here) - there;
        if (Dot(miss, miss) > tolerance * tolerance)
            return false;
    }

    joined.Faces = neighbour.Faces;
    joined.Faces.insert(joined.Faces.end(), small.Faces.begin(), small.Faces.end());
    NumberChartPoints(mesh, joined, pointOf, inChart);
    joined.UV.assign(joined.Points.size(), Vec2{});
    for (size_t point = 0; point < joined.Points.size(); ++point)
        vertexPoint[joined.Points[point]] = static_cast<int>(point);
    for (size_t point = 0; point < small.Points.size(); ++point)
        joined.UV[static_cast<size_t>(vertexPoint[small.Points[point]])] = motion(small.UV[point]);
    for (size_t point = 0; point < neighbour.Points.size(); ++point)
        joined.UV[static_cast<size_t>(vertexPoint[neighbour.Points[point]])] = neighbour.UV[point];
    for (uint32_t vertex : joined.Points)
        vertexPoint[vertex] = -1;
    return !MeasureChart(mesh, joined).Folded && !OverlapsItself(joined);
}

} // namespace

void MergeCharts(const AtlasMesh& mesh, std::vector<Chart>& charts)
{
    const size_t count = charts.size();
    if (count < 2)
        return;
    std::vector<int> chartOf(static_cast<size_t>(mesh.FaceCount()), -1);
    std::vector<double> area(count);
    std::vector<bool> unstretched(count);
    for (size_t c = 0; c < count; ++c) {
        for (int face : charts[c].Faces)
            chartOf[static_cast<size_t>(face)] = static_cast<int>(c);
        area[c] = SurfaceArea(mesh, charts[c]);
        unstretched[c] = MeasureChart(mesh, charts[c]).Stretch <= NoStretch;
    }
    std::vector<size_t> bySize(count);
    std::iota(bySize.begin(), bySize.end(), size_t{0});
    std::stable_sort(bySize.begin(), bySize.end(), [&](size_t a, size_t b) { return area[a] < area[b]; });
    const double total = std::accumulate(area.begin(), area.end(), 0.0);
    double below = 0.0;
    double median = 0.0;
    for (size_t c : bySize) {
        below += area[c];
        median = area[c];
        if (below >= 0.5 * total)
            break;
    }

    // The joins that save the longest gutters first: a wall's long top joins its face before
    // the short ends do, which can no longer join it then (they meet the top at its corners).
    std::vector<std::pair<double, size_t>> offers;
    for (size_t c = 0; c < count; ++c) {
        if (area[c] >= median || !unstretched[c])
            continue;
        const std::vector<std::pair<int, double>> neighbours = Neighbours(mesh, charts[c], static_cast<int>(c), chartOf, area);
        if (!neighbours.empty())
            offers.emplace_back(neighbours.front().second, c);
    }
    std::stable_sort(offers.begin(), offers.end(), [](const auto& a, const auto& b) { return a.first > b.first; });

    const size_t vertexCount = mesh.Positions.size() / 3;
    std::vector<int> vertexPoint(vertexCount, -1);
    std::vector<int> pointOf(vertexCount, -1);
    std::vector<int> inChart(static_cast<size_t>(mesh.FaceCount()), 0);
    for (const auto& [length, c] : offers) {
        if (charts[c].Faces.empty())
            continue;
        int tried = 0;
        for (const auto& [neighbour, shared] : Neighbours(mesh, charts[c], static_cast<int>(c), chartOf, area)) {
            const size_t n = static_cast<size_t>(neighbour);
            if (tried++ == MaxJoinTries)
                break;
            Chart joined;
            if (!unstretched[n] || !Join(mesh, charts[c], charts[n], joined, vertexPoint, pointOf, inChart))
                continue;
            for (int face : charts[c].Faces)
                chartOf[static_cast<size_t>(face)] = neighbour;
            area[n] += area[c];
            charts[n] = std::move(joined);
            charts[c] = Chart{};
            break;
        }
    }
    std::erase_if(charts, [](const Chart& chart) { return chart.Faces.empty(); });
}
