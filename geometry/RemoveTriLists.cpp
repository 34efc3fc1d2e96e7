#include "geometry/RemoveTriLists.h"

#include "model/VMWorld.h"

#include <memory>

namespace {

int CutIntoTriangles(VMWorld& world, const VMTriList& triList)
{
    const auto& corners = triList.Corners;
    for (size_t i = 0; i + 2 < corners.size(); i += 3) {
        std::unique_ptr<VMPolygon> triangle = VMWorld::NewTriangle(corners[i], corners[i + 1], corners[i + 2]);
        if (!triangle)
            return -301;
        triangle->CopyAttributesFrom(triList);
        triangle->Group = triList.Group;
        VMPolygon* added = triangle.get();
        if (world.Polygons.Add(std::move(triangle)) != 0)
            return -301;
        for (VMVisArea* area : triList.Owners)
            if (area->Link(*added) != 0)
                return -301;
    }
    return 0;
}

void DropPolygonsFrom(VMWorld& world, int firstIndex)
{
    while (world.Polygons.Count() > firstIndex)
        world.Polygons.Remove(world.Polygons.Count() - 1);
}

// The areas' tri-list lists are emptied in one go rather than searched once per destroyed
// tri-list; the tri-lists still in the world are listed again.
void RelistTriLists(VMWorld& world)
{
    world.TriLists.Compact();
    for (VMVisArea* area : world.VisAreas)
        if (area != nullptr)
            area->ClearTriLists();
    for (VMTriList* triList : world.TriLists)
        for (VMVisArea* area : triList->Owners)
            area->AddTriList(triList);
}

} // namespace

int RemoveTriLists(VMWorld& world)
{
    if (world.TriLists.IsEmpty())
        return 0;

    for (int index = 0; index < world.TriLists.Count(); ++index) {
        VMTriList* triList = world.TriLists.Get(index);
        if (triList == nullptr)
            continue;
        const int polygonCount = world.Polygons.Count();
        if (CutIntoTriangles(world, *triList) != 0) {
            DropPolygonsFrom(world, polygonCount);
            RelistTriLists(world);
            return -301;
        }
        triList->Owners.Clear();
        world.TriLists.RemoveLeaveEmpty(index);
    }
    RelistTriLists(world);
    world.Enumerate();
    return 0;
}
