// Charts are dropped one after the other, largest first, into the lowest place of the atlas's
// texel grid where their texel footprints fit beside those already placed and their gutters, in
// the quarter turn that keeps the packing lowest: a chart may come to rest beneath another's
// overhang or in a hole between others, which a packing onto the horizon of the charts placed
// (Levy, Petitjean, Ray and Maillot, "Least Squares Conformal Maps for Automatic Texture Atlas
// Generation", SIGGRAPH 2002) leaves empty. The scale is then sought that fills the atlas.

#include "geometry/lightmap/PackCharts.h"

#include "geometry/lightmap/ChartFootprint.h"
#include "geometry/lightmap/OrientChart.h"
#include "geometry/lightmap/TexelGrid.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>
#include <numeric>
#include <utility>

namespace {

// The scale search stops when it is within this factor of the best scale that fits, or when
// the atlas is this full in height.
constexpr double ScaleTolerance = 1.01;
constexpr double FullEnough = 0.95;
constexpr int MaxAttempts = 16;
// The first guess fills this share of the atlas with the charts' rectangles and gutters.
constexpr double FirstFill = 0.85;
// Up to this many charts, each is also tried at FineAngles - 1 angles between its quarter turns,
// and the charts are dropped in three orders.
constexpr size_t FewCharts = 64;
constexpr int FineAngles = 8;

struct Placement {
    int Pose = 0;
    int Turn = 0;
    int X = 0;
    int Y = 0;
};

// A chart turned by one of the angles the packer tries, its outline moved so that its lowest
// coordinates are 0: UV' = (cos, sin) turn of UV, less Shift.
struct Pose {
    double Cos = 1.0;
    double Sin = 0.0;
    Vec2 Shift;
    std::vector<std::pair<Vec2, Vec2>> Outline;
    // The outline's larger side, in UV units.
    double Extent = 0.0;

    Vec2 Apply(Vec2 uv) const { return Vec2{Cos * uv.X - Sin * uv.Y, Sin * uv.X + Cos * uv.Y} - Shift; }
};

// The chart in its own orientation and, when angles > 1, turned by further fractions of a
// quarter turn; the quarter turns themselves come from the footprint (RowsOf).
std::vector<Pose> PosesOf(const Chart& chart, int angles)
{
    std::vector<Pose> poses(static_cast<size_t>(angles));
    for (int a = 0; a < angles; ++a) {
        Pose& pose = poses[static_cast<size_t>(a)];
        const double angle = std::numbers::pi / 2.0 * a / angles;
        pose.Cos = std::cos(angle);
        pose.Sin = std::sin(angle);
        Vec2 low {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
        for (const auto& [from, to] : chart.Border) {
            for (uint32_t point : {from, to}) {
                const Vec2 turned = pose.Apply(chart.UV[point]);
                low = {std::min(low.X, turned.X), std::min(low.Y, turned.Y)};
            }
        }
        pose.Shift = chart.Border.empty() ? Vec2{} : low;
        pose.Outline.reserve(chart.Border.size());
        for (const auto& [from, to] : chart.Border) {
            pose.Outline.emplace_back(pose.Apply(chart.UV[from]), pose.Apply(chart.UV[to]));
            for (const Vec2& end : {pose.Outline.back().first, pose.Outline.back().second})
                pose.Extent = std::max({pose.Extent, end.X, end.Y});
        }
    }
    return poses;
}

struct Layout {
    // Per chart, per pose.
    std::vector<std::vector<ChartFootprint>> Footprints;
    std::vector<Placement> Placements;
    int Top = 0;
};

// The orders in which the packer drops the charts, all largest first in some sense.
enum class Order { Area, Height, LongerSide };

// The footprint's rows after turning it by a quarter turns counter-clockwise.
RowSpans RowsOf(const ChartFootprint& footprint, int turn)
{
    const int w = footprint.Width;
    const int h = footprint.Height;
    RowSpans rows;
    rows.Width = turn % 2 == 0 ? w : h;
    rows.Height = turn % 2 == 0 ? h : w;
    rows.Low.resize(static_cast<size_t>(rows.Height));
    rows.High.resize(static_cast<size_t>(rows.Height));
    for (int y = 0; y < rows.Height; ++y) {
        int low = 0;
        int high = 0;
        switch (turn) {
        case 0:
            low = footprint.RowLow[static_cast<size_t>(y)];
            high = footprint.RowHigh[static_cast<size_t>(y)];
            break;
        case 1:
            low = h - 1 - footprint.ColumnHigh[static_cast<size_t>(y)];
            high = h - 1 - footprint.ColumnLow[static_cast<size_t>(y)];
            break;
        case 2:
            low = w - 1 - footprint.RowHigh[static_cast<size_t>(h - 1 - y)];
            high = w - 1 - footprint.RowLow[static_cast<size_t>(h - 1 - y)];
            break;
        default:
            low = footprint.ColumnLow[static_cast<size_t>(w - 1 - y)];
            high = footprint.ColumnHigh[static_cast<size_t>(w - 1 - y)];
            break;
        }
        rows.Low[static_cast<size_t>(y)] = low;
        rows.High[static_cast<size_t>(y)] = high;
    }
    return rows;
}

// Packs at one scale in the given order; false when some chart is wider than the atlas in every
// pose and turn. Layout.Top may exceed the inner size: the caller decides whether it fits.
bool PackAtScale(const std::vector<std::vector<Pose>>& poses, double scale, Order order, int inner, int gutter,
                 Layout& layout)
{
    const size_t count = poses.size();
    layout.Footprints.resize(count);
    for (size_t i = 0; i < count; ++i) {
        layout.Footprints[i].resize(poses[i].size());
        // A pose larger than the atlas cannot be placed, nor should its footprint be drawn.
        for (size_t p = 0; p < poses[i].size(); ++p) {
            layout.Footprints[i][p] = poses[i][p].Extent * scale < inner ? RasterizeOutline(poses[i][p].Outline, scale)
                                                                          : ChartFootprint{};
        }
    }
    std::vector<size_t> sequence(count);
    std::iota(sequence.begin(), sequence.end(), size_t{0});
    const auto key = [&](size_t i) -> int64_t {
        const ChartFootprint& f = layout.Footprints[i][0];
        switch (order) {
        case Order::Area: return int64_t{f.Height} * f.Width;
        case Order::Height: return f.Height;
        default: return std::max(f.Width, f.Height);
        }
    };
    std::stable_sort(sequence.begin(), sequence.end(), [&](size_t a, size_t b) { return key(a) > key(b); });

    TexelGrid grid(inner, 2 * inner);
    layout.Placements.assign(count, Placement{});
    layout.Top = 0;
    for (size_t i : sequence) {
        Placement best;
        RowSpans bestRows;
        int bestTop = 2 * inner + 1;
        for (size_t p = 0; p < poses[i].size(); ++p) {
            const ChartFootprint& footprint = layout.Footprints[i][p];
            if (footprint.Width == 0)
                continue;
            RowSpans turned[4];
            for (int turn = 0; turn < 4; ++turn) {
                turned[turn] = RowsOf(footprint, turn);
                const RowSpans& rows = turned[turn];
                // A half turn that gives the same rows (a rectangle's) has nothing new to try.
                if (turn >= 2 && rows.Low == turned[turn - 2].Low && rows.High == turned[turn - 2].High)
                    continue;
                int x = 0;
                int y = 0;
                if (grid.Find(rows, bestTop - rows.Height, x, y)) {
                    bestTop = y + rows.Height;
                    best = {static_cast<int>(p), turn, x, y};
                    bestRows = rows;
                }
            }
        }
        if (bestTop > 2 * inner)
            return false;
        grid.Take(bestRows, best.X, best.Y, gutter);
        layout.Placements[i] = best;
        layout.Top = std::max(layout.Top, bestTop);
    }
    return true;
}

// Turns a point of the footprint (texel coordinates) as RowsOf turns its rows.
Vec2 Turn(Vec2 p, int turn, const ChartFootprint& footprint)
{
    const double w = footprint.Width;
    const double h = footprint.Height;
    switch (turn) {
    case 0: return p;
    case 1: return {h - p.Y, p.X};
    case 2: return {w - p.X, h - p.Y};
    default: return {p.Y, w - p.X};
    }
}

void WriteAtlasCoordinates(std::vector<Chart>& charts, const std::vector<std::vector<Pose>>& poses, const Layout& layout,
                           double scale, int atlasSize, int border)
{
    const double size = atlasSize;
    for (size_t i = 0; i < charts.size(); ++i) {
        const Placement& at = layout.Placements[i];
        const Pose& pose = poses[i][static_cast<size_t>(at.Pose)];
        const ChartFootprint& footprint = layout.Footprints[i][static_cast<size_t>(at.Pose)];
        const Vec2 offset {static_cast<double>(border + at.X), static_cast<double>(border + at.Y)};
        for (Vec2& uv : charts[i].UV) {
            const Vec2 posed = pose.Apply(uv);
            const Vec2 texel {posed.X * scale + FootprintMargin, posed.Y * scale + FootprintMargin};
            uv = (Turn(texel, at.Turn, footprint) + offset) * (1.0 / size);
        }
    }
}

} // namespace

bool PackCharts(std::vector<Chart>& charts, int atlasSize, int gutter)
{
    const int border = (gutter + 1) / 2;
    const int inner = atlasSize - 2 * border;
    if (inner < 1)
        return false;
    if (charts.empty())
        return true;
    // The first guess: the scale at which the charts' rectangles, each grown by a gutter and a
    // texel, cover the share of the atlas that a packing usually reaches. With many small charts
    // the gutters take most of the room, which a guess from the areas alone would miss.
    double area = 0.0;
    double sides = 0.0;
    double largest = 0.0;
    for (Chart& chart : charts) {
        double width = 0.0;
        double height = 0.0;
        OrientChart(chart, width, height);
        area += width * height;
        sides += width + height;
        largest = std::max(largest, width);
    }
    const double grown = gutter + 1.0;
    const double room = FirstFill * inner * inner - static_cast<double>(charts.size()) * grown * grown;
    // The positive root of area * scale^2 + grown * sides * scale = room, in the form that does
    // not cancel to zero (or below) when a chart is so long that the gutters outweigh the area.
    double scale = area > 0.0 && room > 0.0
        ? 2.0 * room / (grown * sides + std::sqrt(grown * grown * sides * sides + 4.0 * area * room))
        : 1.0;
    double fits = 0.0;
    double fails = std::numeric_limits<double>::infinity();
    Layout layout;
    Layout best;
    // The packing's height grows with the scale to a power between 1 (one chart, or a row of
    // them) and 2 (many charts, whose area counts); the last two attempts tell which.
    double growth = charts.size() == 1 ? 1.0 : 2.0;
    double lastScale = 0.0;
    int lastTop = 0;
    // No chart may come out wider than the atlas in its own orientation, whatever the others need.
    const double scaleLimit = largest > 0.0 ? 0.99 * (inner - 1) / largest : std::numeric_limits<double>::infinity();
    scale = std::min(scale, scaleLimit);

    // A few charts are worth turning by finer angles and dropping in several orders: each try
    // costs a pass over the atlas's width per chart.
    const bool few = charts.size() <= FewCharts;
    std::vector<std::vector<Pose>> poses;
    poses.reserve(charts.size());
    for (const Chart& chart : charts)
        poses.push_back(PosesOf(chart, few ? FineAngles : 1));
    const std::vector<Order> orders = few ? std::vector<Order>{Order::Area, Order::Height, Order::LongerSide}
                                          : std::vector<Order>{Order::Area};
    Layout trial;
    for (int attempt = 0; attempt < MaxAttempts && fails > fits * ScaleTolerance; ++attempt) {
        bool packed = false;
        for (Order order : orders) {
            if (PackAtScale(poses, scale, order, inner, gutter, trial) && (!packed || trial.Top < layout.Top)) {
                std::swap(layout, trial);
                packed = true;
            }
        }
        // A chart too wide for the atlas counts as twice too high.
        const int top = packed ? std::max(layout.Top, 1) : 2 * inner;
        if (packed && lastTop > 0 && top != lastTop && scale != lastScale)
            growth = std::clamp(std::log(static_cast<double>(top) / lastTop) / std::log(scale / lastScale), 1.0, 2.0);
        lastScale = scale;
        lastTop = top;
        if (top <= inner) {
            fits = scale;
            std::swap(best, layout);
            if (top >= FullEnough * inner)
                break;
        } else {
            fails = scale;
        }
        double next = scale * std::pow(static_cast<double>(inner) / top, 1.0 / growth) * (fits == scale ? 1.0 : 0.99);
        if (!(next > fits && next < fails))
            next = fits > 0.0 ? std::sqrt(fits * std::min(fails, 4.0 * fits)) : scale * 0.5;
        scale = std::min(next, scaleLimit);
    }
    if (fits == 0.0)
        return false;
    WriteAtlasCoordinates(charts, poses, best, fits, atlasSize, border);
    return true;
}
