// Region growing after Sander, Wood, Gortler, Snyder and Hoppe, "Multi-Chart Geometry Images"
// (Symposium on Geometry Processing 2003): charts grow from seeds by a cost that combines
// distance and the turn of the normal, and the seeds move to the charts' centres in a few
// Lloyd rounds, which straightens the borders where the charts meet. Greedy growth alone
// leaves frayed borders and slivers wherever a surface's normals wander near the angle limit.

#include "geometry/lightmap/SegmentCharts.h"

#include "geometry/lightmap/AtlasMesh.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <numeric>
#include <queue>
#include <tuple>

namespace {

constexpr int LloydRounds = 2;
// A face whose normal stands at a right angle to a chart's would cost this many times its
// distance more; the cone stops charts well before.
constexpr double NormalWeight = 4.0;
// Charts below this share of the area-weighted median chart area are not regrown.
constexpr double FragmentShare = 1.0 / 8.0;

// Grows charts greedily from every face not yet in one, numbering them from firstChart.
int GrowGreedily(const AtlasMesh& mesh, double minCosine, std::vector<int>& chartOf, int firstChart)
{
    using Candidate = std::pair<double, int>;
    std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>> candidates;
    int chartCount = firstChart;
    for (int seed = 0; seed < mesh.FaceCount(); ++seed) {
        if (chartOf[static_cast<size_t>(seed)] >= 0)
            continue;
        const int chart = chartCount++;
        const Vec3 origin = mesh.Centroids[static_cast<size_t>(seed)];
        Vec3 normalSum;
        candidates.emplace(0.0, seed);
        while (!candidates.empty()) {
            const size_t face = static_cast<size_t>(candidates.top().second);
            candidates.pop();
            if (chartOf[face] >= 0)
                continue;
            const Vec3 normal = mesh.Normals[face];
            const Vec3 mean = Normalized(normalSum);
            const bool anyTurn = Dot(normal, normal) == 0.0 || Dot(mean, mean) == 0.0;
            if (!anyTurn && Dot(normal, mean) < minCosine)
                continue;
            chartOf[face] = chart;
            normalSum = normalSum + normal * mesh.Areas[face];
            for (size_t edge = 3 * face; edge < 3 * face + 3; ++edge) {
                const int next = mesh.Across[edge];
                if (next >= 0 && chartOf[static_cast<size_t>(next)] < 0) {
                    const Vec3 offset = mesh.Centroids[static_cast<size_t>(next)] - origin;
                    candidates.emplace(Dot(offset, offset), next);
                }
            }
        }
    }
    return chartCount;
}

struct Seed {
    int Face = -1;
    Vec3 Normal;
};

// Per chart, the face nearest its area-weighted centre and its mean normal; no seed (face -1)
// for a fragment.
std::vector<Seed> PlaceSeeds(const AtlasMesh& mesh, const std::vector<int>& chartOf, int chartCount)
{
    const size_t count = static_cast<size_t>(chartCount);
    std::vector<double> area(count, 0.0);
    std::vector<Vec3> centre(count);
    std::vector<Vec3> normal(count);
    for (size_t face = 0; face < chartOf.size(); ++face) {
        const size_t chart = static_cast<size_t>(chartOf[face]);
        area[chart] += mesh.Areas[face];
        centre[chart] = centre[chart] + mesh.Centroids[face] * mesh.Areas[face];
        normal[chart] = normal[chart] + mesh.Normals[face] * mesh.Areas[face];
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
    for (size_t face = 0; face < chartOf.size(); ++face) {
        const size_t chart = static_cast<size_t>(chartOf[face]);
        if (area[chart] < FragmentShare * median || !(area[chart] > 0.0))
            continue;
        const Vec3 offset = mesh.Centroids[face] - centre[chart] * (1.0 / area[chart]);
        if (Dot(offset, offset) < nearest[chart]) {
            nearest[chart] = Dot(offset, offset);
            seeds[chart] = {static_cast<int>(face), Normalized(normal[chart])};
        }
    }
    return seeds;
}

// Grows every seeded chart at once, each within the normal cone around its mean normal; faces
// that no chart reaches stay at -1.
std::vector<int> GrowFromSeeds(const AtlasMesh& mesh, const std::vector<Seed>& seeds, double minCosine,
                               int& chartCount)
{
    std::vector<int> chartOf(static_cast<size_t>(mesh.FaceCount()), -1);
    using Candidate = std::tuple<double, int, int>;
    std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>> candidates;
    chartCount = 0;
    std::vector<Vec3> origin;
    std::vector<Vec3> normal;
    for (const Seed& seed : seeds) {
        if (seed.Face < 0)
            continue;
        candidates.emplace(0.0, seed.Face, chartCount++);
        origin.push_back(mesh.Centroids[static_cast<size_t>(seed.Face)]);
        normal.push_back(seed.Normal);
    }
    while (!candidates.empty()) {
        const auto [cost, faceIndex, chart] = candidates.top();
        candidates.pop();
        const size_t face = static_cast<size_t>(faceIndex);
        if (chartOf[face] >= 0)
            continue;
        chartOf[face] = chart;
        const size_t c = static_cast<size_t>(chart);
        for (size_t edge = 3 * face; edge < 3 * face + 3; ++edge) {
            const int next = mesh.Across[edge];
            if (next < 0 || chartOf[static_cast<size_t>(next)] >= 0)
                continue;
            const size_t n = static_cast<size_t>(next);
            const double cosine = Dot(mesh.Normals[n], mesh.Normals[n]) == 0.0 ? 1.0 : Dot(mesh.Normals[n], normal[c]);
            if (cosine >= minCosine)
                candidates.emplace(Length(mesh.Centroids[n] - origin[c]) * (1.0 + NormalWeight * (1.0 - cosine)), next, chart);
        }
    }
    return chartOf;
}

} // namespace

std::vector<int> SegmentCharts(const AtlasMesh& mesh, double maxNormalAngle, int& chartCount)
{
    const double minCosine = std::cos(maxNormalAngle);
    std::vector<int> chartOf(static_cast<size_t>(mesh.FaceCount()), -1);
    chartCount = GrowGreedily(mesh, minCosine, chartOf, 0);
    for (int round = 0; round < LloydRounds && chartCount > 1; ++round) {
        chartOf = GrowFromSeeds(mesh, PlaceSeeds(mesh, chartOf, chartCount), minCosine, chartCount);
        chartCount = GrowGreedily(mesh, minCosine, chartOf, chartCount);
    }
    return chartOf;
}
