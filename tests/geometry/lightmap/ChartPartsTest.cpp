#include "geometry/lightmap/AtlasMesh.h"
#include "geometry/lightmap/Chart.h"
#include "geometry/lightmap/ChartStretch.h"
#include "geometry/lightmap/FaceAdjacency.h"
#include "geometry/lightmap/FlattenChart.h"
#include "geometry/lightmap/TexelGrid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace {

TEST(FaceAdjacency, MatchesEdgesByPositionRunBackAndLeavesOthersOpen)
{
    //  2,4 ----- 5        vertices 3 and 4 sit on 1 and 2 (a seam), triangle 1 runs the edge
    //   | \   1  |        1-2 back, triangle 2 runs it the same way as triangle 0 and stays
    //   | 0 \    |        open there.
    //   0 ---- 1,3
    const std::vector<float> positions {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0, 1, 1, 1};
    const std::vector<uint32_t> indices {0, 1, 2, 4, 3, 5, 1, 2, 6};
    const std::vector<uint32_t> shared = SharedPositions(positions);
    EXPECT_EQ(shared, (std::vector<uint32_t>{0, 1, 2, 1, 2, 5, 6}));
    EXPECT_EQ(BuildFaceAdjacency(shared, indices), (std::vector<int>{-1, 1, -1, 0, -1, -1, -1, -1, -1}));
}

// A stretch of 2 along one direction: the singular values 1/2 and 1, normalised by the area
// ratio 2, give L2 = sqrt((2/4 + 2) / 2).
TEST(MeasureChart, GivesTheNormalisedL2StretchAndFindsFolds)
{
    const std::vector<float> positions {0, 0, 0, 1, 0, 0, 0, 1, 0};
    const std::vector<uint32_t> indices {0, 1, 2};
    const AtlasMesh mesh(positions, indices);
    Chart chart;
    chart.Faces = {0};
    chart.Corners = {0, 1, 2};
    chart.UV = {{0, 0}, {2, 0}, {0, 1}};
    ChartShape shape = MeasureChart(mesh, chart);
    EXPECT_NEAR(shape.Stretch, 1.0 - 1.0 / std::sqrt(1.25), 1e-12);
    EXPECT_FALSE(shape.Folded);

    chart.UV = {{0, 0}, {0, 1}, {1, 0}};
    EXPECT_TRUE(MeasureChart(mesh, chart).Folded);
}

// A third of a cylinder flattens without stretch, but only a conformal map finds how: its
// projection onto the mean plane squeezes the sides.
TEST(FlattenChart, UnrollsADevelopableSurfaceWithoutStretch)
{
    std::vector<float> positions;
    std::vector<uint32_t> indices;
    const int around = 8;
    const int along = 3;
    for (int j = 0; j <= along; ++j) {
        for (int i = 0; i <= around; ++i) {
            const double angle = 2.0 * std::numbers::pi / 3.0 * i / around;
            positions.insert(positions.end(), {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)),
                                               static_cast<float>(j) * 0.5f});
        }
    }
    for (uint32_t j = 0; j < along; ++j) {
        for (uint32_t i = 0; i < around; ++i) {
            const uint32_t a = j * (around + 1) + i;
            indices.insert(indices.end(), {a, a + around + 1, a + 1, a + 1, a + around + 1, a + around + 2});
        }
    }
    const AtlasMesh mesh(positions, indices);
    Chart chart;
    for (int face = 0; face < mesh.FaceCount(); ++face)
        chart.Faces.push_back(face);
    std::vector<int> pointOf(positions.size() / 3, -1);
    std::vector<int> inChart(indices.size() / 3, 0);
    double stretch = 1.0;
    ASSERT_TRUE(FlattenChart(mesh, chart, 1e-4, stretch, pointOf, inChart));
    EXPECT_LT(stretch, 1e-4);
    // Unrolled, the first row of the arc lies straight, as long as its eight chords.
    const auto uvOf = [&](uint32_t vertex) {
        return chart.UV[static_cast<size_t>(std::find(chart.Points.begin(), chart.Points.end(), vertex) - chart.Points.begin())];
    };
    const Vec2 first = uvOf(0);
    const Vec2 last = uvOf(around);
    EXPECT_NEAR(std::hypot(last.X - first.X, last.Y - first.Y), 16.0 * std::sin(std::numbers::pi / 24.0), 1e-3);
}

// A roof on one leg at the right, taken with a gutter of one texel: beneath the roof only row 0
// left of the leg's gutter stays free (seven texels), so a bar one row high fits there if it is
// no longer, and a square of two rows only above the roof's gutter. Column 11 stays free beside
// the roof but is too narrow.
//   row 2  RRRRRRRRRR.
//   row 1  ........LL.
//   row 0  ........LL.
TEST(TexelGrid, DropsAShapeBeneathAnOverhangWhereItFitsWithItsGutter)
{
    TexelGrid grid(12, 8);
    grid.Take(RowSpans{10, 3, {8, 8, 0}, {9, 9, 9}}, 0, 0, 1);
    const RowSpans bar {2, 1, {0}, {1}};
    const RowSpans square {2, 2, {0, 0}, {1, 1}};
    int x = -1;
    int y = -1;
    ASSERT_TRUE(grid.Find(bar, 8, x, y));
    EXPECT_EQ(std::pair(x, y), std::pair(0, 0));
    const RowSpans longBar {8, 1, {0}, {7}};
    ASSERT_TRUE(grid.Find(longBar, 8, x, y));
    EXPECT_EQ(std::pair(x, y), std::pair(0, 4));
    ASSERT_TRUE(grid.Find(square, 8, x, y));
    EXPECT_EQ(std::pair(x, y), std::pair(0, 4));
    EXPECT_FALSE(grid.Find(square, 4, x, y));
    grid.Take(square, 0, 4, 1);
    ASSERT_TRUE(grid.Find(square, 8, x, y));
    EXPECT_EQ(std::pair(x, y), std::pair(3, 4));
}

} // namespace
