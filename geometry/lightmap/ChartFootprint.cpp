#include "geometry/lightmap/ChartFootprint.h"


#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace {

constexpr double Grow = 0.001;

// Which slabs [s, s + 1] (grown by Grow) along the second coordinate the segment meets, and for
// each the range of first coordinates it covers there, as the indices of the touched texels.
// Called once with (x, y) for rows and once with (y, x) for columns.
template <class Touch>
void ForEachSlab(Vec2 p, Vec2 q, int firstLimit, int slabLimit, Touch touch)
{
    const double low = std::min(p.Y, q.Y);
    const double high = std::max(p.Y, q.Y);
    const int firstSlab = std::max(0, static_cast<int>(std::ceil(low - 1.0 - Grow)));
    const int lastSlab = std::min(slabLimit - 1, static_cast<int>(std::floor(high + Grow)));
    for (int slab = firstSlab; slab <= lastSlab; ++slab) {
        const double bottom = slab - Grow;
        const double top = slab + 1.0 + Grow;
        double from = std::numeric_limits<double>::infinity();
        double to = -from;
        for (const Vec2 end : {p, q}) {
            if (end.Y >= bottom && end.Y <= top) {
                from = std::min(from, end.X);
                to = std::max(to, end.X);
            }
        }
        for (double line : {bottom, top}) {
            if ((p.Y < line && q.Y > line) || (p.Y > line && q.Y < line)) {
                const double x = p.X + (line - p.Y) * (q.X - p.X) / (q.Y - p.Y);
                from = std::min(from, x);
                to = std::max(to, x);
            }
        }
        if (from > to)
            continue;
        const int first = std::max(0, static_cast<int>(std::ceil(from - 1.0 - Grow)));
        const int last = std::min(firstLimit - 1, static_cast<int>(std::floor(to + Grow)));
        if (first <= last)
            touch(slab, first, last);
    }
}

} // namespace

ChartFootprint RasterizeOutline(std::span<const std::pair<Vec2, Vec2>> outline, double scale)
{
    ChartFootprint footprint;
    double maxX = 0.0;
    double maxY = 0.0;
    for (const auto& [from, to] : outline) {
        maxX = std::max({maxX, from.X * scale, to.X * scale});
        maxY = std::max({maxY, from.Y * scale, to.Y * scale});
    }
    footprint.Width = static_cast<int>(std::floor(maxX + FootprintMargin + Grow)) + 1;
    footprint.Height = static_cast<int>(std::floor(maxY + FootprintMargin + Grow)) + 1;
    footprint.ColumnLow.assign(static_cast<size_t>(footprint.Width), footprint.Height);
    footprint.ColumnHigh.assign(static_cast<size_t>(footprint.Width), -1);
    footprint.RowLow.assign(static_cast<size_t>(footprint.Height), footprint.Width);
    footprint.RowHigh.assign(static_cast<size_t>(footprint.Height), -1);
    for (const auto& [from, to] : outline) {
        const Vec2 p {from.X * scale + FootprintMargin, from.Y * scale + FootprintMargin};
        const Vec2 q {to.X * scale + FootprintMargin, to.Y * scale + FootprintMargin};
        ForEachSlab(p, q, footprint.Width, footprint.Height, [&](int row, int first, int last) {
            int& low = footprint.RowLow[static_cast<size_t>(row)];
            int& high = footprint.RowHigh[static_cast<size_t>(row)];
            low = std::min(low, first);
            high = std::max(high, last);
        });
        ForEachSlab({p.Y, p.X}, {q.Y, q.X}, footprint.Height, footprint.Width, [&](int column, int first, int last) {
            int& low = footprint.ColumnLow[static_cast<size_t>(column)];
            int& high = footprint.ColumnHigh[static_cast<size_t>(column)];
            low = std::min(low, first);
            high = std::max(high, last);
        });
    }
    return footprint;
}
