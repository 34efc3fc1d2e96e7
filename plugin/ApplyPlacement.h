#pragma once

struct VMTransform;
class VMWorld;

// Moves the world into the frame of the placement: vertex positions, normals and tangents,
// light positions and axes, portal corners. The bounds are left for the caller to recompute.
void ApplyPlacement(VMWorld& world, const VMTransform& placement);
