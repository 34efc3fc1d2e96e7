// Region growing after Sander, Wood, Gortler, Snyder and Hoppe, "Multi-Chart Geometry Images"
// (Symposium on Geometry Processing 2003): charts grow from seeds within a cone of normals, and
// the seeds move to the charts' centres in a few Lloyd rounds, in which all charts grow at once
// so that their borders fall where their fronts meet. Greedy growth alone leaves frayed borders
// and slivers wherever a surface's normals wander near the angle limit. Charts grow by steps
// across edges rather than by distance: a queue instead of a heap keeps the growth linear in
// time and memory, and on a mesh of even triangles steps measure distance well enough.

#include "geometry/lightmap/SegmentCharts.h"

#include "geometry/lightmap/AtlasMesh.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>
#include <utility>

namespace {

constexpr int LloydRounds = 2;
// Charts below this share of the area-weighted median chart area are not regrown.
constexpr double FragmentShare = 1.0 / 8.0;
constexpr int StraighteningPasses = 2;
// Faces within a thousandth of a radian of their chart's mean normal lie in its plane.
constexpr double FlatCosine = 0.9999995;

// Each face's normal averaged, by area, with those of the faces across its edges that turn from
// it by less than the cone's angle. The cone tests read these, so that the jitter of a rough
// surface does not decide where a chart ends, while a crease stays as sharp as it is.
std::vector<Vec3> SmoothedNormals(const AtlasMesh& mesh, double minCosine)
{
    std::vector<Vec3> smoothed(static_cast<size_t>(mesh.FaceCount()));
    for (size_t face = 0; face < smoothed.size(); ++face) {
        Vec3 sum = mesh.Normals[face] * mesh.Areas[face];
        for (size_t edge = 3 * face; edge < 3 * face + 3; ++edge) {
            const int across = mesh.Across[edge];
            if (across >= 0 && Dot(mesh.Normals[face], mesh.Normals[static_cast<size_t>(across)]) >= minCosine)
                sum = sum + mesh.Normals[static_cast<size_t>(across)] * mesh.Areas[static_cast<size_t>(across)];
        }
        smoothed[face] = Normalized(sum);
    }
    return smoothed;
}

// A face without a normal fits any cone.
bool InCone(Vec3 normal, Vec3 axis, double minCosine)
{
    return Dot(normal, normal) == 0.0 || Dot(axis, axis) == 0.0 || Dot(normal, axis) >= minCosine;
}

// Grows charts one at a time from every face not yet in one, a step across an edge at a time,
// numbering them from firstChart. A face outside the cone may be offered again from another
// side, as the chart's mean normal moves.
int GrowGreedily(const AtlasMesh& mesh, const std::vector<Vec3>& normals, double minCosine, std::vector<int>& chartOf,
                 int firstChart)
{
    std::vector<int> front;
    int chartCount = firstChart;
    for (int seed = 0; seed < mesh.FaceCount(); ++seed) {
        if (chartOf[static_cast<size_t>(seed)] >= 0)
            continue;
        const int chart = chartCount++;
        Vec3 normalSum;
        front.assign(1, seed);
        for (size_t next = 0; next < front.size(); ++next) {
            const size_t face = static_cast<size_t>(front[next]);
            if (chartOf[face] >= 0 || !InCone(normals[face], Normalized(normalSum), minCosine))
                continue;
            chartOf[face] = chart;
            normalSum = normalSum + normals[face] * mesh.Areas[face];
            for (size_t edge = 3 * face; edge < 3 * face + 3; ++edge) {
                const int across = mesh.Across[edge];
                if (across >= 0 && chartOf[static_cast<size_t>(across)] < 0)
                    front.push_back(across);
            }
        }
    }
    return chartCount;
}

struct Seed {
    int Face = -1;
    Vec3 Normal;
    // A flat chart keeps its faces as they are: its borders are creases already, and regrowing
    // it would only cost time.
    bool Keep = false;
};

// Per chart, the face nearest its area-weighted centre and its mean normal; no seed (face -1)
// for a fragment.
std::vector<Seed> PlaceSeeds(const AtlasMesh& mesh, const std::vector<Vec3>& normals, const std::vector<int>& chartOf,
                             int chartCount)
{
    const size_t count = static_cast<size_t>(chartCount);
    std::vector<double> area(count, 0.0);
    std::vector<Vec3> centre(count);
    std::vector<Vec3> normal(count);
    for (size_t face = 0; face < chartOf.size(); ++face) {
        const size_t chart = static_cast<size_t>(chartOf[face]);
        area[chart] += mesh.Areas[face];
        centre[chart] = centre[chart] + mesh.Centroids[face] * mesh.Areas[face];
        normal[chart] = normal[chart] + normals[face] * mesh.Areas[face];
    }

    std::vector<size_t> bySize(count);
    std::iota(bySize.begin(), bySize.end(), size_t{0});
    std::sort(bySize.begin(), bySize.end(), [&](size_t a, size_t b) { return area[a] < area[b]; });
    const double total = std::accumulate(area.begin(), area.end(), 0.0);
    double below = 0.0;
    double median = 0.0;
    for (size_t chart : bySize) {
        below += area[chart];
        median = area[chart];
        if (below >= 0.5 * total)
            break;
    }

    std::vector<Seed> seeds(count);
    std::vector<double> nearest(count, INFINITY);
    std::vector<bool> flat(count, true);
    for (size_t face = 0; face < chartOf.size(); ++face) {
        const size_t chart = static_cast<size_t>(chartOf[face]);
        if (Dot(mesh.Normals[face], mesh.Normals[face]) != 0.0 && Dot(mesh.Normals[face], Normalized(normal[chart])) < FlatCosine)
            flat[chart] = false;
        if (area[chart] < FragmentShare * median || !(area[chart] > 0.0))
            continue;
        const Vec3 offset = mesh.Centroids[face] - centre[chart] * (1.0 / area[chart]);
        if (Dot(offset, offset) < nearest[chart]) {
            nearest[chart] = Dot(offset, offset);
            seeds[chart] = {static_cast<int>(face), Normalized(normal[chart])};
        }
    }
    for (size_t chart = 0; chart < count; ++chart)
        seeds[chart].Keep = flat[chart] && seeds[chart].Face >= 0;
    return seeds;
}

// Grows every seeded chart at once, a step across an edge at a time, each within the normal
// cone around its mean normal: every face goes to the chart that reaches it in the fewest steps.
// Faces that no chart reaches stay at -1.
std::vector<int> GrowFromSeeds(const AtlasMesh& mesh, const std::vector<Vec3>& normals, const std::vector<Seed>& seeds,
                               const std::vector<int>& oldChartOf, double minCosine, int& chartCount)
{
    std::vector<int> chartOf(static_cast<size_t>(mesh.FaceCount()), -1);
    std::vector<int> renumbered(seeds.size(), -1);
    std::vector<Vec3> axis;
    std::vector<int> front;
    chartCount = 0;
    for (size_t chart = 0; chart < seeds.size(); ++chart) {
        const Seed& seed = seeds[chart];
        if (seed.Face < 0)
            continue;
        renumbered[chart] = chartCount++;
        axis.push_back(seed.Normal);
        if (!seed.Keep) {
            chartOf[static_cast<size_t>(seed.Face)] = renumbered[chart];
            front.push_back(seed.Face);
        }
    }
    for (size_t face = 0; face < chartOf.size(); ++face) {
        const size_t old = static_cast<size_t>(oldChartOf[face]);
        if (seeds[old].Keep)
            chartOf[face] = renumbered[old];
    }
    for (size_t next = 0; next < front.size(); ++next) {
        const size_t face = static_cast<size_t>(front[next]);
        const int chart = chartOf[face];
        for (size_t edge = 3 * face; edge < 3 * face + 3; ++edge) {
            const int across = mesh.Across[edge];
            if (across < 0 || chartOf[static_cast<size_t>(across)] >= 0 ||
                !InCone(normals[static_cast<size_t>(across)], axis[static_cast<size_t>(chart)], minCosine))
                continue;
            chartOf[static_cast<size_t>(across)] = chart;
            front.push_back(across);
        }
    }
    return chartOf;
}

// Faces that no chart reached within its cone go to a chart they touch whose cone, widened to
// twice its angle, they lie in, a step at a time from the charts' borders: on a rough surface a
// stray face is better part of its neighbour than a chart of its own, whose gutter costs more
// than it holds, while the faces beyond a crease stay apart. The flattening still decides
// whether the chart holds.
void AbsorbStrays(const AtlasMesh& mesh, const std::vector<Vec3>& normals, const std::vector<Seed>& seeds,
                  double minCosine, std::vector<int>& chartOf)
{
    std::vector<Vec3> axis;
    for (const Seed& seed : seeds) {
        if (seed.Face >= 0)
            axis.push_back(seed.Normal);
    }
    std::vector<int> front;
    for (size_t face = 0; face < chartOf.size(); ++face) {
        if (chartOf[face] < 0)
            continue;
        for (size_t edge = 3 * face; edge < 3 * face + 3; ++edge) {
            const int across = mesh.Across[edge];
            if (across >= 0 && chartOf[static_cast<size_t>(across)] < 0) {
                front.push_back(static_cast<int>(face));
                break;
            }
        }
    }
    for (size_t next = 0; next < front.size(); ++next) {
        const size_t face = static_cast<size_t>(front[next]);
        for (size_t edge = 3 * face; edge < 3 * face + 3; ++edge) {
            const int across = mesh.Across[edge];
            if (across >= 0 && chartOf[static_cast<size_t>(across)] < 0 &&
                InCone(normals[static_cast<size_t>(across)], axis[static_cast<size_t>(chartOf[face])], minCosine)) {
                chartOf[static_cast<size_t>(across)] = chartOf[face];
                front.push_back(across);
            }
        }
    }
}

// A face at a border with two of its three neighbours in one other chart joins that chart, when
// its normal lies within that chart's cone: borders then run along edges instead of zigzagging
// across them, and the charts' outlines pack closer.
void StraightenBorders(const AtlasMesh& mesh, const std::vector<Vec3>& normals, double minCosine, int chartCount,
                       std::vector<int>& chartOf)
{
    std::vector<Vec3> axis(static_cast<size_t>(chartCount));
    for (size_t face = 0; face < chartOf.size(); ++face)
        axis[static_cast<size_t>(chartOf[face])] = axis[static_cast<size_t>(chartOf[face])] + normals[face] * mesh.Areas[face];
    for (Vec3& a : axis)
        a = Normalized(a);
    for (int pass = 0; pass < StraighteningPasses; ++pass) {
        for (size_t face = 0; face < chartOf.size(); ++face) {
            int neighbour[3];
            for (size_t k = 0; k < 3; ++k) {
                const int across = mesh.Across[3 * face + k];
                neighbour[k] = across < 0 ? -1 : chartOf[static_cast<size_t>(across)];
            }
            for (size_t k = 0; k < 3; ++k) {
                const int other = neighbour[k];
                if (other < 0 || other == chartOf[face] || (other != neighbour[(k + 1) % 3] && other != neighbour[(k + 2) % 3]))
                    continue;
                if (InCone(normals[face], axis[static_cast<size_t>(other)], minCosine))
                    chartOf[face] = other;
                break;
            }
        }
    }
}

// Numbers the charts that kept faces from 0, in the order of their first face.
int Renumber(std::vector<int>& chartOf, int chartCount)
{
    std::vector<int> number(static_cast<size_t>(chartCount), -1);
    int used = 0;
    for (int& chart : chartOf) {
        int& renumbered = number[static_cast<size_t>(chart)];
        if (renumbered < 0)
            renumbered = used++;
        chart = renumbered;
    }
    return used;
}

} // namespace

std::vector<int> SegmentCharts(const AtlasMesh& mesh, double maxNormalAngle, int& chartCount)
{
    const double minCosine = std::cos(maxNormalAngle);
    const double strayCosine = std::cos(std::min(2.0 * maxNormalAngle, std::numbers::pi / 2.0 - 0.01));
    const std::vector<Vec3> normals = SmoothedNormals(mesh, minCosine);
    std::vector<int> chartOf(static_cast<size_t>(mesh.FaceCount()), -1);
    chartCount = GrowGreedily(mesh, normals, minCosine, chartOf, 0);
    for (int round = 0; round < LloydRounds && chartCount > 1; ++round) {
        const std::vector<Seed> seeds = PlaceSeeds(mesh, normals, chartOf, chartCount);
        chartOf = GrowFromSeeds(mesh, normals, seeds, chartOf, minCosine, chartCount);
        AbsorbStrays(mesh, normals, seeds, strayCosine, chartOf);
        // Pieces that no seeded chart touches, such as separate boxes whose charts were too small
        // to be seeded.
        chartCount = GrowGreedily(mesh, normals, minCosine, chartOf, chartCount);
    }
    StraightenBorders(mesh, normals, minCosine, chartCount, chartOf);
    chartCount = Renumber(chartOf, chartCount);
    return chartOf;
}
