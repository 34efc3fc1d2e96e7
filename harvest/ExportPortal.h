#pragma once
// Portal shapes: meshes tagged "ExportAs" = 2, one polygon each. A portal is an opening between
// two vis areas and goes to the visibility builder; an anti-portal ("antiportal" non-zero) is an
// occluder that the world keeps and the builder places in an area.

#include <maya/MDagPath.h>

class VBVisBuilder;
class VMWorld;

// 1 when the shape became a portal or anti-portal; 0 when it was rejected (not exactly one
// polygon, fewer than three corners) or the export has no visibility builder; -1 when the mesh
// could not be read. The reasons are trace lines.
int ExportPortal(const MDagPath& path, VMWorld& world, VBVisBuilder* builder);
