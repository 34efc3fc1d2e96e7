#pragma once
// The second UV set of a static world: each material's triangles unwrapped into a lightmap
// atlas of their own.

class VMWorld;
class VGLogger;

// The static export unwraps into atlases of this many texels a side.
inline constexpr int LightmapAtlasSize = 2048;

// For each material in list order, its triangles (in world order) are unwrapped by
// CreateUVAtlas into an atlas of atlasSize texels a side with charts of at most maxStretch
// stretch. Each atlas vertex becomes a new vertex: a copy of the vertex it stands for (colour
// white, no merge link, the material as material link) with the atlas position as its second
// UV; a vertex shared by two
// materials, or lying on a seam between charts, is copied once per material and chart. Each
// triangle is replaced by a copy of itself (attributes, material, plane) on the new vertices,
// which also takes its place in every vis area. A material whose atlas fails loses its
// triangles; the error goes to the logger and the pass goes on with the next material. The
// world's vertices are the new ones only, in material order; unreferenced vertices are gone.
// Then the world is enumerated, marked as carrying a second UV set and its ID links rebuilt
// (FixID with radius 0). The logger (which may be null) receives the progress lines through
// Print and the error through Warning.
//
// Answers 0; -2160 when some material's atlas failed; -1, leaving the world untouched, when
// the world holds tri-lists, patches or heightfields, or a polygon that is not a triangle of
// listed vertices or whose material is not in the world's list; -301 when memory runs out,
// the world then holding the materials done so far. A world without polygons or vertices is
// left alone and answers 0.
int GenerateLightmapUVs(VMWorld& world, int atlasSize, float maxStretch, VGLogger* logger);
