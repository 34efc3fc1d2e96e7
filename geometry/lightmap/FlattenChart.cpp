#include "geometry/lightmap/FlattenChart.h"

#include "geometry/lightmap/AtlasMesh.h"
#include "geometry/lightmap/Chart.h"
#include "geometry/lightmap/ChartOverlap.h"
#include "geometry/lightmap/ChartStretch.h"
#include "geometry/lightmap/ConformalMap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

// A chart whose projection strays this little from the surface (an L2 stretch of 1.001, far
// below what a texel shows) is as good as flat: it keeps its projection, which is closer to
// isometric than a conformal map would be, and saves the solve.
constexpr double FlatStretch = 1e-3;
// A curved chart larger than this is cut before it is solved: its system then still fits the
// processor's cache, which keeps the solve's time per face the same at any size of mesh.
constexpr size_t MaxConformalFaces = 16384;

Vec3 MeanNormal(const AtlasMesh& mesh, const Chart& chart)
{
    Vec3 sum;
    for (int face : chart.Faces)
        sum = sum + mesh.Normals[static_cast<size_t>(face)] * mesh.Areas[static_cast<size_t>(face)];
    const Vec3 mean = Normalized(sum);
    return Dot(mean, mean) > 0.0 ? mean : Vec3{0.0, 0.0, 1.0};
}

// Onto the plane of the mean normal, with axes turning the same way as the faces that face
// along it. Positions are taken relative to the chart's first point, so that a small chart far
// from the origin keeps its precision.
void Project(const AtlasMesh& mesh, Chart& chart)
{
    const Vec3 normal = MeanNormal(mesh, chart);
    const Vec3 helper = std::abs(normal.X) < 0.6 ? Vec3{1.0, 0.0, 0.0} : Vec3{0.0, 1.0, 0.0};
    const Vec3 u = Normalized(Cross(helper, normal));
    const Vec3 v = Cross(normal, u);
    const Vec3 origin = mesh.Position(chart.Points[0]);
    chart.UV.resize(chart.Points.size());
    for (size_t point = 0; point < chart.Points.size(); ++point) {
        const Vec3 offset = mesh.Position(chart.Points[point]) - origin;
        chart.UV[point] = {Dot(offset, u), Dot(offset, v)};
    }
}

bool Passes(const AtlasMesh& mesh, const Chart& chart, double maxStretch, double& stretch)
{
    const ChartShape shape = MeasureChart(mesh, chart);
    stretch = shape.Stretch;
    return !shape.Folded && shape.Stretch <= maxStretch && !OverlapsItself(chart);
}

// Every chart at the same scale, so that the atlas gives each part of the surface the same
// number of texels.
void ScaleToSurface(const AtlasMesh& mesh, Chart& chart)
{
    double surface = 0.0;
    double flat = 0.0;
    for (size_t i = 0; i < chart.Faces.size(); ++i) {
        surface += mesh.Areas[static_cast<size_t>(chart.Faces[i])];
        const Vec2 a = chart.UV[chart.Corners[3 * i]];
        flat += 0.5 * Cross(chart.UV[chart.Corners[3 * i + 1]] - a, chart.UV[chart.Corners[3 * i + 2]] - a);
    }
    if (!(surface > 0.0) || !(flat > 0.0))
        return;
    const double scale = std::sqrt(surface / flat);
    for (Vec2& uv : chart.UV)
        uv = uv * scale;
}

} // namespace

bool FlattenChart(const AtlasMesh& mesh, Chart& chart, double maxStretch, double& stretch, std::vector<int>& pointOf,
                  std::vector<int>& inChart)
{
    NumberChartPoints(mesh, chart, pointOf, inChart);
    // A chart without any area needs no texels: it shrinks to a point, however long it is.
    if (std::all_of(chart.Faces.begin(), chart.Faces.end(), [&](int face) { return !(mesh.Areas[static_cast<size_t>(face)] > 0.0); })) {
        chart.UV.assign(chart.Points.size(), Vec2{});
        stretch = 0.0;
        return true;
    }
    Project(mesh, chart);
    bool passes = Passes(mesh, chart, std::min(FlatStretch, maxStretch), stretch) || chart.Faces.size() == 1;
    if (!passes && chart.Faces.size() > MaxConformalFaces)
        return false;
    if (!passes) {
        Chart conformal = chart;
        if (ConformalMap(mesh, conformal) && Passes(mesh, conformal, maxStretch, stretch)) {
            chart = std::move(conformal);
            passes = true;
        } else {
            passes = Passes(mesh, chart, maxStretch, stretch);
        }
    }
    if (passes)
        ScaleToSurface(mesh, chart);
    return passes;
}
