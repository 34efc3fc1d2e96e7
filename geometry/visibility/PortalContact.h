#pragma once
// How a polygon meets a portal, and cutting a polygon along a portal's plane. Corners within
// PortalTolerance of the plane count as lying in it.

#include "geometry/visibility/VBState.h"

#include <vector>

struct VBPortal;

inline constexpr double PortalTolerance = 0.1;

enum class VBContact { None, Front, Back, Split };

// The plane, the grown box and the edge planes of a portal. A portal whose corners give no
// plane keeps an invalid one and touches nothing.
VBPortalState PreparePortal(const VBPortal& portal);

// Whether corners (with their box) touch the portal in front, behind, across its plane, or not
// at all. The portal must have been prepared.
VBContact ClassifyAgainstPortal(const VBVector* corners, uint32_t count, const VBBox& box, const VBPortalState& portal);

// The pieces of a polygon that crosses the portal's plane, in corner order: corners further
// than the tolerance in front go to the front piece, those further behind to the back piece;
// where an edge runs from one side to the other, the point where it crosses the plane goes to
// both. A corner within the tolerance goes to both pieces; of several such corners in a row
// between the front and the back corners only the one nearest the plane does (the others go
// to the side they border), so that the pieces never overlap and together keep the polygon's
// area.
void CutAlongPortal(const VBVector* corners, uint32_t count, const VBPlane& plane, std::vector<VBVector>& front,
                    std::vector<VBVector>& back);
