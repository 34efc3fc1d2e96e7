#include "base/TextUtil.h"
#include "geometry/visibility/VBGeometry.h"
#include "geometry/visibility/VBStages.h"
#include "model/VMWorld.h"

#include <array>
#include <cmath>

namespace {

bool HasElements(const VBState& state, int32_t area)
{
    return area >= 0 && state.Areas[static_cast<size_t>(area)].Elements > 0;
}

VMVisArea* RecordOf(const VBState& state, int32_t area)
{
    return HasElements(state, area) ? state.Areas[static_cast<size_t>(area)].Record : nullptr;
}

void ExportPortals(VBContext& context, VMWorld& world)
{
    VBState& state = context.State;
    for (size_t p = 0; p < state.Portals.size(); ++p) {
        const VBPortalState& portal = state.Portals[p];
        if (portal.Bad)
            continue;
        const VBPortal& drawn = *context.Portals[p];
        const std::array<int32_t, 2> sides {portal.FrontArea, portal.BackArea};
        std::array<VMVisPortal*, 2> records {nullptr, nullptr};
        for (int side = 0; side < 2; ++side) {
            if (RecordOf(state, sides[side]) == nullptr)
                continue;
            std::unique_ptr<VMVisPortal> record = VMWorld::NewPortal(static_cast<int>(drawn.Corners.size()));
            if (!record)
                continue;
            const size_t count = drawn.Corners.size();
            for (size_t k = 0; k < count; ++k) {
                // Seen from the back, the corners run the other way round, so that each record's
                // normal points into the area it belongs to.
                const VBVector& corner = drawn.Corners[side == 0 ? k : count - 1 - k];
                for (int axis = 0; axis < 3; ++axis)
                    record->Corners[k]->Position[axis] = static_cast<float>(corner[axis]);
            }
            record->Name = drawn.Name;
            const int32_t other = sides[1 - side];
            record->LeadsOutside = other >= 0 && !HasElements(state, other) &&
                                           EqualsNoCase(state.Areas[static_cast<size_t>(other)].Name, "outside")
                                       ? 1
                                       : 0;
            record->Front = RecordOf(state, sides[side]);
            record->Back = RecordOf(state, other);
            record->Front->Portals.Add(record.get());
            records[side] = record.get();
            world.Portals.Add(std::move(record));
        }
        if (records[0] != nullptr && records[1] != nullptr) {
            records[0]->Opposite = records[1];
            records[1]->Opposite = records[0];
        }
    }
}

void PlaceItem(VBContext& context, size_t itemIndex)
{
    VBState& state = context.State;
    const VBPlacementItem& item = *context.Items[itemIndex];
    std::vector<int32_t>& placed = state.ItemAreas[itemIndex];
    if (!item.AreaName.empty()) {
        for (size_t a = 0; a < state.Areas.size() && placed.empty(); ++a)
            if (HasElements(state, static_cast<int32_t>(a)) && EqualsNoCase(state.Areas[a].Name, item.AreaName))
                placed.push_back(static_cast<int32_t>(a));
        if (placed.empty())
            VBLog(context, "  VBVisBuilder: Couldn't force item into non existing vis area '%s';\r\n",
                  item.AreaName.c_str());
    } else {
        const VBVector centre = item.Box.Centre();
        int32_t nearest = -1;
        double nearestDistance = INFINITY;
        for (size_t a = 0; a < state.Areas.size(); ++a) {
            if (!HasElements(state, static_cast<int32_t>(a)))
                continue;
            const VBBox& box = state.Areas[a].Box;
            if (box.Contains(centre))
                placed.push_back(static_cast<int32_t>(a));
            const double distance = DistanceToBox(box, centre);
            if (distance < nearestDistance) {
                nearestDistance = distance;
                nearest = static_cast<int32_t>(a);
            }
        }
        if (placed.empty() && (item.Flags & VBPlacementItem::PlaceInNearestArea) != 0 && nearest >= 0)
            placed.push_back(nearest);
    }
    for (const int32_t area : placed) {
        VBArea& target = state.Areas[static_cast<size_t>(area)];
        if (item.AntiPortal != nullptr && target.Record != nullptr)
            target.Record->AntiPortals.Add(item.AntiPortal);
        target.Box.Grow(item.Box);
    }
}

} // namespace

void ExportVisibility(VBContext& context, VMWorld& world)
{
    VBState& state = context.State;
    if ((state.List.empty() && context.Items.empty()) || state.Areas.empty())
        return;
    VBLog(context, "  VBVisBuilder: Exporting visibility to world;\r\n");

    for (VBArea& area : state.Areas) {
        area.Record = nullptr;
        if (area.Elements <= 0)
            continue;
        std::unique_ptr<VMVisArea> record = VMWorld::NewVisArea();
        if (!record)
            continue;
        record->Name = area.Name;
        area.Record = record.get();
        world.VisAreas.Add(std::move(record));
    }
    ExportPortals(context, world);

    for (const int32_t number : state.List) {
        const VBPolygon& polygon = state.Polygons[static_cast<size_t>(number)];
        VMVisArea* record = RecordOf(state, polygon.Area);
        if (record != nullptr && polygon.Primitive != nullptr)
            record->Link(*polygon.Primitive);
    }

    state.ItemAreas.assign(context.Items.size(), {});
    for (size_t item = 0; item < context.Items.size(); ++item)
        PlaceItem(context, item);

    for (VBArea& area : state.Areas) {
        if (area.Record == nullptr)
            continue;
        for (int axis = 0; axis < 3; ++axis) {
            area.Record->Box.Min[axis] = static_cast<float>(area.Box.Min[axis]);
            area.Record->Box.Max[axis] = static_cast<float>(area.Box.Max[axis]);
        }
        world.RebuildBoxPlanes(*area.Record);
    }
}
