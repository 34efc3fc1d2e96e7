#include "model/ScaleWorld.h"

#include "model/VMWorld.h"

#include <memory>
#include <vector>

namespace {

void Multiply(float point[3], float factor)
{
    for (int axis = 0; axis < 3; ++axis)
        point[axis] *= factor;
}

void ScaleCorners(const std::vector<std::unique_ptr<VMVertex>>& corners, float factor)
{
    for (const std::unique_ptr<VMVertex>& corner : corners)
        Multiply(corner->Position, factor);
}

} // namespace

int ScaleWorld(VMWorld& world, float factor)
{
    for (VMVertex* vertex : world.Vertices)
        if (vertex != nullptr)
            Multiply(vertex->Position, factor);
    for (VMVisPortal* portal : world.Portals)
        if (portal != nullptr)
            ScaleCorners(portal->Corners, factor);
    for (VMVisAntiPortal* antiPortal : world.AntiPortals)
        if (antiPortal != nullptr)
            ScaleCorners(antiPortal->Corners, factor);

    int result = 0;
    for (VMVisArea* area : world.VisAreas) {
        if (area == nullptr)
            continue;
        Multiply(area->Box.Min, factor);
        Multiply(area->Box.Max, factor);
        if (world.RebuildBoxPlanes(*area) != 0)
            result = -301;
    }
    world.Shapes.Scale(factor);
    return result;
}
