#pragma once
// A terrain far wider than the stripper's cube for the whole-export benchmark: about
// triangleCount triangles over 52000 x 52000 units (520 m in centimetres), rolling hills, cut into
// tiles of 37 x 37 quads, each tile a mesh node of shared vertices with one UV per vertex and one
// of four lambert shaders, as a level's ground is modelled.

// Replaces the stand-in's scene with the terrain; answers its triangle count.
int BuildWideTerrainScene(int triangleCount);
