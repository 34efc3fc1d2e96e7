#pragma once
// Pieces of the text "kestrel info" prints, shared by the descriptions of our asset files.

#include <cstddef>
#include <string>

struct VMMaterial;

// "(x, y, z)".
std::string DescribePoint(const float (&point)[3]);

// One indented line: number, name, diffuse texture, transparency mode and shader count.
std::string DescribeMaterial(size_t number, const VMMaterial& material);
