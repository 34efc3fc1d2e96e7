#include "geometry/lightmap/ChartOverlap.h"

#include "geometry/lightmap/Chart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <utility>
#include <vector>

namespace {

// Rounding lets a full turn around an inner point come out a hair above 2 pi.
constexpr double TurnTolerance = 1e-6;

double CornerAngle(Vec2 at, Vec2 a, Vec2 b)
{
    const Vec2 u = a - at;
    const Vec2 v = b - at;
    return std::abs(std::atan2(Cross(u, v), Dot(u, v)));
}

bool WindsTwice(const Chart& chart)
{
    std::vector<double> turn(chart.Points.size(), 0.0);
    for (size_t corner = 0; corner < chart.Corners.size(); corner += 3) {
        for (size_t k = 0; k < 3; ++k) {
            const uint32_t at = chart.Corners[corner + k];
            const uint32_t a = chart.Corners[corner + (k + 1) % 3];
            const uint32_t b = chart.Corners[corner + (k + 2) % 3];
            turn[at] += CornerAngle(chart.UV[at], chart.UV[a], chart.UV[b]);
        }
    }
    const double limit = 2.0 * std::numbers::pi * (1.0 + TurnTolerance);
    return std::any_of(turn.begin(), turn.end(), [limit](double angle) { return angle > limit; });
}

using Edge = std::pair<uint32_t, uint32_t>;

double Orientation(Vec2 a, Vec2 b, Vec2 c)
{
    return Cross(b - a, c - a);
}

bool Within(double value, double a, double b)
{
    return value >= std::min(a, b) && value <= std::max(a, b);
}

// Whether the closed edges meet: crossing, touching, or lying along each other. Edges that share
// a point meet there by design and do not count; two parts of a chart that merely touch would
// fill the same texels. A join of two flat charts along parallel creases (a wall's step) can lay
// one onto the other with every border edge only touching or running along another, which a
// test of proper crossings alone would miss.
bool EdgesMeet(const Chart& chart, Edge e, Edge f)
{
    if (e.first == f.first || e.first == f.second || e.second == f.first || e.second == f.second)
        return false;
    const Vec2 a = chart.UV[e.first];
    const Vec2 b = chart.UV[e.second];
    const Vec2 c = chart.UV[f.first];
    const Vec2 d = chart.UV[f.second];
    const double abc = Orientation(a, b, c);
    const double abd = Orientation(a, b, d);
    const double cda = Orientation(c, d, a);
    const double cdb = Orientation(c, d, b);
    if (((abc > 0.0 && abd < 0.0) || (abc < 0.0 && abd > 0.0)) && ((cda > 0.0 && cdb < 0.0) || (cda < 0.0 && cdb > 0.0)))
        return true;
    const auto onSegment = [](Vec2 p, Vec2 q, Vec2 r) { return Within(r.X, p.X, q.X) && Within(r.Y, p.Y, q.Y); };
    return (abc == 0.0 && onSegment(a, b, c)) || (abd == 0.0 && onSegment(a, b, d)) ||
           (cda == 0.0 && onSegment(c, d, a)) || (cdb == 0.0 && onSegment(c, d, b));
}

// Border edges sorted into a grid of about one edge per cell; only edges sharing a cell are
// compared, which keeps the test near linear for the long borders of large charts.
bool BorderMeetsItself(const Chart& chart)
{
    const std::vector<Edge>& border = chart.Border;
    if (border.size() < 4)
        return false;
    Vec2 low = chart.UV[border[0].first];
    Vec2 high = low;
    for (const Edge& edge : border) {
        for (uint32_t point : {edge.first, edge.second}) {
            low = {std::min(low.X, chart.UV[point].X), std::min(low.Y, chart.UV[point].Y)};
            high = {std::max(high.X, chart.UV[point].X), std::max(high.Y, chart.UV[point].Y)};
        }
    }
    const int side = std::max(1, static_cast<int>(std::sqrt(static_cast<double>(border.size()))));
    const double cellWidth = std::max(high.X - low.X, 1e-300) / side;
    const double cellHeight = std::max(high.Y - low.Y, 1e-300) / side;
    const auto cell = [side](double value, double origin, double width) {
        return std::clamp(static_cast<int>((value - origin) / width), 0, side - 1);
    };
    // (cell, edge) pairs, sorted by cell.
    std::vector<std::pair<int, uint32_t>> entries;
    for (size_t i = 0; i < border.size(); ++i) {
        const Vec2 a = chart.UV[border[i].first];
        const Vec2 b = chart.UV[border[i].second];
        const int x0 = cell(std::min(a.X, b.X), low.X, cellWidth);
        const int x1 = cell(std::max(a.X, b.X), low.X, cellWidth);
        const int y0 = cell(std::min(a.Y, b.Y), low.Y, cellHeight);
        const int y1 = cell(std::max(a.Y, b.Y), low.Y, cellHeight);
        for (int y = y0; y <= y1; ++y) {
            for (int x = x0; x <= x1; ++x)
                entries.emplace_back(y * side + x, static_cast<uint32_t>(i));
        }
    }
    std::sort(entries.begin(), entries.end());
    for (size_t first = 0; first < entries.size();) {
        size_t last = first;
        while (last < entries.size() && entries[last].first == entries[first].first)
            ++last;
        for (size_t i = first; i < last; ++i) {
            for (size_t j = i + 1; j < last; ++j) {
                if (EdgesMeet(chart, border[entries[i].second], border[entries[j].second]))
                    return true;
            }
        }
        first = last;
    }
    return false;
}

} // namespace

bool OverlapsItself(const Chart& chart)
{
    return WindsTwice(chart) || BorderMeetsItself(chart);
}
