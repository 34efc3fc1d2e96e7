#pragma once
// A skinned character stand-in for the model benchmarks: one UV-mapped grid of quads, two triangles each, lying
// along a chain of 100 joints 10 cm apart, every vertex weighted to the four joints nearest to it.

inline constexpr int SkinnedGridJointCount = 100;

// Replaces the stand-in's scene with a grid of quadsX x quadsY quads (1000 x 500 gives a million triangles)
// skinned to the chain.
void BuildSkinnedGridScene(int quadsX, int quadsY);
