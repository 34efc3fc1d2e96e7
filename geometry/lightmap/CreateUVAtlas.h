#pragma once
// Our chart-and-pack unwrapper: cuts a triangle mesh into charts, lays each flat and packs them
// into one square texture, for lightmaps.

#include <cstdint>
#include <span>
#include <vector>

struct UVAtlasParams {
    // Width and height of the atlas, in texels.
    int Size = 2048;
    // The largest stretch a chart may have: 0 allows none, values towards 1 ever more (see
    // ChartShape in geometry/lightmap/ChartStretch.h for the measure).
    double MaxStretch = 0.1;
    // Empty texels between charts.
    int Gutter = 5;
};

struct UVAtlas {
    // Per atlas vertex: the input vertex it copies. An input vertex used by several charts has
    // one atlas vertex in each (more where a chart is cut through it); one that no triangle uses
    // has none.
    std::vector<uint32_t> VertexRemap;
    // Two per atlas vertex, in [0, 1].
    std::vector<float> UVs;
    // Three per triangle, in the input's triangle order, indexing the atlas vertices.
    std::vector<uint32_t> Indices;
    int ChartCount = 0;
    // The largest stretch of any chart.
    double StretchReached = 0.0;
};

// positions holds three floats per vertex, indices three per triangle. Charts follow the
// surface across vertices that share a position exactly, never across an open edge. Answers 0,
// or -2160 with the atlas left empty when a position is not finite, an index is out of range,
// memory runs out or the charts do not fit the atlas at any scale with their gutters.
int CreateUVAtlas(std::span<const float> positions, std::span<const uint32_t> indices, const UVAtlasParams& params,
                  UVAtlas& atlas);
