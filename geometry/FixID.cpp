#include "geometry/FixID.h"

#include "geometry/ExactPositionGroups.h"
#include "model/VMWorld.h"
#include "report/GeometryLog.h"

#include <cstddef>
#include <new>

namespace {

// Unlinks and numbers every vertex and marks the control vertices, which never take a link.
void ResetVertices(VMWorld& world)
{
    const int count = world.Vertices.Count();
    for (int i = 0; i < count; ++i) {
        if (VMVertex* vertex = world.Vertices.Get(i)) {
            vertex->State = 0;
            vertex->MergeLink = nullptr;
            vertex->Index = static_cast<uint32_t>(i);
        }
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
    for (int highest = 0; highest < count; ++highest) {
        if (!groups.IsHighest(highest))
            continue;
        const int lowest = groups.Next(highest);
        int target = lowest;
        while (world.Vertices.Get(target)->State != 0 && target != highest)
            target = groups.Next(target);
        if (world.Vertices.Get(target)->State != 0)
            continue;
        VMVertex* first = world.Vertices.Get(target);
        for (int member = target; member != highest;) {
            member = groups.Next(member);
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
    ResetVertices(world);
    GeometryLog("FixID: Creating a new Vertex Sorting Tree\r\n");
    GeometryLog("FixID: Re-creating ID vertices...\r\n");
    if (!(radius >= 0.0f))
        return 0;
    try {
        // Duplicates are gone by now: nearly every vertex has a position of its own.
        const ExactPositionGroups groups(world.Vertices, static_cast<size_t>(count));
        return LinkGroups(world, groups);
    } catch (const std::bad_alloc&) {
        return -301;
    }
}
