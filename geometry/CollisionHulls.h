#pragma once
// Collision objects replaced by their convex hulls, for the "Convex hull" collision mesh: the
// physics engine tests a convex body far faster than a triangle soup.
//
// The hull of each object's points is computed by Qhull (Debian's libqhull-r, the reentrant
// Quickhull of Barber, Dobkin and Huhdanpaa) and triangulated; its triangles use the object's
// own points and are wound counter-clockwise seen from outside, as Maya's faces are. Points
// inside the hull drop out of it.
//
// An object whose points span no volume (fewer than four, or all in one plane or on one line,
// within Qhull's precision) has no hull: it keeps its triangles and is named in the answer.

#include <cstdint>
#include <vector>

// positions holds x, y, z per point, indices three point numbers per triangle and objects the
// object of each triangle. Replaces, object by object in the order of their first triangle, the
// triangles by those of the object's hull; objects follows. The points stay as they are, also
// those no triangle uses any more. Answers the objects that kept their triangles, in that order.
// Throws std::bad_alloc when memory runs out.
std::vector<uint32_t> ReplaceByConvexHulls(const std::vector<float>& positions, std::vector<int32_t>& indices,
                                           std::vector<uint32_t>& objects);
