#pragma once

class VMWorld;

// Adds the offset to the world bounds, every vertex and light position, every portal and
// anti-portal corner and every vis-area box; each vis area then rebuilds its box planes.
// Answers 0, or -301 when the planes could not be rebuilt.
int Translate(VMWorld& world, const float offset[3]);
