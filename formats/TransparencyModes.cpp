#include "formats/TransparencyModes.h"

#include "base/TextUtil.h"

namespace {

struct TransparencyMode {
    uint32_t Number;
    const char* Name;
};

constexpr TransparencyMode Modes[] = {
    {0, "opaque"},
    {1, "modulate"},
    {2, "alpha"},
    {3, "additive"},
    {4, "colorkey"},
    {5, "addmodulate"},
    {8, "modulate2x"},
    {15, "alphasmooth"},
};

} // namespace

const char* TransparencyModeName(uint32_t mode)
{
    for (const TransparencyMode& entry : Modes) {
        if (entry.Number == mode)
            return entry.Name;
    }
    return nullptr;
}

bool ParseTransparencyMode(std::string_view name, uint32_t& mode)
{
    for (const TransparencyMode& entry : Modes) {
        if (EqualsNoCase(name, entry.Name)) {
            mode = entry.Number;
            return true;
        }
    }
    return false;
}
