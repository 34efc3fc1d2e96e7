#pragma once
// How far a chart's flattening strays from the surface it stands for.

struct AtlasMesh;
struct Chart;

struct ChartShape {
    // 0 when every face keeps its shape and all faces keep their sizes relative to each other,
    // growing towards 1 with the stretch: 1 - 1/L2, with L2 the area-weighted root mean square
    // stretch of the faces after the chart is scaled to its surface area. Folded faces take no
    // part.
    double Stretch = 0.0;
    // Some face with area on the surface has none, or turns over, in the flattening.
    bool Folded = false;
};

ChartShape MeasureChart(const AtlasMesh& mesh, const Chart& chart);
