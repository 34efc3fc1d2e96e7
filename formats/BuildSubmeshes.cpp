#include "formats/BuildSubmeshes.h"

#include "model/VMMaterial.h"
#include "model/VMWorld.h"

#include <algorithm>
#include <climits>
#include <vector>

namespace {

struct PolygonBatch {
    VMSubmesh* Submesh;
    const VMMaterial* Material;
    int32_t Group;
    std::vector<VMVisArea*> Areas;
    int RenderCorners = 0;
    int ShadowCorners = 0;
};

bool IsWorldVertex(const VMWorld& world, const VMVertex* vertex)
{
    return vertex != nullptr && vertex->Index < static_cast<uint32_t>(world.Vertices.Count()) &&
           world.Vertices[static_cast<int>(vertex->Index)] == vertex;
}

// Adds one triangle to the lists its primitive belongs in.
bool AddTriangle(const VMWorld& world, const VMPrimitive& primitive, VMVertex* a, VMVertex* b, VMVertex* c,
                 VMSubmesh& submesh)
{
    if (!IsWorldVertex(world, a) || !IsWorldVertex(world, b) || !IsWorldVertex(world, c))
        return false;
    if (primitive.Visible != 0) {
        submesh.RenderIndices.Add(a);
        submesh.RenderIndices.Add(b);
        submesh.RenderIndices.Add(c);
    }
    if (primitive.CastShadows != 0) {
        for (VMVertex* corner : {a, b, c}) {
            const VMVertex* target = WeldTarget(corner);
            if (!IsWorldVertex(world, target))
                return false;
            submesh.ShadowIndices.Add(const_cast<VMVertex*>(target));
        }
    }
    return true;
}

bool AddTriList(const VMWorld& world, const VMTriList& triList, VMSubmesh& submesh)
{
    for (int t = 0; t < triList.TriangleCount(); ++t) {
        const auto corner = triList.Corners.begin() + 3 * t;
        if (!AddTriangle(world, triList, corner[0], corner[1], corner[2], submesh))
            return false;
    }
    return true;
}

bool AddPolygon(const VMWorld& world, const VMPolygon& polygon, VMSubmesh& submesh)
{
    for (int k = 0; k + 2 < polygon.CornerCount(); ++k) {
        if (!AddTriangle(world, polygon, polygon.Corners[0], polygon.Corners[static_cast<size_t>(k) + 1],
                         polygon.Corners[static_cast<size_t>(k) + 2], submesh))
            return false;
    }
    return true;
}

bool SameAreas(const std::vector<VMVisArea*>& batchAreas, const VPListT<VMVisArea>& owners)
{
    if (static_cast<int>(batchAreas.size()) != owners.Count())
        return false;
    return std::all_of(owners.begin(), owners.end(), [&](const VMVisArea* area) {
        return std::find(batchAreas.begin(), batchAreas.end(), area) != batchAreas.end();
    });
}

VMSubmesh* AppendSubmesh(VMWorld& world, VMMaterial* material, int32_t group, const VPListT<VMVisArea>& areas)
{
    auto submesh = VMWorld::NewSubmesh();
    if (!submesh)
        return nullptr;
    submesh->Material = material;
    submesh->Group = group;
    submesh->Area = areas.IsEmpty() ? nullptr : areas[0];
    VMSubmesh* record = submesh.get();
    if (world.Submeshes.Add(std::move(submesh)) != 0)
        return nullptr;
    for (VMVisArea* area : areas)
        area->Submeshes.Add(record);
    return record;
}

void GrowBox(VMBoundingBox& box, const VPListT<VMVertex>& vertices)
{
    for (const VMVertex* vertex : vertices)
        box.Grow(vertex->Position);
}

void ClearSubmeshes(VMWorld& world)
{
    world.Submeshes.Clear();
    for (VMVisArea* area : world.VisAreas) {
        if (area != nullptr)
            area->Submeshes.Clear();
    }
}

bool CollectSubmeshes(VMWorld& world)
{
    for (VMTriList* triList : world.TriLists) {
        if (triList == nullptr)
            continue;
        VMSubmesh* submesh = AppendSubmesh(world, triList->Material(), static_cast<int32_t>(triList->Group), triList->Owners);
        if (submesh == nullptr)
            return false;
        submesh->RenderIndices.Reserve(triList->TriangleCount() * 3);
        submesh->ShadowIndices.Reserve(triList->TriangleCount() * 3);
        if (!AddTriList(world, *triList, *submesh))
            return false;
    }

    // Batches are found first and filled afterwards, so that each list is allocated once.
    std::vector<PolygonBatch> batches;
    std::vector<int> batchOf(static_cast<size_t>(world.Polygons.Count()), -1);
    for (int p = 0; p < world.Polygons.Count(); ++p) {
        const VMPolygon* polygon = world.Polygons[p];
        if (polygon == nullptr)
            continue;
        const VMMaterial* material = polygon->Material();
        if (material != nullptr && material->Kind == HiddenMaterialKind)
            continue;
        const int32_t group = static_cast<int32_t>(polygon->Group);
        auto batch = std::find_if(batches.begin(), batches.end(), [&](const PolygonBatch& candidate) {
            return candidate.Material == material && candidate.Group == group && SameAreas(candidate.Areas, polygon->Owners);
        });
        if (batch == batches.end()) {
            VMSubmesh* submesh = AppendSubmesh(world, polygon->Material(), group, polygon->Owners);
            if (submesh == nullptr)
                return false;
            batches.push_back({submesh, material, group, std::vector<VMVisArea*>(polygon->Owners.begin(), polygon->Owners.end())});
            batch = batches.end() - 1;
        }
        batchOf[static_cast<size_t>(p)] = static_cast<int>(batch - batches.begin());
        const int corners = 3 * std::max(polygon->CornerCount() - 2, 0);
        batch->RenderCorners += polygon->Visible != 0 ? corners : 0;
        batch->ShadowCorners += polygon->CastShadows != 0 ? corners : 0;
    }
    for (PolygonBatch& batch : batches) {
        batch.Submesh->RenderIndices.Reserve(batch.RenderCorners);
        batch.Submesh->ShadowIndices.Reserve(batch.ShadowCorners);
    }
    for (int p = 0; p < world.Polygons.Count(); ++p) {
        const int batch = batchOf[static_cast<size_t>(p)];
        if (batch >= 0 && !AddPolygon(world, *world.Polygons[p], *batches[static_cast<size_t>(batch)].Submesh))
            return false;
    }
    return true;
}

void VertexRange(const VPListT<VMVertex>& vertices, int32_t& first, int32_t& last)
{
    if (vertices.IsEmpty()) {
        first = 0;
        last = -1;
        return;
    }
    uint32_t lowest = UINT32_MAX;
    uint32_t highest = 0;
    for (const VMVertex* vertex : vertices) {
        lowest = std::min(lowest, vertex->Index);
        highest = std::max(highest, vertex->Index);
    }
    first = static_cast<int32_t>(lowest);
    last = static_cast<int32_t>(highest);
}

} // namespace

const VMVertex* WeldTarget(const VMVertex* vertex)
{
    // Links may chain; a cycle, which no pass makes, must not hang the writer.
    const VMVertex* slow = vertex;
    while (vertex != nullptr && vertex->MergeLink != nullptr) {
        vertex = vertex->MergeLink;
        if (vertex->MergeLink == nullptr)
            break;
        vertex = vertex->MergeLink;
        slow = slow->MergeLink;
        if (vertex == slow)
            break;
    }
    return vertex;
}

void UpdateVertexRanges(VMSubmesh& submesh)
{
    VertexRange(submesh.RenderIndices, submesh.RenderFirstVertex, submesh.RenderLastVertex);
    VertexRange(submesh.ShadowIndices, submesh.ShadowFirstVertex, submesh.ShadowLastVertex);
}

void NumberSubmeshes(VMWorld& world)
{
    int32_t renderFirst = 0;
    int32_t shadowFirst = 0;
    for (int i = 0; i < world.Submeshes.Count(); ++i) {
        VMSubmesh& submesh = *world.Submeshes[i];
        submesh.Number = i;
        submesh.RenderFirstIndex = renderFirst;
        submesh.ShadowFirstIndex = shadowFirst;
        renderFirst += submesh.RenderIndexCount;
        shadowFirst += std::max(submesh.ShadowIndexCount, 0);
    }
}

int BuildSubmeshes(VMWorld& world)
{
    for (int i = 0; i < world.Vertices.Count(); ++i) {
        if (world.Vertices[i] != nullptr)
            world.Vertices[i]->Index = static_cast<uint32_t>(i);
    }
    ClearSubmeshes(world);
    if (!CollectSubmeshes(world)) {
        ClearSubmeshes(world);
        return -1;
    }
    for (VMSubmesh* submesh : world.Submeshes) {
        submesh->RenderIndexCount = submesh->RenderIndices.Count();
        submesh->ShadowIndexCount = submesh->ShadowIndices.Count();
        UpdateVertexRanges(*submesh);
        GrowBox(submesh->Box, submesh->RenderIndices);
        GrowBox(submesh->Box, submesh->ShadowIndices);
    }
    NumberSubmeshes(world);
    return 0;
}
