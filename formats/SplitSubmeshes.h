#pragma once
// Keeps every shadow range of the static mesh within what its consumer can index with 16-bit
// local numbers.
//
// When some submesh has more than 32,767 shadow indices or a shadow vertex range (last - first)
// above 32,767, every submesh with more than 32,766 shadow indices is replaced by pieces of
// 32,766 indices (the last takes the rest), each with the matching slices of both lists, the
// same material, area and group, and the box of its render slice; the areas list the pieces in
// its place. A submesh whose render and shadow counts differ cannot be sliced alike and stays
// whole. The submeshes are then renumbered, and the caller must give each submesh its own
// contiguous vertex range (NumberStaticMeshVertices with perSubmesh set).

#include <functional>
#include <string>

class VMWorld;

// Answers whether the submeshes were reordered; the console receives the progress and error lines.
bool SplitSubmeshes(VMWorld& world, const std::function<void(const std::string&)>& console);
