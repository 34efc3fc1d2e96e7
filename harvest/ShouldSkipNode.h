#pragma once

#include <maya/MDagPath.h>

// True skips the node and its subtree: "ExportSkip" set, an intermediate object, or invisible.
// Writes the node's trace line either way.
bool ShouldSkipNode(const MDagPath& path);
