#include "geometry/SortModelPrimitives.h"

#include "geometry/FixModelID.h"
#include "model/VMModel.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace {

// Reorders a list by a key per record, ascending, records of equal keys in their present order.
template <class T, class KeyOf>
void SortListBy(VMOwnedList<T>& list, KeyOf keyOf)
{
    std::vector<std::pair<int64_t, T*>> keyed;
    keyed.reserve(static_cast<size_t>(list.Count()));
    for (T* record : list)
        keyed.emplace_back(keyOf(record), record);
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    list.Rearrange([&](std::vector<T*>& records) {
        for (size_t i = 0; i < records.size(); ++i)
            records[i] = keyed[i].second;
    });
}

void SortTracks(VMOwnedList<VMAnimation>& animations)
{
    for (VMAnimation* animation : animations) {
        for (VMVertexTrack* track : animation->VertexTracks) {
            std::stable_sort(track->Deltas.begin(), track->Deltas.end(),
                             [](const VMVertexDelta& a, const VMVertexDelta& b) {
                                 return a.Vertex->Index < b.Vertex->Index;
                             });
        }
    }
}

} // namespace

int SortPrimitives(VMModel& model)
{
    try {
        model.Enumerate();
        SortListBy(model.Faces, [](const VMFace* face) -> int64_t {
            return face->Material() != nullptr ? face->Material()->Index : -1;
        });
        if (model.HasBones && model.Skeleton && model.Skeleton->Bones.Count() > 1) {
            SortListBy(model.Vertices, [](const VMSkinVertex* vertex) -> int64_t {
                return vertex->InfluenceCount > 0 ? vertex->InfluenceBones[0]->Index : -1;
            });
            if (FixModelID(model) != 0)
                return -301;
        }
        model.Enumerate();
        SortTracks(model.BoneAnimations);
        SortTracks(model.VertexAnimations);
    } catch (const std::bad_alloc&) {
        return -301;
    }
    return 0;
}
