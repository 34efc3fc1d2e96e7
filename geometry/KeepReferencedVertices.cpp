#include "geometry/KeepReferencedVertices.h"

#include "model/VMWorld.h"
#include "report/GeometryLog.h"

#include <new>
#include <vector>

namespace {

template <class Primitive>
void AppendCorners(const VMOwnedList<Primitive>& primitives, std::vector<VMVertex*>& survivors)
{
    for (const Primitive* primitive : primitives) {
        if (primitive == nullptr)
            continue;
        for (VMVertex* vertex : primitive->Corners) {
            if (vertex == nullptr || vertex->Index == ReferencedVertexMark)
                continue;
            vertex->Index = ReferencedVertexMark;
            survivors.push_back(vertex);
        }
    }
}

} // namespace

int KeepReferencedVertices(VMWorld& world)
{
    std::vector<VMVertex*> survivors;
    try {
        survivors.reserve(static_cast<size_t>(world.Vertices.Count()));
    } catch (const std::bad_alloc&) {
        return -301;
    }
    // The mark must not be mistaken for a stale index from the last enumeration.
    for (VMVertex* vertex : world.Vertices)
        if (vertex != nullptr)
            vertex->Index = 0;

    GeometryLog("Survival of poly verts...\r\n");
    AppendCorners(world.Polygons, survivors);
    GeometryLog("Survival of strip verts...\r\n");
    AppendCorners(world.TriLists, survivors);
    GeometryLog("Survival of patch verts...\r\n");
    AppendCorners(world.Patches, survivors);
    AppendCorners(world.Heightfields, survivors);

    // The unreferenced vertices are freed with previous; the list keeps its capacity, so adding
    // the survivors back cannot fail.
    std::vector<std::unique_ptr<VMVertex>> previous = world.Vertices.TakeAll();
    for (std::unique_ptr<VMVertex>& vertex : previous)
        if (vertex && vertex->Index == ReferencedVertexMark)
            vertex.release();
    for (VMVertex* vertex : survivors)
        world.Vertices.Add(vertex);
    return 0;
}
