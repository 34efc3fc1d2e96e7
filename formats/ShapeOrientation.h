#pragma once
// A prefab shape's orientation: yaw, pitch and roll in degrees, the rotation
// Rz(yaw) * Ry(pitch) * Rx(roll) in the engine's axes (z up). A shape looks along its local +x
// axis with its local +z up, so a light shines along the first column of that rotation.

// The orientation that turns +x onto forward and -z onto down. Both must be unit vectors at
// right angles; straight up or down gives roll 0.
void OrientationFromAxes(const float forward[3], const float down[3], float orientation[3]);

// Where the orientation turns +x: the direction a shape looks along.
void ForwardFromOrientation(const float orientation[3], float forward[3]);
