#pragma once
// The million-triangle scene the harvest and export benchmarks share: 300 mesh nodes, each a smooth,
// UV-mapped grid of 42 x 40 quads bent into a bowl, spread over 8 lambert and blinn shaders.

inline constexpr int TiledGridNodeCount = 300;
inline constexpr int TiledGridQuadsX = 42;
inline constexpr int TiledGridQuadsY = 40;
inline constexpr int TiledGridTriangleCount = 2 * TiledGridNodeCount * TiledGridQuadsX * TiledGridQuadsY;

// Replaces the stand-in's scene with the tiled grids.
void BuildTiledGridScene();
