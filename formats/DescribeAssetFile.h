#pragma once
// The text "kestrel info" prints for one of our binary asset files, chosen by its extension:
// ".qmesh" (static mesh), ".qcolmesh" (collision mesh), ".model" (model file) or ".anim"
// (animation file).

#include <string>
#include <string_view>

class VChunkStreamProvider;

// False with the last-error text set for an unknown extension or a file that cannot be read.
bool DescribeAssetFile(std::string_view path, std::string& text, VChunkStreamProvider* provider = nullptr);
