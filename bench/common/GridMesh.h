#pragma once
// The quad grid the generated benchmark scenes are made of.

#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>

#include <functional>

// quadsX x quadsY quads over (quadsX + 1) x (quadsY + 1) points in rows; place(x, y) puts each point.
standin::MeshDescription GridMesh(int quadsX, int quadsY, const std::function<MPoint(int x, int y)>& place);

// One UV per point, spanning 0..1 across the grid.
standin::UVSpec GridUVs(const standin::MeshDescription& grid, int quadsX, int quadsY);
