#pragma once
// Lays flattened charts out in a square atlas.

#include "geometry/lightmap/Chart.h"

#include <vector>

// Places the charts in an atlas of atlasSize x atlasSize texels, all at one scale, the largest
// found at which they fit: between the texels of two charts lie at least gutter empty texels
// across and along, and (gutter + 1) / 2 empty texels between any chart and the atlas border,
// so that a sampler wrapping around the atlas does not bleed either. Each chart keeps the
// orientation of its smallest enclosing rectangle or is turned from it by a multiple of a
// quarter turn, whichever packs tighter. Replaces every chart's UVs by atlas coordinates in
// [0, 1] and answers true; answers false, with the UVs undefined, when the charts do not fit
// at any scale (each chart needs at least one texel and its gutter).
bool PackCharts(std::vector<Chart>& charts, int atlasSize, int gutter);
