#pragma once
// The plane of a polygon, cached on the polygon.

class VMPolygon;

// Answers false when the polygon has no plane: fewer than 3 corners, or all corners on one line
// (or NaN). Otherwise plane receives the unit normal x, y, z and d with normal . p = d for the
// first corner p, and the plane is stored on the polygon with its valid flag set; while that
// flag stays set the stored plane is answered without looking at the corners again.
//
// The normal is the longest of the cross products (P[i+1] - P[i]) x (P[j] - P[i]) over every
// corner i and every later corner j >= i + 2, formed in double precision; among equally long
// ones the first found wins.
bool PolygonPlane(VMPolygon& polygon, double plane[4]);
