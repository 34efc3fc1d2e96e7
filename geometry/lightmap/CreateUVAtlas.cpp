#include "geometry/lightmap/CreateUVAtlas.h"

#include "geometry/lightmap/AtlasMesh.h"
#include "geometry/lightmap/MergeCharts.h"
#include "geometry/lightmap/PackCharts.h"
#include "geometry/lightmap/ParameterizeCharts.h"
#include "geometry/lightmap/SegmentCharts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <numbers>

namespace {

constexpr int AtlasFailed = -2160;

// Charts stay within this angle of their mean normal: wide enough that a gently curved surface
// stays in one piece, narrow enough that a flattening of it needs little stretch, and below a
// right angle, so that the faces of a box go to separate charts.
constexpr double MaxChartNormalAngle = 35.0 * std::numbers::pi / 180.0;

bool Valid(std::span<const float> positions, std::span<const uint32_t> indices)
{
    const size_t vertexCount = positions.size() / 3;
    return positions.size() % 3 == 0 && indices.size() % 3 == 0 &&
           std::all_of(positions.begin(), positions.end(), [](float value) { return std::isfinite(value); }) &&
           std::all_of(indices.begin(), indices.end(), [vertexCount](uint32_t index) { return index < vertexCount; });
}

// One atlas vertex per chart point and input vertex; the chart's flattening gives it the UVs of
// its point. A chart cut by a join has several points at one position.
void WriteAtlas(const AtlasMesh& mesh, const std::vector<Chart>& charts, UVAtlas& atlas)
{
    // Per input vertex: its first atlas vertex in the chart being written. Per atlas vertex of
    // that chart: its point and the chart's next copy of the same input vertex.
    std::vector<int> atlasVertexOf(mesh.Positions.size() / 3, -1);
    std::vector<uint32_t> pointOfCopy;
    std::vector<int> nextCopy;
    atlas.Indices.assign(mesh.Indices.size(), 0);
    for (const Chart& chart : charts) {
        const int firstOfChart = static_cast<int>(atlas.VertexRemap.size());
        pointOfCopy.clear();
        nextCopy.clear();
        for (size_t i = 0; i < chart.Faces.size(); ++i) {
            const size_t face = static_cast<size_t>(chart.Faces[i]);
            for (size_t k = 0; k < 3; ++k) {
                const uint32_t vertex = mesh.Indices[3 * face + k];
                const uint32_t point = chart.Corners[3 * i + k];
                int copy = atlasVertexOf[vertex] >= firstOfChart ? atlasVertexOf[vertex] : -1;
                int last = -1;
                while (copy >= 0 && pointOfCopy[static_cast<size_t>(copy - firstOfChart)] != point) {
                    last = copy;
                    copy = nextCopy[static_cast<size_t>(copy - firstOfChart)];
                }
                if (copy < 0) {
                    copy = static_cast<int>(atlas.VertexRemap.size());
                    (last < 0 ? atlasVertexOf[vertex] : nextCopy[static_cast<size_t>(last - firstOfChart)]) = copy;
                    pointOfCopy.push_back(point);
                    nextCopy.push_back(-1);
                    atlas.VertexRemap.push_back(vertex);
                    const Vec2 uv = chart.UV[point];
                    atlas.UVs.push_back(static_cast<float>(uv.X));
                    atlas.UVs.push_back(static_cast<float>(uv.Y));
                }
                atlas.Indices[3 * face + k] = static_cast<uint32_t>(copy);
            }
        }
    }
}

} // namespace

int CreateUVAtlas(std::span<const float> positions, std::span<const uint32_t> indices, const UVAtlasParams& params,
                  UVAtlas& atlas)
{
    atlas = UVAtlas{};
    if (!Valid(positions, indices))
        return AtlasFailed;
    try {
        const AtlasMesh mesh(positions, indices);
        int chartCount = 0;
        const std::vector<int> chartOf = SegmentCharts(mesh, MaxChartNormalAngle, chartCount);
        double stretchReached = 0.0;
        std::vector<Chart> charts = ParameterizeCharts(mesh, chartOf, chartCount, params.MaxStretch, stretchReached);
        MergeCharts(mesh, charts, params.Size, params.Gutter);
        if (!PackCharts(charts, params.Size, params.Gutter))
            return AtlasFailed;
        WriteAtlas(mesh, charts, atlas);
        atlas.ChartCount = static_cast<int>(charts.size());
        atlas.StretchReached = stretchReached;
        return 0;
    } catch (const std::bad_alloc&) {
        atlas = UVAtlas{};
        return AtlasFailed;
    }
}
