#pragma once
// An occluder: a polygon that hides what lies behind it. It owns its corner vertices.

#include "model/VMVertex.h"

#include <memory>
#include <string>
#include <vector>

struct VMVisAntiPortal {
    // Null when memory runs out.
    static std::unique_ptr<VMVisAntiPortal> Create(int cornerCount);

    std::vector<std::unique_ptr<VMVertex>> Corners;
    std::string Name;
    // The vis area the occluder belongs to; empty lets the visibility builder place it.
    std::string VisAreaName;
    int Index = 0;
};
