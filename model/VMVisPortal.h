#pragma once
// An opening between two vis areas. The portal owns its corner vertices.

#include "model/VMVertex.h"

#include <memory>
#include <string>
#include <vector>

class VMVisArea;

struct VMVisPortal {
    // Null when memory runs out.
    static std::unique_ptr<VMVisPortal> Create(int cornerCount);

    std::vector<std::unique_ptr<VMVertex>> Corners;
    // The area the portal faces (its normal points into it) and the one it leads to.
    VMVisArea* Front = nullptr;
    VMVisArea* Back = nullptr;
    // The record of the same opening seen from the other side; null when that side has no area.
    VMVisPortal* Opposite = nullptr;
    // 1 when the portal leads to the area named "outside".
    int LeadsOutside = 0;
    std::string Name;
    int Index = 0;
};
