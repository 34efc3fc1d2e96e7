#include "geometry/lightmap/CreateUVAtlas.h"

#include "AtlasChecks.h"
#include "RandomMeshes.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace {

// The atlas drawn per corner, as the checks take it.
struct Corners {
    std::vector<float> Positions;
    std::vector<float> UVs;
    std::vector<uint32_t> Vertices;
};

Corners CornersOf(const IndexedMesh& mesh, const UVAtlas& atlas)
{
    Corners corners;
    for (size_t c = 0; c < atlas.Indices.size(); ++c) {
        const uint32_t vertex = atlas.Indices[c];
        const uint32_t original = atlas.VertexRemap[vertex];
        for (size_t axis = 0; axis < 3; ++axis)
            corners.Positions.push_back(mesh.Positions[3 * original + axis]);
        corners.UVs.push_back(atlas.UVs[2 * vertex]);
        corners.UVs.push_back(atlas.UVs[2 * vertex + 1]);
        corners.Vertices.push_back(vertex);
    }
    return corners;
}

class RandomAtlas : public ::testing::TestWithParam<uint32_t> {};

TEST_P(RandomAtlas, ChartsKeepTheirGutterNeverOverlapAndStayWithinTheStretch)
{
    std::mt19937 random(GetParam());
    const IndexedMesh mesh = RandomMesh(random);
    UVAtlasParams params;
    params.Size = 256 << (random() % 2);
    params.MaxStretch = std::vector<double>{0.02, 0.1, 0.5}[random() % 3];
    UVAtlas atlas;
    ASSERT_EQ(CreateUVAtlas(mesh.Positions, mesh.Indices, params, atlas), 0) << mesh.TriangleCount() << " triangles";

    // Every triangle is still there, on copies of its own vertices.
    ASSERT_EQ(atlas.Indices.size(), mesh.Indices.size());
    ASSERT_EQ(atlas.UVs.size(), 2 * atlas.VertexRemap.size());
    for (size_t c = 0; c < mesh.Indices.size(); ++c)
        ASSERT_EQ(atlas.VertexRemap[atlas.Indices[c]], mesh.Indices[c]);

    const Corners corners = CornersOf(mesh, atlas);
    AtlasFigures figures;
    EXPECT_EQ(CheckAtlas(corners.Positions, corners.UVs, corners.Vertices, params.Size, params.Gutter,
                         params.MaxStretch, figures), "");
    EXPECT_EQ(figures.Charts, atlas.ChartCount);
    EXPECT_LE(atlas.StretchReached, params.MaxStretch);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomAtlas, ::testing::Range(1u, 13u));

// Utilisation (chart area over the rectangle the charts occupy) of the shapes a level is built
// from: a building kit of boxes, whose sides fold onto their neighbours, and a gently rolling
// terrain that flattens in one piece.
class AtlasUtilisation : public ::testing::TestWithParam<uint32_t> {};

TEST_P(AtlasUtilisation, FillsTwoThirdsOfTheAtlasItUses)
{
    std::mt19937 random(GetParam());
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    IndexedMesh boxes;
    for (int b = 0; b < 20; ++b) {
        const float size[3] = {20 + 300 * unit(random), 20 + 300 * unit(random), 20 + 300 * unit(random)};
        AddBox(boxes, size, 50.0f, random);
    }
    IndexedMesh terrain;
    AddTerrain(terrain, 30, 30, 0.0f, random);
    for (const IndexedMesh* mesh : {&boxes, &terrain}) {
        UVAtlasParams params;
        params.Size = 512;
        UVAtlas atlas;
        ASSERT_EQ(CreateUVAtlas(mesh->Positions, mesh->Indices, params, atlas), 0);
        const Corners corners = CornersOf(*mesh, atlas);
        AtlasFigures figures;
        ASSERT_EQ(CheckAtlas(corners.Positions, corners.UVs, corners.Vertices, params.Size, params.Gutter,
                             params.MaxStretch, figures), "");
        EXPECT_GE(figures.Utilisation, 0.65) << mesh->TriangleCount() << " triangles, " << figures.Charts << " charts";
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, AtlasUtilisation, ::testing::Range(1u, 4u));

TEST(CreateUVAtlas, FailsOnPositionsThatAreNotFiniteAndIndicesOutOfRange)
{
    const std::vector<float> positions {0, 0, 0, 1, 0, 0, 0, 1, 0};
    std::vector<float> withNaN = positions;
    withNaN[4] = std::numeric_limits<float>::quiet_NaN();
    UVAtlas atlas;
    EXPECT_EQ(CreateUVAtlas(withNaN, std::vector<uint32_t>{0, 1, 2}, UVAtlasParams{}, atlas), -2160);
    EXPECT_EQ(CreateUVAtlas(positions, std::vector<uint32_t>{0, 1, 3}, UVAtlasParams{}, atlas), -2160);
    EXPECT_TRUE(atlas.Indices.empty());
}

void ExpectWithinTheAtlas(const UVAtlas& atlas)
{
    for (float uv : atlas.UVs) {
        EXPECT_GE(uv, 0.0f);
        EXPECT_LE(uv, 1.0f);
    }
}

// A triangle that is a line 8e31 long beside ordinary ones: every chart must still fit.
TEST(CreateUVAtlas, PacksTrianglesWithoutAreaOfAnyLength)
{
    const std::vector<float> positions {-20, 0, 6, -8e31f, 6.75f, -8.25f, 0, 0, 0, 1, 0, 0, 2, 0, 0, 0, 1, 0};
    const std::vector<uint32_t> indices {1, 1, 0, 2, 3, 4, 2, 3, 5};
    UVAtlasParams params;
    params.Size = 128;
    UVAtlas atlas;
    ASSERT_EQ(CreateUVAtlas(positions, indices, params, atlas), 0);
    ExpectWithinTheAtlas(atlas);
    const float* a = &atlas.UVs[2 * atlas.Indices[6]];
    const float* b = &atlas.UVs[2 * atlas.Indices[7]];
    const float* c = &atlas.UVs[2 * atlas.Indices[8]];
    EXPECT_GT((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]), 0.0f);
}

// A sliver 1e32 long with some area, and a triangle without area on two of its corners.
TEST(CreateUVAtlas, PacksASliverOfAnyLength)
{
    const std::vector<float> positions {28, 27.25f, -16.5f, 2, 0.25f, 0, 1.12e32f, -29.75f, -31.25f};
    const std::vector<uint32_t> indices {2, 1, 0, 2, 1, 2};
    UVAtlasParams params;
    params.Size = 32;
    params.MaxStretch = 0.0f;
    UVAtlas atlas;
    ASSERT_EQ(CreateUVAtlas(positions, indices, params, atlas), 0);
    ExpectWithinTheAtlas(atlas);
}

// A cube of eight shared vertices in an atlas so small that its gutters would outweigh six
// separate sides: it unfolds into one net of 14 corners, the seven edges it is not unfolded
// across cut through it, so a vertex has up to three copies in the one chart.
TEST(CreateUVAtlas, UnfoldsASmallCubeIntoOneNetCutAlongItsOtherEdges)
{
    IndexedMesh cube;
    cube.Positions = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1};
    cube.Indices = {0, 2, 1, 0, 3, 2, 4, 5, 6, 4, 6, 7, 0, 1, 5, 0, 5, 4,
                    1, 2, 6, 1, 6, 5, 2, 3, 7, 2, 7, 6, 3, 0, 4, 3, 4, 7};
    UVAtlasParams params;
    params.Size = 10;
    UVAtlas atlas;
    ASSERT_EQ(CreateUVAtlas(cube.Positions, cube.Indices, params, atlas), 0);
    EXPECT_EQ(atlas.ChartCount, 1);
    EXPECT_EQ(atlas.VertexRemap.size(), 14u);
    const Corners corners = CornersOf(cube, atlas);
    AtlasFigures figures;
    EXPECT_EQ(CheckAtlas(corners.Positions, corners.UVs, corners.Vertices, params.Size, params.Gutter,
                         params.MaxStretch, figures), "");
    EXPECT_EQ(figures.Charts, 1);
}

// Each separate triangle is a chart, and each chart needs a texel and its gutter.
TEST(CreateUVAtlas, FailsWhenTheChartsCannotFitTheAtlasAtAnyScale)
{
    IndexedMesh mesh;
    for (uint32_t t = 0; t < 40; ++t) {
        const float x = 10.0f * static_cast<float>(t);
        mesh.Positions.insert(mesh.Positions.end(), {x, 0, 0, x + 1, 0, 0, x, 1, 0});
        mesh.Indices.insert(mesh.Indices.end(), {3 * t, 3 * t + 1, 3 * t + 2});
    }
    UVAtlasParams params;
    params.Size = 32;
    UVAtlas atlas;
    EXPECT_EQ(CreateUVAtlas(mesh.Positions, mesh.Indices, params, atlas), -2160);
    params.Size = 64;
    EXPECT_EQ(CreateUVAtlas(mesh.Positions, mesh.Indices, params, atlas), 0);
}

} // namespace
