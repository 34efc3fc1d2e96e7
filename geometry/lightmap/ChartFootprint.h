#pragma once
// The texels a chart touches at a given scale, as the packer needs them: per column and per row
// the first and last texel touched.

#include "geometry/lightmap/Vec.h"

#include <span>
#include <utility>
#include <vector>

// Texels are the unit squares [i, i + 1] x [j, j + 1] of UV * scale, the chart's UVs being at
// least 0. A texel counts as touched when some face of the chart, grown by a thousandth of a
// texel on every side, meets it: more than the closed faces touch, so that the rounding of the
// final atlas coordinates can never reach a texel the packer did not count.
struct ChartFootprint {
    int Width = 0;
    int Height = 0;
    // Per column, the lowest and highest touched row; per row, the lowest and highest touched
    // column. A column or row that nothing touches has low > high.
    std::vector<int> ColumnLow;
    std::vector<int> ColumnHigh;
    std::vector<int> RowLow;
    std::vector<int> RowHigh;
};

// The offset, in texels, at which the chart's UV origin lies in its footprint.
inline constexpr double FootprintMargin = 0.002;

// outline holds the chart's border edges (see Chart::Border) by their ends' UVs: the lowest and
// highest texel of a column or row that a chart touches lie on its border, so the border alone
// gives the footprint, at a cost that grows with the border rather than the area.
ChartFootprint RasterizeOutline(std::span<const std::pair<Vec2, Vec2>> outline, double scale);
