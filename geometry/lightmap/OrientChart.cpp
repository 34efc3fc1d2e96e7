// The smallest enclosing rectangle has a side on an edge of the convex hull: Freeman and
// Shapira, "Determining the Minimum-Area Encasing Rectangle for an Arbitrary Closed Curve"
// (Communications of the ACM, 1975). The hull comes from Andrew's monotone chain.

#include "geometry/lightmap/OrientChart.h"

#include "geometry/lightmap/Chart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace {

std::vector<Vec2> ConvexHull(std::vector<Vec2> points)
{
    std::sort(points.begin(), points.end(), [](Vec2 a, Vec2 b) { return a.X < b.X || (a.X == b.X && a.Y < b.Y); });
    if (points.size() < 3)
        return points;
    std::vector<Vec2> hull(2 * points.size());
    size_t count = 0;
    for (size_t i = 0; i < points.size(); ++i) {
        while (count >= 2 && Cross(hull[count - 1] - hull[count - 2], points[i] - hull[count - 2]) <= 0.0)
            --count;
        hull[count++] = points[i];
    }
    for (size_t i = points.size() - 1, lower = count + 1; i-- > 0;) {
        while (count >= lower && Cross(hull[count - 1] - hull[count - 2], points[i] - hull[count - 2]) <= 0.0)
            --count;
        hull[count++] = points[i];
    }
    hull.resize(count - 1);
    return hull;
}

} // namespace

ChartRectangle SmallestRectangle(std::vector<Vec2> points)
{
    const std::vector<Vec2> hull = ConvexHull(std::move(points));
    ChartRectangle best;
    double bestArea = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < hull.size(); ++i) {
        const Vec2 edge = hull[(i + 1) % hull.size()] - hull[i];
        const double length = std::sqrt(Dot(edge, edge));
        if (!(length > 0.0))
            continue;
        const Vec2 along = edge * (1.0 / length);
        const Vec2 across {-along.Y, along.X};
        double low[2] = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
        double high[2] = {-low[0], -low[1]};
        for (const Vec2& p : hull) {
            const double coordinates[2] = {Dot(p, along), Dot(p, across)};
            for (size_t k = 0; k < 2; ++k) {
                low[k] = std::min(low[k], coordinates[k]);
                high[k] = std::max(high[k], coordinates[k]);
            }
        }
        const double sides[2] = {high[0] - low[0], high[1] - low[1]};
        if (sides[0] * sides[1] < bestArea) {
            bestArea = sides[0] * sides[1];
            const bool alongLonger = sides[0] >= sides[1];
            best = {alongLonger ? along : across, std::max(sides[0], sides[1]), std::min(sides[0], sides[1])};
        }
    }
    return best;
}

void OrientChart(Chart& chart, double& width, double& height)
{
    // The direction of the x axis after turning: (cos, sin) of the angle turned back.
    const Vec2 axis = SmallestRectangle(chart.UV).Axis;
    const Vec2 across {-axis.Y, axis.X};
    Vec2 low {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Vec2 high {-low.X, -low.Y};
    for (Vec2& uv : chart.UV) {
        uv = {Dot(uv, axis), Dot(uv, across)};
        low = {std::min(low.X, uv.X), std::min(low.Y, uv.Y)};
        high = {std::max(high.X, uv.X), std::max(high.Y, uv.Y)};
    }
    for (Vec2& uv : chart.UV)
        uv = uv - low;
    width = high.X - low.X;
    height = high.Y - low.Y;
}
