#pragma once
// Gathers short pieces into few lists.
//
// The candidates are the lists among triLists and the strips with fewer than minStripCorners
// corners, taken in reverse order; each loses its degenerate triangles (two equal corners) and
// becomes a list. Then the first of them absorbs each following one while the two corner counts
// add up to less than 2047, and is done; this repeats with the next until none is left. A list
// left without triangles is kept like any other: the writers give it an empty batch.
//
// On return, kept holds the tri-lists that were no candidates, in their order, and merged the
// merged lists in the order made.

#include <memory>
#include <vector>

class VMTriList;

void MergeTriLists(std::vector<std::unique_ptr<VMTriList>> triLists, int minStripCorners,
                   std::vector<std::unique_ptr<VMTriList>>& kept, std::vector<std::unique_ptr<VMTriList>>& merged);
