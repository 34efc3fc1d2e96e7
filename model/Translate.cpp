#include "model/Translate.h"

#include "model/VMWorld.h"

#include <memory>
#include <vector>

namespace {

void Offset(float point[3], const float offset[3])
{
    for (int axis = 0; axis < 3; ++axis)
        point[axis] += offset[axis];
}

void OffsetCorners(const std::vector<std::unique_ptr<VMVertex>>& corners, const float offset[3])
{
    for (const std::unique_ptr<VMVertex>& corner : corners)
        Offset(corner->Position, offset);
}

} // namespace

int Translate(VMWorld& world, const float offset[3])
{
    Offset(world.Bounds.Min, offset);
    Offset(world.Bounds.Max, offset);
    for (VMVertex* vertex : world.Vertices)
        if (vertex != nullptr)
            Offset(vertex->Position, offset);
    for (VMLight* light : world.Lights)
        if (light != nullptr)
            Offset(light->Position, offset);
    for (VMVisPortal* portal : world.Portals)
        if (portal != nullptr)
            OffsetCorners(portal->Corners, offset);
    for (VMVisAntiPortal* antiPortal : world.AntiPortals)
        if (antiPortal != nullptr)
            OffsetCorners(antiPortal->Corners, offset);

    int result = 0;
    for (VMVisArea* area : world.VisAreas) {
        if (area == nullptr)
            continue;
        Offset(area->Box.Min, offset);
        Offset(area->Box.Max, offset);
        if (world.RebuildBoxPlanes(*area) != 0)
            result = -301;
    }
    return result;
}
