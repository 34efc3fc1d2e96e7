#include "geometry/AdjustTriangles.h"

#include "geometry/FixID.h"
#include "geometry/FoldExactDuplicates.h"
#include "geometry/RemoveDegeneratePolygons.h"
#include "geometry/RemoveTriLists.h"
#include "geometry/SplitPolygon.h"
#include "geometry/VertexSearchTree.h"
#include "geometry/WeldVertices.h"
#include "model/VMWorld.h"
#include "report/GeometryLog.h"
#include "report/Progress.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace {

constexpr int MaxPolygonCorners = 32;

enum VertexState : uint32_t {
    Free = 0,
    Used = 1,
    PatchControl = 2,
    HeightfieldCorner = 3,
};

bool HasPrimitives(const VMWorld& world)
{
    return !world.Polygons.IsEmpty() || !world.TriLists.IsEmpty() || !world.Patches.IsEmpty() ||
           !world.Heightfields.IsEmpty();
}

template <class List>
void AssignMissingMaterial(const List& primitives, VMMaterial* material)
{
    for (auto* primitive : primitives) {
        if (primitive->Material() == nullptr)
            primitive->SetMaterial(material);
    }
}

template <class List>
void SetCornerStates(const List& primitives, uint32_t state)
{
    for (const auto* primitive : primitives) {
        for (VMVertex* vertex : primitive->Corners) {
            if (vertex)
                vertex->State = state;
        }
    }
}

void SetVertexStates(VMWorld& world, uint32_t state)
{
    for (VMVertex* vertex : world.Vertices)
        vertex->State = state;
}

// A control vertex that a polygon (or an earlier primitive) already uses gets a copy of its
// own, so that sharing it later cannot move a polygon corner.
template <class List>
int SeparateSharedCorners(VMWorld& world, const List& primitives)
{
    for (auto* primitive : primitives) {
        for (VMVertex*& vertex : primitive->Corners) {
            if (vertex == nullptr || vertex->State == Free)
                continue;
            std::unique_ptr<VMVertex> copy = VMWorld::NewVertexCopy(*vertex);
            if (!copy)
                return -301;
            VMVertex* shared = copy.get();
            if (world.Vertices.Add(copy.release()) != 0)
                return -301;
            vertex = shared;
        }
    }
    return 0;
}

void LinkPolygonCornerMaterials(VMWorld& world)
{
    for (VMPolygon* polygon : world.Polygons) {
        const int linked = polygon->CornerCount() < 3 ? polygon->CornerCount() : 3;
        for (int k = 0; k < linked; ++k)
            polygon->Corners[static_cast<size_t>(k)]->MaterialLink = polygon->Material();
    }
}

void NumberVertices(VMWorld& world)
{
    for (int i = 0; i < world.Vertices.Count(); ++i)
        world.Vertices.Get(i)->Index = static_cast<uint32_t>(i);
}

VMVertex* EndOfChain(VMVertex* vertex)
{
    VMVertex* end = vertex;
    while (end->MergeLink != nullptr)
        end = end->MergeLink;
    // Shortening the chain keeps long duplicate chains linear; the links are scratch until FixID.
    while (vertex->MergeLink != nullptr) {
        VMVertex* next = vertex->MergeLink;
        vertex->MergeLink = end;
        vertex = next;
    }
    return end;
}

void ReplaceReferences(VMWorld& world)
{
    for (VMPolygon* polygon : world.Polygons) {
        for (VMVertex*& corner : polygon->Corners) {
            corner = EndOfChain(corner);
            corner->MaterialLink = polygon->Material();
        }
    }
}

// A control vertex not yet referenced moves onto the first free, already referenced vertex in
// the box of half-width epsVert around it; the tree's query order decides which one.
template <class List>
void ShareControlVertices(const List& primitives, VertexSearchTree& tree, float epsVert, const char* progress)
{
    const int count = primitives.Count();
    for (int index = 0; index < count; ++index) {
        if (index % 1024 == 0) {
            GeometryLog(progress, index, count);
            PhaseProgress(index, count);
        }
        auto* primitive = primitives.Get(index);
        for (VMVertex*& vertex : primitive->Corners) {
            if (vertex == nullptr || vertex->MaterialLink != nullptr || vertex->State != Free)
                continue;
            VMVertex* shared = nullptr;
            for (VMVertex* found : tree.Query(vertex->Position, epsVert)) {
                if (found != vertex && found->MaterialLink != nullptr && found->State == Free) {
                    shared = found;
                    break;
                }
            }
            if (shared == nullptr) {
                vertex->MaterialLink = primitive->Material();
            } else {
                vertex = shared;
                shared->MaterialLink = primitive->Material();
            }
        }
    }
}

// The numbers the filled slots of a list take once its empty slots are dropped: a bit per slot
// and a running count per 64 slots, small enough to stay in cache while rings are renumbered.
class KeptNumbers {
public:
    explicit KeptNumbers(const VMOwnedList<VMVertex>& vertices)
    {
        const auto count = static_cast<size_t>(vertices.Count());
        m_bits.assign((count + 63) / 64, 0);
        m_before.assign(m_bits.size(), 0);
        for (size_t i = 0; i < count; ++i) {
            if (i % 64 == 0)
                m_before[i / 64] = m_count;
            if (vertices.Get(static_cast<int>(i)) != nullptr) {
                m_bits[i / 64] |= uint64_t{1} << (i % 64);
                ++m_count;
            }
        }
    }

    bool IsKept(size_t slot) const { return (m_bits[slot / 64] >> (slot % 64) & 1) != 0; }

    int NumberOf(size_t slot) const
    {
        const uint64_t below = m_bits[slot / 64] & ((uint64_t{1} << (slot % 64)) - 1);
        return static_cast<int>(m_before[slot / 64]) + std::popcount(below);
    }

    size_t Count() const { return m_count; }

private:
    std::vector<uint64_t> m_bits;
    std::vector<uint32_t> m_before;
    uint32_t m_count = 0;
};

// Removes the vertices no corner references, compacting the list once, and answers the position
// groups of the vertices that stay, numbered as they now stand.
PositionRings RemoveStrayVertices(VMWorld& world, const PositionRings& rings)
{
    int removed = 0;
    for (int index = world.Vertices.Count() - 1; index >= 0; --index) {
        if (index % 4096 == 0)
            GeometryLog("AdjustTri: Removing duplicate vertices (%d / %d)\r\n", index, world.Vertices.Count());
        const VMVertex* vertex = world.Vertices.Get(index);
        if (vertex == nullptr || vertex->MaterialLink != nullptr)
            continue;
        if (world.Vertices.RemoveLeaveEmpty(index) != 0)
            GeometryLog("Error: Failed to delete vertex!\r\n");
        else
            ++removed;
    }

    // Each ring keeps the vertices that stay, in the same cyclic order.
    const KeptNumbers kept(world.Vertices);
    std::vector<int> next(kept.Count());
    for (size_t slot = 0; slot < static_cast<size_t>(world.Vertices.Count()); ++slot) {
        if (!kept.IsKept(slot))
            continue;
        int member = rings.Next(static_cast<int>(slot));
        if (member >= 0) {
            while (!kept.IsKept(static_cast<size_t>(member)))
                member = rings.Next(member);
            member = kept.NumberOf(static_cast<size_t>(member));
        }
        next[static_cast<size_t>(kept.NumberOf(slot))] = member;
    }

    world.Vertices.Compact();
    GeometryLog("%i stray vertices removed\r\n", removed);
    return PositionRings(std::move(next));
}

int SplitLargePolygons(VMWorld& world)
{
    // The pieces are appended behind the sources and never exceed the limit, so one pass over
    // the original polygons suffices; sources leave empty slots that are dropped at the end.
    const int count = world.Polygons.Count();
    for (int index = 0; index < count; ++index) {
        const VMPolygon* polygon = world.Polygons.Get(index);
        if (polygon == nullptr || polygon->CornerCount() <= MaxPolygonCorners)
            continue;
        const std::unique_ptr<VMPolygon> source = world.Polygons.TakeLeaveEmpty(index);
        const int result =
            SplitPolygon(world, *source, source->Corners.data(), source->CornerCount(), 0, MaxPolygonCorners);
        if (result != 0) {
            world.Polygons.Compact();
            return result;
        }
    }
    world.Polygons.Compact();
    return 0;
}

int Adjust(VMWorld& world, float epsVert, float epsUV, bool optimizeMesh)
{
    if (!world.TriLists.IsEmpty()) {
        const int result = RemoveTriLists(world);
        if (result != 0)
            return result;
    }

    if (world.Vertices.IsEmpty())
        return HasPrimitives(world) ? -1 : 0;
    VMMaterial* firstMaterial = world.Materials.Get(0);
    if (firstMaterial == nullptr)
        return -1;
    // The passes below step through the vertex list by position.
    world.Vertices.Compact();

    AssignMissingMaterial(world.Polygons, firstMaterial);
    AssignMissingMaterial(world.Patches, firstMaterial);
    AssignMissingMaterial(world.Heightfields, firstMaterial);

    // One pass over the records, which are the bulk of the world's memory.
    for (int i = 0; i < world.Vertices.Count(); ++i) {
        VMVertex* vertex = world.Vertices.Get(i);
        vertex->State = Free;
        vertex->MergeLink = nullptr;
        vertex->MaterialLink = nullptr;
        vertex->Index = static_cast<uint32_t>(i);
    }
    // The state words are read only by the patch and heightfield steps (FixID sets its own),
    // so a world of polygons alone skips every pass over them.
    const bool hasControlVertices = !world.Patches.IsEmpty() || !world.Heightfields.IsEmpty();
    if (hasControlVertices) {
        SetCornerStates(world.Polygons, Used);
        if (int result = SeparateSharedCorners(world, world.Patches); result != 0)
            return result;
        SetCornerStates(world.Patches, Used);
        if (int result = SeparateSharedCorners(world, world.Heightfields); result != 0)
            return result;
    }

    if (!optimizeMesh) {
        LinkPolygonCornerMaterials(world);
        return 0;
    }

    GeometryLog("AdjustTri: Seeding Vertex Search Tree...\r\n");
    // Only the patch and heightfield passes depend on the tree's query order; it is built now,
    // over the positions before welding, because that is the tree those passes are defined on.
    VertexSearchTree tree;
    if (hasControlVertices) {
        if (int result = tree.Build(world.Vertices.Count(), world.Vertices); result != 0)
            return result;
    }
    // The corner copies made for control vertices still carry their sources' numbers.
    if (hasControlVertices)
        NumberVertices(world);

    const PositionRings rings = WeldVertices(world.Vertices, epsVert, epsUV);

    const DegenerateCounts degenerate = RemoveDegeneratePolygons(world, epsVert);
    GeometryLog("AdjustTriangles: %i degenerate triangles removed\r\n",
                degenerate.Area + degenerate.Normal + degenerate.Multi);
    GeometryLog("  (%i Area, %i Normal, %i Multi, %i NonPlanar )\r\n", degenerate.Area, degenerate.Normal,
                degenerate.Multi, 0);

    const int links = FoldExactDuplicates(world, rings, epsVert, epsUV);
    GeometryLog("AdjustTriangles: %i exact matches to kill\r\n", links);
    GeometryLog("AdjustTriangles: Replacing references in polygons.\r\n");
    ReplaceReferences(world);

    if (hasControlVertices) {
        SetVertexStates(world, Free);
        SetCornerStates(world.Polygons, Used);
        SetCornerStates(world.Heightfields, HeightfieldCorner);
        ShareControlVertices(world.Patches, tree, epsVert, "AdjustTri: Finding duplicate patchices (%d / %d)\r\n");

        SetVertexStates(world, Free);
        SetCornerStates(world.Polygons, Used);
        SetCornerStates(world.Patches, PatchControl);
        ShareControlVertices(world.Heightfields, tree, epsVert,
                             "AdjustTri: Finding duplicate hightfieldices (%d / %d)\r\n");
        tree.Destroy();
    }

    const PositionRings keptRings = RemoveStrayVertices(world, rings);

    GeometryLog("AdjustTri: Finding ID vertices\r\n");
    const int idCount = FixID(world, epsVert, keptRings);
    if (idCount < 0)
        return idCount;

    GeometryLog("AdjustTri: Tesselating too big polygons\r\n");
    if (int result = SplitLargePolygons(world); result != 0)
        return result;

    world.Enumerate();
    GeometryLog("Triangles adjusted... %d ID vertices generated\r\n", idCount);
    return 0;
}

}

int AdjustTriangles(VMWorld& world, float epsVert, float epsUV, bool optimizeMesh)
{
    try {
        return Adjust(world, epsVert, epsUV, optimizeMesh);
    } catch (const std::bad_alloc&) {
        return -301;
    }
}
