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
    VMVisArea* Front = nullptr;
    VMVisArea* Back = nullptr;
    // 1 when the portal leads to the area named "outside".
    int LeadsOutside = 0;
    std::string Name;
    int Index = 0;
};
