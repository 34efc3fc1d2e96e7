#pragma once
// A plane of a vis area: a point p on it satisfies Normal . p + D = 0.

class VMVisArea;

struct VMVisPlane {
    double Normal[3] = {0.0, 0.0, 0.0};
    double D = 0.0;
    // The area whose box made the plane; null for a plane of the older model file.
    VMVisArea* Area = nullptr;
    int Index = 0;
};
