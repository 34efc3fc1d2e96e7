#pragma once

#include <maya/MDagPath.h>

// A node is visible when it and every ancestor have their "visibility" on (or no such plug),
// sit in no display layer that is hidden, and are no intermediate object.
bool IsNodeVisible(const MDagPath& path);
