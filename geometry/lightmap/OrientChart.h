#pragma once
// Turns a flattened chart so that it sits in the smallest axis-aligned rectangle it can.

#include "geometry/lightmap/Vec.h"

#include <vector>

struct Chart;

// The smallest-area rectangle around some points: Axis is the unit direction of its longer side.
struct ChartRectangle {
    Vec2 Axis {1.0, 0.0};
    double Width = 0.0;
    double Height = 0.0;
};

ChartRectangle SmallestRectangle(std::vector<Vec2> points);

// Rotates the chart's UVs so that the smallest-area rectangle around them is axis-aligned and at
// least as wide as it is high, and moves them so that their lowest coordinates are 0. Answers
// the rectangle's width and height through the arguments.
void OrientChart(Chart& chart, double& width, double& height);
