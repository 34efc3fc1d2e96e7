#pragma once
// Cuts a chart that cannot be flattened well enough into two.

#include <utility>
#include <vector>

struct AtlasMesh;

// Two connected halves of a chart of at least two connected faces: the faces nearer (in steps
// across edges) to one or the other of two faces far apart, the first face's side taking ties.
// inChart is scratch of one entry per mesh face, all 0, and is left so.
std::pair<std::vector<int>, std::vector<int>> SplitChart(const AtlasMesh& mesh, const std::vector<int>& faces,
                                                         std::vector<int>& inChart);
