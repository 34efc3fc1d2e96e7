// The L2 geometric stretch of Sander, Snyder, Gortler and Hoppe, "Texture Mapping Progressive
// Meshes" (SIGGRAPH 2001): per face, the root mean square of the singular values of the
// mapping from the plane back onto the surface, weighted by surface area over the chart and
// normalised so that a chart flattened without distortion measures 1 at any scale.

#include "geometry/lightmap/ChartStretch.h"

#include "geometry/lightmap/AtlasMesh.h"
#include "geometry/lightmap/Chart.h"

#include <cmath>
#include <cstddef>

ChartShape MeasureChart(const AtlasMesh& mesh, const Chart& chart)
{
    ChartShape shape;
    double surfaceArea = 0.0;
    double flatArea = 0.0;
    double weightedSquares = 0.0;
    for (size_t i = 0; i < chart.Faces.size(); ++i) {
        const int face = chart.Faces[i];
        const double area = mesh.Areas[static_cast<size_t>(face)];
        const Vec2 s1 = chart.UV[chart.Corners[3 * i]];
        const Vec2 s2 = chart.UV[chart.Corners[3 * i + 1]];
        const Vec2 s3 = chart.UV[chart.Corners[3 * i + 2]];
        const double flat = 0.5 * Cross(s2 - s1, s3 - s1);
        if (area <= 0.0)
            continue;
        if (!(flat > 0.0)) {
            shape.Folded = true;
            continue;
        }
        const Vec3 q1 = mesh.Corner(face, 0);
        const Vec3 q2 = mesh.Corner(face, 1);
        const Vec3 q3 = mesh.Corner(face, 2);
        const double scale = 1.0 / (2.0 * flat);
        const Vec3 alongU = (q1 * (s2.Y - s3.Y) + q2 * (s3.Y - s1.Y) + q3 * (s1.Y - s2.Y)) * scale;
        const Vec3 alongV = (q1 * (s3.X - s2.X) + q2 * (s1.X - s3.X) + q3 * (s2.X - s1.X)) * scale;
        weightedSquares += area * 0.5 * (Dot(alongU, alongU) + Dot(alongV, alongV));
        surfaceArea += area;
        flatArea += flat;
    }
    if (surfaceArea <= 0.0)
        return shape;
    const double l2 = std::sqrt(weightedSquares / surfaceArea * flatArea / surfaceArea);
    shape.Stretch = std::isfinite(l2) && l2 >= 1.0 ? 1.0 - 1.0 / l2 : (std::isfinite(l2) ? 0.0 : 1.0);
    return shape;
}
