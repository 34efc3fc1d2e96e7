#include "geometry/lightmap/ParameterizeCharts.h"

#include "geometry/lightmap/AtlasMesh.h"
#include "geometry/lightmap/FlattenChart.h"
#include "geometry/lightmap/SplitChart.h"

#include <algorithm>
#include <cstddef>
#include <utility>

std::vector<Chart> ParameterizeCharts(const AtlasMesh& mesh, const std::vector<int>& chartOf, int chartCount,
                                      double maxStretch, double& stretchReached)
{
    std::vector<std::vector<int>> pending(static_cast<size_t>(chartCount));
    for (int face = 0; face < mesh.FaceCount(); ++face)
        pending[static_cast<size_t>(chartOf[static_cast<size_t>(face)])].push_back(face);
    // Last in, first out, so that the halves of a cut chart come out in its place.
    std::reverse(pending.begin(), pending.end());

    std::vector<int> pointOf(mesh.Positions.size() / 3, -1);
    std::vector<int> inChart(static_cast<size_t>(mesh.FaceCount()), 0);
    std::vector<Chart> charts;
    stretchReached = 0.0;
    while (!pending.empty()) {
        Chart chart;
        chart.Faces = std::move(pending.back());
        pending.pop_back();
        double stretch = 0.0;
        if (!FlattenChart(mesh, chart, maxStretch, stretch, pointOf, inChart)) {
            auto [first, second] = SplitChart(mesh, chart.Faces, inChart);
            pending.push_back(std::move(second));
            pending.push_back(std::move(first));
            continue;
        }
        stretchReached = std::max(stretchReached, stretch);
        charts.push_back(std::move(chart));
    }
    return charts;
}
