#pragma once

class VMWorld;

// Numbers the vis areas and materials by list position, then sorts the polygon, tri-list,
// patch and heightfield lists each by the key material number + 65536 * number of the first
// vis area in the owner list (0 without one), ascending as signed 32-bit values; the order
// among equal keys is not significant. Answers 0, or -301 (nothing sorted) without memory.
int SortPrimitives(VMWorld& world);
