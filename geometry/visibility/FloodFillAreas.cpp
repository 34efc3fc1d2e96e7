#include "base/TextUtil.h"
#include "geometry/visibility/VBStages.h"

#include <algorithm>

namespace {

// The engine's fill stack grows in blocks of this many 8-byte entries; the peak is reported in
// those blocks.
constexpr size_t StackBlockEntries = 4096;

int32_t FindAreaByName(const VBState& state, const std::string& name)
{
    for (size_t a = 0; a < state.Areas.size(); ++a)
        if (EqualsNoCase(state.Areas[a].Name, name))
            return static_cast<int32_t>(a);
    return -1;
}

int32_t SideArea(VBContext& context, const std::string& name)
{
    VBState& state = context.State;
    if (!name.empty()) {
        const int32_t existing = FindAreaByName(state, name);
        if (existing >= 0) {
            ++state.Areas[static_cast<size_t>(existing)].References;
            VBLog(context, "  VBVisBuilder: Matched vis area '%s'to existing by name.\r\n", name.c_str());
            return existing;
        }
    }
    VBArea area;
    area.Id = static_cast<int32_t>(state.Areas.size()) + 1;
    area.References = 1;
    area.Name = name;
    state.Areas.push_back(area);
    return static_cast<int32_t>(state.Areas.size() - 1);
}

} // namespace

size_t FillFromPolygons(VBState& state, const std::vector<int32_t>& seeds, int32_t area, std::vector<int32_t>* assigned)
{
    std::vector<int32_t> stack;
    size_t peak = 0;
    for (const int32_t seed : seeds)
        if (state.Polygons[static_cast<size_t>(seed)].Area < 0)
            stack.push_back(seed);
    VBArea& target = state.Areas[static_cast<size_t>(area)];
    while (!stack.empty()) {
        peak = std::max(peak, stack.size());
        const int32_t number = stack.back();
        stack.pop_back();
        VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
        if (polygon.Area >= 0)
            continue;
        polygon.Area = area;
        polygon.Sequence = state.SequenceCounter++;
        ++target.Elements;
        if (assigned != nullptr)
            assigned->push_back(number);
        const auto p = static_cast<size_t>(number);
        if (p + 1 >= state.ConnectionStart.size())
            continue;
        for (uint32_t k = state.ConnectionStart[p]; k < state.ConnectionStart[p + 1]; ++k) {
            const int32_t next = state.ConnectionTargets[k];
            if (state.Polygons[static_cast<size_t>(next)].Area < 0)
                stack.push_back(next);
        }
    }
    return peak;
}

void FloodFillAreas(VBContext& context)
{
    VBState& state = context.State;
    size_t peak = 0;
    for (size_t p = 0; p < state.Portals.size(); ++p) {
        const VBPortal& portal = *context.Portals[p];
        VBLog(context, "  VBVisBuilder: Filling from portal %i (%s);\r\n", static_cast<int>(p), portal.Name.c_str());
        for (const bool front : {true, false}) {
            const int32_t area = SideArea(context, front ? portal.FrontName : portal.BackName);
            VBPortalState& side = state.Portals[p];
            (front ? side.FrontArea : side.BackArea) = area;
            peak = std::max(peak, FillFromPolygons(state, front ? side.FrontTouching : side.BackTouching, area));
            const VBArea& filled = state.Areas[static_cast<size_t>(area)];
            VBLog(context, "    VBVisBuilder: Area: %i Elements: %i Refs: %i Name: %s \r\n", filled.Id, filled.Elements,
                  filled.References, filled.Name.c_str());
        }
    }
    const auto empty = std::count_if(state.Areas.begin(), state.Areas.end(), [](const VBArea& a) { return a.Elements == 0; });
    VBLog(context, "  VBVisBuilder: %i vis areas are empty. \r\n", static_cast<int>(empty));
    const size_t blocks = (peak + StackBlockEntries - 1) / StackBlockEntries;
    VBLog(context, "  VBVisBuilder: Peak memory used for floodfilling stack: %ik; \r\n",
          static_cast<int>(blocks * StackBlockEntries * 8 / 1024));
    const auto assigned = std::count_if(state.List.begin(), state.List.end(),
                                        [&](int32_t n) { return state.Polygons[static_cast<size_t>(n)].Area >= 0; });
    VBLog(context, "  VBVisBuilder: %i (of %i) polygons assigned by floodfilling.;  \r\n", static_cast<int>(assigned),
          static_cast<int>(state.List.size()));
}
