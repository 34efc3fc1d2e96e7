#include "geometry/visibility/VBVisBuilder.h"

#include "geometry/visibility/VBState.h"
#include "model/VMWorld.h"

VBVisBuilder::VBVisBuilder() : m_state(std::make_unique<VBState>()) {}

VBVisBuilder::~VBVisBuilder() = default;

void VBVisBuilder::SetLogger(VGLogger* logger) { m_logger = logger; }

VBPortal& VBVisBuilder::AddPortal(int cornerCount)
{
    auto portal = std::make_unique<VBPortal>();
    portal->Corners.resize(static_cast<size_t>(std::max(cornerCount, 0)));
    m_portals.push_back(std::move(portal));
    return *m_portals.back();
}

VBPlacementItem& VBVisBuilder::AddItem()
{
    m_items.push_back(std::make_unique<VBPlacementItem>());
    return *m_items.back();
}

void VBVisBuilder::SetPolygons(const VMWorld& world)
{
    VBState& state = *m_state;
    state.Polygons.clear();
    state.Corners.clear();
    state.List.clear();
    state.Polygons.reserve(static_cast<size_t>(world.Polygons.Count()));
    for (VMPolygon* polygon : world.Polygons) {
        if (polygon == nullptr)
            continue;
        VBPolygon copy;
        copy.FirstCorner = static_cast<uint32_t>(state.Corners.size());
        copy.CornerCount = static_cast<uint32_t>(polygon->Corners.size());
        copy.Primitive = polygon;
        for (const VMVertex* corner : polygon->Corners)
            state.Corners.push_back({corner->Position[0], corner->Position[1], corner->Position[2]});
        copy.ListIndex = static_cast<int32_t>(state.List.size());
        state.List.push_back(static_cast<int32_t>(state.Polygons.size()));
        state.Polygons.push_back(copy);
    }
}

int VBVisBuilder::Build(int mode, bool /*debug*/, const std::string& /*debugPath*/, VReport& /*report*/)
{
    if (m_state->List.empty() || m_portals.empty() || mode == VBModeOff)
        return 1;
    m_state->Mode = mode;
    return 1;
}

void VBVisBuilder::ExportToWorld(VMWorld& /*world*/) {}

void VBVisBuilder::Clear()
{
    m_portals.clear();
    m_items.clear();
    m_state = std::make_unique<VBState>();
}
