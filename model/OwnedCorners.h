#pragma once
// The corner vertices that portals and anti-portals own.

#include "model/VMVertex.h"

#include <memory>
#include <vector>

// A portal is a hand-made outline; a count beyond this is corrupt input, not a shape.
constexpr int MaxOwnedCorners = 65536;

// Fills corners with count new vertices; false (corners left empty) for a count outside
// 0 .. MaxOwnedCorners or when memory runs out.
bool MakeOwnedCorners(std::vector<std::unique_ptr<VMVertex>>& corners, int count);
