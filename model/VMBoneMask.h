#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A named selection of bones, one value per bone in skeleton order (which bones an animation
// layer drives).
struct VMBoneMask {
    std::string Name;
    std::vector<uint32_t> Values;
};
