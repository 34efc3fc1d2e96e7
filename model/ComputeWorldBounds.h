#pragma once

class VMWorld;

// Resets the world bounds and grows them over every vertex position, then over the two points
// 127 * s below and 128 * s above each heightfield's first corner on the z axis, s being its
// height scale.
void ComputeWorldBounds(VMWorld& world);
