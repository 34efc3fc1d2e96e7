#pragma once
// Joins the strips of one batch into longer strips with degenerate triangles between them.
//
// Walking the tri-lists in order, each strip of kind 1 is appended to the strip being built
// while their two corner counts plus the joint (12 corners when the strip being built holds an
// even number of triangles, else 15) stay below 2047; otherwise the strip being built is done
// and this one starts the next. With n corners in the strip A being built and B0, B1 the first
// corners of the next strip B, the joint is
//   even triangle count: A[n-3] A[n-1] A[n-1] | A[n-1] A[n-1] B0 | A[n-1] B0 B0 | B0 B0 B1
//   odd triangle count:  A[n-1] A[n-2] A[n-2] | A[n-1] A[n-2] A[n-2] | A[n-2] A[n-2] B0 |
//                        A[n-2] B0 B0 | B0 B0 B1
// so that the joined strip keeps its alternating order. Stitching stops at the first strip with
// fewer than minStripCorners corners. Tri-lists of other kinds are left alone.
//
// On return, stitched holds the joined strips in order and rest every tri-list that took no
// part, in its order; every input tri-list ends in one of them or, once appended, destroyed.

#include <memory>
#include <vector>

class VMTriList;

constexpr int MaxJoinedCorners = 2047;

void StitchStrips(std::vector<std::unique_ptr<VMTriList>> triLists, int minStripCorners,
                  std::vector<std::unique_ptr<VMTriList>>& stitched, std::vector<std::unique_ptr<VMTriList>>& rest);
