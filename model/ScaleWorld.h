#pragma once

class VMWorld;

// Multiplies every vertex position, every portal and anti-portal corner and every vis-area box
// by the factor; each vis area rebuilds its box planes and every prefab shape is scaled. Lights
// and the world bounds stay as they are. Answers 0, or -301 when the planes could not be rebuilt.
int ScaleWorld(VMWorld& world, float factor);
