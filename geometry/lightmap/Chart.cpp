#include "geometry/lightmap/Chart.h"

#include "geometry/lightmap/AtlasMesh.h"

#include <cstddef>

void NumberChartPoints(const AtlasMesh& mesh, Chart& chart, std::vector<int>& pointOf, std::vector<int>& inChart)
{
    chart.Points.clear();
    chart.Corners.clear();
    chart.Border.clear();
    for (int face : chart.Faces) {
        inChart[static_cast<size_t>(face)] = 1;
        for (size_t corner = 0; corner < 3; ++corner) {
            const uint32_t vertex = mesh.Shared[mesh.Indices[3 * static_cast<size_t>(face) + corner]];
            int& point = pointOf[vertex];
            if (point < 0) {
                point = static_cast<int>(chart.Points.size());
                chart.Points.push_back(vertex);
            }
            chart.Corners.push_back(static_cast<uint32_t>(point));
        }
    }
    for (size_t i = 0; i < chart.Faces.size(); ++i) {
        const size_t face = static_cast<size_t>(chart.Faces[i]);
        for (size_t k = 0; k < 3; ++k) {
            const int across = mesh.Across[3 * face + k];
            if (across < 0 || inChart[static_cast<size_t>(across)] == 0)
                chart.Border.emplace_back(chart.Corners[3 * i + k], chart.Corners[3 * i + (k + 1) % 3]);
        }
    }
    for (int face : chart.Faces)
        inChart[static_cast<size_t>(face)] = 0;
    for (uint32_t vertex : chart.Points)
        pointOf[vertex] = -1;
}
