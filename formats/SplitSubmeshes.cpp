#include "formats/SplitSubmeshes.h"

#include "formats/BuildSubmeshes.h"
#include "formats/StaticMeshChunks.h"
#include "model/VMWorld.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace {

bool NeedsReordering(const VMWorld& world)
{
    return std::any_of(world.Submeshes.begin(), world.Submeshes.end(), [](const VMSubmesh* submesh) {
        return submesh->ShadowIndexCount > MaxShadowRange ||
               submesh->ShadowLastVertex - submesh->ShadowFirstVertex > MaxShadowRange;
    });
}

void CopySlice(const VPListT<VMVertex>& source, int first, int count, VPListT<VMVertex>& target)
{
    target.Reserve(count);
    for (int i = first; i < first + count; ++i)
        target.Add(source[i]);
}

std::vector<std::unique_ptr<VMSubmesh>> Slice(const VMSubmesh& whole)
{
    std::vector<std::unique_ptr<VMSubmesh>> pieces;
    for (int first = 0; first < whole.ShadowIndexCount; first += SplitIndexCount) {
        const int count = std::min(SplitIndexCount, whole.ShadowIndexCount - first);
        auto piece = VMWorld::NewSubmesh();
        if (!piece)
            return {};
        piece->Material = whole.Material;
        piece->Area = whole.Area;
        piece->Group = whole.Group;
        CopySlice(whole.RenderIndices, first, count, piece->RenderIndices);
        CopySlice(whole.ShadowIndices, first, count, piece->ShadowIndices);
        piece->RenderIndexCount = count;
        piece->ShadowIndexCount = count;
        for (const VMVertex* vertex : piece->RenderIndices)
            piece->Box.Grow(vertex->Position);
        UpdateVertexRanges(*piece);
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

void ListPiecesInAreas(VMWorld& world, const VMSubmesh* whole, const std::vector<std::unique_ptr<VMSubmesh>>& pieces)
{
    for (VMVisArea* area : world.VisAreas) {
        if (area == nullptr)
            continue;
        const int at = area->Submeshes.Find(whole);
        if (at < 0)
            continue;
        area->Submeshes.Remove(at);
        for (size_t i = 0; i < pieces.size(); ++i)
            area->Submeshes.Insert(at + static_cast<int>(i), pieces[i].get());
    }
}

} // namespace

bool SplitSubmeshes(VMWorld& world, const std::function<void(const std::string&)>& console)
{
    if (!NeedsReordering(world))
        return false;
    console("\n\nReordering of the indices in the submeshes is necessary..\n");

    std::vector<std::unique_ptr<VMSubmesh>> submeshes = world.Submeshes.TakeAll();
    for (std::unique_ptr<VMSubmesh>& submesh : submeshes) {
        if (submesh->ShadowIndexCount <= SplitIndexCount) {
            world.Submeshes.Add(std::move(submesh));
            continue;
        }
        if (submesh->RenderIndexCount != submesh->ShadowIndexCount) {
            console("\nERROR! RenderIndexCount != ShadowIndexCount!\n");
            console("Skipped submesh splitting.\n");
            world.Submeshes.Add(std::move(submesh));
            continue;
        }
        std::vector<std::unique_ptr<VMSubmesh>> pieces = Slice(*submesh);
        if (pieces.empty()) {
            world.Submeshes.Add(std::move(submesh));
            continue;
        }
        ListPiecesInAreas(world, submesh.get(), pieces);
        for (std::unique_ptr<VMSubmesh>& piece : pieces)
            world.Submeshes.Add(std::move(piece));
    }
    NumberSubmeshes(world);
    return true;
}
