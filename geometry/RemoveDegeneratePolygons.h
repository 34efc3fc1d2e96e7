#pragma once
// The degenerate-polygon pass of AdjustTriangles.

class VMWorld;

struct DegenerateCounts {
    int Area = 0;
    int Normal = 0;
    int Multi = 0;
};

// For each polygon: corners equal to their next corner (the last's next is the first) are
// dropped when at least 3 corners remain, otherwise the corner array stays. Then the polygon
// is removed, and counted, as Area when its area is below epsVert squared (the square taken in
// single precision), as Multi when one vertex record appears at two corners, and as Normal when
// it has a plane whose normal's squared length is not strictly between 0.9 and 1.1. Removed
// polygons leave their vis areas and are destroyed; the order of the rest is kept.
DegenerateCounts RemoveDegeneratePolygons(VMWorld& world, float epsVert);
