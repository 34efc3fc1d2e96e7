#pragma once
// What "kestrel info" prints for a model read from its file.

#include <string>

class VMModel;

// The skeleton (each bone's number, name and parent), the materials, the vertices with the
// components they carry and how many have 0 to 4 influences, the triangles, the submeshes (runs
// of triangles of one material, in file order) and the bounds.
std::string DescribeModel(const VMModel& model);
