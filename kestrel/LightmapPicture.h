#pragma once
// Pictures of a static mesh's lightmap atlases, for the user to see what was packed: one per
// material, a pixel per texel.

#include <string>
#include <vector>

struct VStaticMeshFile;

struct AtlasPicture {
    int Material = 0;
    // The PNG file's bytes.
    std::string Png;
};

// For each material with triangles to render, a picture of size x size pixels, the top row at
// v = 0: a grid line every 64 texels, each chart (triangles that share a vertex or a spot in
// the atlas) filled in a colour of its own and outlined. Empty when the mesh has no second UV
// set.
std::vector<AtlasPicture> DrawLightmapAtlases(const VStaticMeshFile& mesh, int size);
