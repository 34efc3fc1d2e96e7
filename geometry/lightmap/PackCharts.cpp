// The packing of Levy, Petitjean, Ray and Maillot, "Least Squares Conformal Maps for Automatic
// Texture Atlas Generation" (SIGGRAPH 2002), section 5: charts are dropped one after the other,
// largest first, onto the horizon of those already placed, each where it leaves the least empty
// space beneath it. Charts are compared by their texel footprints, so that charts of any shape
// interlock. The scale is then sought that fills the atlas.

#include "geometry/lightmap/PackCharts.h"

#include "geometry/lightmap/ChartFootprint.h"
#include "geometry/lightmap/OrientChart.h"

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
// A chart's columns are bounded in up to this many blocks before any place is tried exactly.
constexpr int MaxBoundBlocks = 16;
constexpr int MinBlockWidth = 8;

// A chart's footprint turned by a quarter turns: per column, the lowest touched row and the
// highest row that another chart's texels must stay above, gutter included.
struct Profile {
    int Width = 0;
    int Height = 0;
    std::vector<int> Bottom;
    // Width + 2 * gutter entries, from gutter columns left of the chart on.
    std::vector<int> Shadow;
    int64_t BottomSum = 0;
    // The columns in blocks of BlockWidth (the last block may be narrower) and the highest
    // bottom of each, for a quick lower bound on where the chart comes to rest.
    int BlockWidth = 1;
    std::vector<int> BlockBottom;
    // Every column's bottom is the same row, as a rectangle's is.
    bool Flat = false;
};

struct Placement {
    int Pose = 0;
    int Turn = 0;
    int X = 0;
    int Y = 0;
};

Profile Turned(const ChartFootprint& footprint, int turn, int gutter)
{
    const int w = footprint.Width;
    const int h = footprint.Height;
    Profile profile;
    profile.Width = turn % 2 == 0 ? w : h;
    profile.Height = turn % 2 == 0 ? h : w;
    std::vector<int> top(static_cast<size_t>(profile.Width));
    profile.Bottom.resize(static_cast<size_t>(profile.Width));
    for (int x = 0; x < profile.Width; ++x) {
        int low = 0;
        int high = -1;
        switch (turn) {
        case 0:
            low = footprint.ColumnLow[static_cast<size_t>(x)];
            high = footprint.ColumnHigh[static_cast<size_t>(x)];
            break;
        case 1:
            low = footprint.RowLow[static_cast<size_t>(h - 1 - x)];
            high = footprint.RowHigh[static_cast<size_t>(h - 1 - x)];
            break;
        case 2:
            low = h - 1 - footprint.ColumnHigh[static_cast<size_t>(w - 1 - x)];
            high = h - 1 - footprint.ColumnLow[static_cast<size_t>(w - 1 - x)];
            break;
        default:
            low = w - 1 - footprint.RowHigh[static_cast<size_t>(x)];
            high = w - 1 - footprint.RowLow[static_cast<size_t>(x)];
            break;
        }
        // A column that nothing touches constrains like a touched floor and raises nothing.
        if (low > high) {
            low = 0;
            high = -1 - gutter - 1;
        }
        profile.Bottom[static_cast<size_t>(x)] = low;
        top[static_cast<size_t>(x)] = high;
    }
    // A flat bottom is bounded exactly by one block; a shaped one needs more, but no fewer than
    // a few columns each, as every block costs a pass over the atlas.
    const auto [lowest, highest] = std::minmax_element(profile.Bottom.begin(), profile.Bottom.end());
    profile.Flat = *highest == *lowest;
    const int blocks = *highest - *lowest <= 1 ? 1 : std::clamp(profile.Width / MinBlockWidth, 1, MaxBoundBlocks);
    profile.BlockWidth = (profile.Width + blocks - 1) / blocks;
    for (int x = 0; x < profile.Width; x += profile.BlockWidth) {
        const auto first = profile.Bottom.begin() + x;
        profile.BlockBottom.push_back(*std::max_element(first, first + std::min(profile.BlockWidth, profile.Width - x)));
    }
    profile.BottomSum = std::accumulate(profile.Bottom.begin(), profile.Bottom.end(), int64_t{0});
    profile.Shadow.assign(static_cast<size_t>(profile.Width + 2 * gutter), std::numeric_limits<int>::min() / 2);
    for (int x = 0; x < profile.Width; ++x) {
        const int reach = top[static_cast<size_t>(x)] + gutter + 1;
        for (int dx = 0; dx <= 2 * gutter; ++dx) {
            int& shadow = profile.Shadow[static_cast<size_t>(x + dx)];
            shadow = std::max(shadow, reach);
        }
    }
    return profile;
}

// The charts placed so far: per column of the atlas's inner square, the lowest row where another
// chart's texels may start.
class Horizon {
public:
    explicit Horizon(int size)
        : m_size(size)
        , m_floor(static_cast<size_t>(size), 0)
        , m_prefix(static_cast<size_t>(size) + 1, 0)
        , m_floorMax(2 * static_cast<size_t>(size), 0)
    {
    }

    int Top() const { return m_top; }

    // The best place for the profile, or false when it is wider than the atlas.
    bool Best(const Profile& profile, int turn, Placement& best, double& bestScore)
    {
        const int w = profile.Width;
        if (w > m_size)
            return false;
        if (profile.Flat)
            return BestFlat(profile, turn, best, bestScore);
        const int positions = m_size - w + 1;
        const int block = profile.BlockWidth;
        const int blocks = static_cast<int>(profile.BlockBottom.size());
        const int lastBlock = w - (blocks - 1) * block;
        SlidingMaxima(block, m_blockMax);
        const std::vector<int>& lastBlockMax = lastBlock == block ? m_blockMax : SlidingMaxima(lastBlock, m_lastBlockMax);
        // First the place whose lower bound is least; then every place whose bound beats the
        // best score so far.
        int start = 0;
        double startBound = std::numeric_limits<double>::infinity();
        m_bounds.resize(static_cast<size_t>(positions));
        for (int x = 0; x < positions; ++x) {
            int y = 0;
            for (int b = 0; b + 1 < blocks; ++b)
                y = std::max(y, m_blockMax[static_cast<size_t>(x + b * block)] - profile.BlockBottom[static_cast<size_t>(b)]);
            y = std::max(y, lastBlockMax[static_cast<size_t>(x + (blocks - 1) * block)] - profile.BlockBottom.back());
            const double bound = Score(profile, x, y);
            m_bounds[static_cast<size_t>(x)] = bound;
            if (bound < startBound) {
                startBound = bound;
                start = x;
            }
        }
        bool found = false;
        const auto consider = [&](int x) {
            const int y = Drop(profile, x);
            const double score = Score(profile, x, y);
            if (score < bestScore) {
                bestScore = score;
                best = {best.Pose, turn, x, y};
                found = true;
            }
        };
        consider(start);
        for (int x = 0; x < positions; ++x) {
            if (x != start && m_bounds[static_cast<size_t>(x)] < bestScore)
                consider(x);
        }
        return found;
    }

    void Place(const Profile& profile, const Placement& at, int gutter)
    {
        const int first = std::max(0, at.X - gutter);
        const int end = std::min(m_size, at.X - gutter + static_cast<int>(profile.Shadow.size()));
        for (int x = first; x < end; ++x) {
            int& floor = m_floor[static_cast<size_t>(x)];
            floor = std::max(floor, at.Y + profile.Shadow[static_cast<size_t>(x - at.X + gutter)]);
            SetFloorMax(x, floor);
        }
        // The steps of the floor at the columns changed and at the column after them.
        const auto from = std::lower_bound(m_steps.begin(), m_steps.end(), std::max(1, first));
        const auto to = std::upper_bound(from, m_steps.end(), std::min(m_size - 1, end));
        std::vector<int> steps;
        for (int x = std::max(1, first); x <= std::min(m_size - 1, end); ++x) {
            if (m_floor[static_cast<size_t>(x)] != m_floor[static_cast<size_t>(x) - 1])
                steps.push_back(x);
        }
        m_steps.insert(m_steps.erase(from, to), steps.begin(), steps.end());
        // The sums left of the chart and its gutter are unchanged.
        for (int x = std::max(0, at.X - gutter); x < m_size; ++x)
            m_prefix[static_cast<size_t>(x) + 1] = m_prefix[static_cast<size_t>(x)] + m_floor[static_cast<size_t>(x)];
        m_top = std::max(m_top, at.Y + profile.Height);
    }

private:
    // Between the places where one of a flat bottom's ends passes a step of the floor, the
    // chart rests at one height and the empty texels beneath it change by the same amount at
    // every column, so the leftmost best place is the first or the last column of such a run:
    // a few places to try instead of every column, each in the time of a look-up of the
    // highest floor beneath it.
    bool BestFlat(const Profile& profile, int turn, Placement& best, double& bestScore)
    {
        const int w = profile.Width;
        const int last = m_size - w;
        m_candidates.assign({0, last});
        for (int step : m_steps) {
            for (int x : {step - w - 1, step - w, step - 1, step}) {
                if (x > 0 && x <= last)
                    m_candidates.push_back(x);
            }
        }
        bool found = false;
        for (int x : m_candidates) {
            const int y = std::max(0, FloorMax(x, x + w) - profile.Bottom.front());
            const double score = Score(profile, x, y);
            if (score < bestScore || (found && score == bestScore && x < best.X)) {
                bestScore = score;
                best = {best.Pose, turn, x, y};
                found = true;
            }
        }
        return found;
    }

    // The highest floor's tree: leaf m_size + x holds column x, every other node the higher of
    // its two children.
    void SetFloorMax(int x, int floor)
    {
        size_t node = static_cast<size_t>(m_size + x);
        m_floorMax[node] = floor;
        for (node /= 2; node > 0; node /= 2)
            m_floorMax[node] = std::max(m_floorMax[2 * node], m_floorMax[2 * node + 1]);
    }

    // The highest floor over columns [first, end).
    int FloorMax(int first, int end) const
    {
        int highest = std::numeric_limits<int>::min();
        for (size_t low = static_cast<size_t>(first + m_size), high = static_cast<size_t>(end + m_size); low < high;
             low /= 2, high /= 2) {
            if (low % 2 == 1)
                highest = std::max(highest, m_floorMax[low++]);
            if (high % 2 == 1)
                highest = std::max(highest, m_floorMax[--high]);
        }
        return highest;
    }

    // The lowest row at which the profile's bottom clears the horizon at column x.
    int Drop(const Profile& profile, int x) const
    {
        int y = 0;
        for (int c = 0; c < profile.Width; ++c)
            y = std::max(y, m_floor[static_cast<size_t>(x + c)] - profile.Bottom[static_cast<size_t>(c)]);
        return y;
    }

    // The empty texels left beneath the chart, plus a whole row of the atlas for every row the
    // chart raises the packing's top by: growing the top wastes the atlas's full width later.
    double Score(const Profile& profile, int x, int y) const
    {
        const int64_t under = m_prefix[static_cast<size_t>(x + profile.Width)] - m_prefix[static_cast<size_t>(x)];
        const double waste = static_cast<double>(int64_t{y} * profile.Width + profile.BottomSum - under);
        const int raise = std::max(0, y + profile.Height - m_top);
        return waste + static_cast<double>(raise) * m_size;
    }

    // out[x] = the highest floor over columns x .. x + window - 1 (van Herk and Gil-Werman:
    // maxima running forward and backward within blocks of the window's width).
    const std::vector<int>& SlidingMaxima(int window, std::vector<int>& out)
    {
        const size_t n = static_cast<size_t>(m_size);
        const size_t width = static_cast<size_t>(window);
        m_forward.resize(n);
        m_backward.resize(n);
        for (size_t start = 0; start < n; start += width) {
            const size_t end = std::min(start + width, n);
            m_forward[start] = m_floor[start];
            for (size_t x = start + 1; x < end; ++x)
                m_forward[x] = std::max(m_forward[x - 1], m_floor[x]);
            m_backward[end - 1] = m_floor[end - 1];
            for (size_t x = end - 1; x-- > start;)
                m_backward[x] = std::max(m_backward[x + 1], m_floor[x]);
        }
        out.resize(n - width + 1);
        for (size_t x = 0; x + width <= n; ++x)
            out[x] = std::max(m_backward[x], m_forward[x + width - 1]);
        return out;
    }

    int m_size;
    int m_top = 0;
    std::vector<int> m_floor;
    std::vector<int64_t> m_prefix;
    std::vector<int> m_floorMax;
    // The columns whose floor differs from the floor of the column before, in order.
    std::vector<int> m_steps;
    std::vector<int> m_candidates;
    std::vector<int> m_forward;
    std::vector<int> m_backward;
    std::vector<int> m_blockMax;
    std::vector<int> m_lastBlockMax;
    std::vector<double> m_bounds;
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
// quarter turn; the quarter turns themselves come from the profiles.
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

    Horizon horizon(inner);
    layout.Placements.assign(count, Placement{});
    for (size_t i : sequence) {
        Placement best;
        Profile bestProfile;
        double bestScore = std::numeric_limits<double>::infinity();
        for (size_t p = 0; p < poses[i].size(); ++p) {
            if (layout.Footprints[i][p].Width == 0)
                continue;
            Profile turned[4];
            for (int turn = 0; turn < 4; ++turn) {
                turned[turn] = Turned(layout.Footprints[i][p], turn, gutter);
                // A half turn that gives the same profile (a rectangle's) has nothing new to try.
                if (turn >= 2 && turned[turn].Bottom == turned[turn - 2].Bottom &&
                    turned[turn].Shadow == turned[turn - 2].Shadow)
                    continue;
                if (horizon.Best(turned[turn], turn, best, bestScore)) {
                    best.Pose = static_cast<int>(p);
                    bestProfile = turned[turn];
                }
            }
        }
        if (bestScore == std::numeric_limits<double>::infinity())
            return false;
        horizon.Place(bestProfile, best, gutter);
        layout.Placements[i] = best;
    }
    layout.Top = horizon.Top();
    return true;
}

// Turns a point of the footprint (texel coordinates) as its profile was turned.
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
