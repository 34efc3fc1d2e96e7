#pragma once
// Turns a flattened chart so that it sits in the smallest axis-aligned rectangle it can.

struct Chart;

// Rotates the chart's UVs so that the smallest-area rectangle around them is axis-aligned and at
// least as wide as it is high, and moves them so that their lowest coordinates are 0. Answers
// the rectangle's width and height through the arguments.
void OrientChart(Chart& chart, double& width, double& height);
