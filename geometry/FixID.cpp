#include "geometry/FixID.h"

#include "geometry/ExactPositionGroups.h"
#include "model/VMWorld.h"
#include "report/GeometryLog.h"

#include <cstddef>
#include <new>

namespace {

void MarkControlVertices(VMWorld& world)
{
    for (VMVertex* vertex : world.Vertices) {
        if (vertex)
            vertex->State = 0;
    }
    for (VMPatch* patch : world.Patches) {
        for (VMVertex* vertex : patch->Corners) {
            if (vertex)
                vertex->State = 2;
        }
    }
    for (VMHeightfield* heightfield : world.Heightfields) {
        for (VMVertex* vertex : heightfield->Corners) {
            if (vertex)
                vertex->State = 3;
        }
    }
}

// A box query of radius around a vertex of a fresh tree finds exactly the vertices at its
// position, so each group of equal positions links to its first free member; the members
// before it (control vertices and heightfield corners) stay unlinked.
int LinkGroups(VMWorld& world, const ExactPositionGroups& groups)
{
    const int count = world.Vertices.Count();
    int links = 0;
    for (int i = 0; i < count; ++i) {
        if (groups.First(i) != i)
            continue;
        int target = i;
        while (target >= 0 && world.Vertices.Get(target)->State != 0)
            target = groups.Next(target);
        if (target < 0)
            continue;
        VMVertex* first = world.Vertices.Get(target);
        for (int member = groups.Next(target); member >= 0; member = groups.Next(member)) {
            world.Vertices.Get(member)->MergeLink = first;
            ++links;
        }
    }
    return links;
}

}

int FixID(VMWorld& world, float radius)
{
    const int count = world.Vertices.Count();
    if (count == 0)
        return 0;
    MarkControlVertices(world);

    GeometryLog("FixID: Creating a new Vertex Sorting Tree\r\n");
    for (int i = 0; i < count; ++i) {
        if (VMVertex* vertex = world.Vertices.Get(i)) {
            vertex->MergeLink = nullptr;
            vertex->Index = static_cast<uint32_t>(i);
        }
    }

    GeometryLog("FixID: Re-creating ID vertices...\r\n");
    if (!(radius >= 0.0f))
        return 0;
    try {
        const ExactPositionGroups groups(world.Vertices);
        return LinkGroups(world, groups);
    } catch (const std::bad_alloc&) {
        return -301;
    }
}
