#pragma once
// The key times of Maya's animation curves, which key-frame entries sample at.

#include "harvest/FrameTimes.h"
#include "harvest/TimeBase.h"

struct HarvestState;

// Adds to keys the time of every key of every curve that animates a DAG node, walked breadth
// first. A selection-only export takes instead the selected nodes with everything below them,
// every animated dependency node of the scene and every character set that belongs to no other
// character, and their curves. A path that cannot be named raises "Invalid dag node requested"
// ("Selection string" or "Global DAG iterator"). 0, or -1 when the DAG cannot be walked.
int GetKeyFrames(HarvestState& state, const VTimeBase& base, KeyTimeSet& keys);
