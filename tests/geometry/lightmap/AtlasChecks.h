#pragma once
// Checks of an atlas that trust nothing the unwrapper says about itself: the atlas is drawn
// anew, texel by texel, and measured against the surface.

#include <cstdint>
#include <span>
#include <string>

struct AtlasFigures {
    int Charts = 0;
    // Chart area over the area of the rectangle the charts occupy.
    double Utilisation = 0.0;
    double LargestStretch = 0.0;
};

// triangles holds three corners per triangle; positions three floats per corner, uvs two.
// corners names each corner's vertex: triangles that share a vertex, or a spot in the atlas,
// belong to one chart. Answers
// the first fault found (empty when none): a UV outside [0, 1], a chart within gutter texels of
// another or within (gutter + 1) / 2 texels of the atlas border, a triangle turned over or
// overlapping another, a chart stretched beyond maxStretch.
std::string CheckAtlas(std::span<const float> positions, std::span<const float> uvs, std::span<const uint32_t> corners,
                       int size, int gutter, double maxStretch, AtlasFigures& figures);
