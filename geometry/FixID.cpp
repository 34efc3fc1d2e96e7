#include "geometry/FixID.h"

#include "geometry/ExactPositionGroups.h"
#include "model/VMWorld.h"
#include "report/GeometryLog.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

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
// position, so each group of equal positions links to its lowest free member every member above
// it; the members below it (control vertices and heightfield corners) stay unlinked. Each ring is
// walked once, from its lowest member, which the ascending scan meets first.
int LinkRings(VMWorld& world, const PositionRings& rings)
{
    const int count = world.Vertices.Count();
    std::vector<uint8_t> walked(static_cast<size_t>(count), 0);
    std::vector<int> members;
    int links = 0;
    for (int lowest = 0; lowest < count; ++lowest) {
        const int next = rings.Next(lowest);
        // A vertex alone at its position links nothing; its record need not be read.
        if (next < 0 || next == lowest || walked[static_cast<size_t>(lowest)])
            continue;
        members.clear();
        int target = -1;
        int member = lowest;
        do {
            walked[static_cast<size_t>(member)] = 1;
            members.push_back(member);
            if (world.Vertices.Get(member)->State == 0 && (target < 0 || member < target))
                target = member;
            member = rings.Next(member);
        } while (member != lowest);
        if (target < 0)
            continue;
        VMVertex* first = world.Vertices.Get(target);
        for (int above : members) {
            if (above > target) {
                world.Vertices.Get(above)->MergeLink = first;
                ++links;
            }
        }
    }
    return links;
}

// Resets the vertices; false when no links are to be made.
bool PrepareLinks(VMWorld& world, float radius)
{
    if (world.Vertices.IsEmpty())
        return false;
    ResetVertices(world);
    GeometryLog("FixID: Creating a new Vertex Sorting Tree\r\n");
    GeometryLog("FixID: Re-creating ID vertices...\r\n");
    return radius >= 0.0f;
}

}

int FixID(VMWorld& world, float radius)
{
    if (!PrepareLinks(world, radius))
        return 0;
    try {
        // Duplicates are gone by now: nearly every vertex has a position of its own.
        const auto count = static_cast<size_t>(world.Vertices.Count());
        return LinkRings(world, ExactPositionGroups(world.Vertices, count).Rings());
    } catch (const std::bad_alloc&) {
        return -301;
    }
}

int FixID(VMWorld& world, float radius, const PositionRings& rings)
{
    if (!PrepareLinks(world, radius))
        return 0;
    try {
        return LinkRings(world, rings);
    } catch (const std::bad_alloc&) {
        return -301;
    }
}
