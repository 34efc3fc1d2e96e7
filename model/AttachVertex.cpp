#include "model/AttachVertex.h"

#include "model/VMBone.h"
#include "model/VMSkinVertex.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

int WeakestSlot(const VMSkinVertex& vertex)
{
    int weakest = 0;
    float smallest = 9999.9f;
    for (uint32_t k = 0; k < vertex.InfluenceCount; ++k)
        if (vertex.InfluenceWeights[k] < smallest) {
            smallest = vertex.InfluenceWeights[k];
            weakest = static_cast<int>(k);
        }
    return weakest;
}

}

int AttachVertex(VMBone* bone, VMSkinVertex* vertex, float weight)
{
    if (bone == nullptr || vertex == nullptr)
        return -1;
    if (weight < kSmallestStoredWeight)
        return 0;
    if (vertex->InfluenceCount == VMSkinVertex::MaxInfluences) {
        const int weakest = WeakestSlot(*vertex);
        if (!(weight > vertex->InfluenceWeights[weakest]))
            return -1;
        DetachVertex(vertex->InfluenceBones[weakest], vertex);
    }
    const uint32_t slot = vertex->InfluenceCount++;
    vertex->InfluenceBones[slot] = bone;
    vertex->InfluenceWeights[slot] = weight;
    bone->Vertices.push_back(vertex);
    bone->Weights.push_back(weight);
    return 0;
}

int DetachVertex(VMBone* bone, VMSkinVertex* vertex)
{
    if (bone == nullptr || vertex == nullptr)
        return -1;
    const auto entry = std::find(bone->Vertices.begin(), bone->Vertices.end(), vertex);
    VMBone** const slots = vertex->InfluenceBones;
    VMBone** const slotsEnd = slots + vertex->InfluenceCount;
    VMBone** const slot = std::find(slots, slotsEnd, bone);
    if (entry == bone->Vertices.end() || slot == slotsEnd)
        return -1;
    const std::ptrdiff_t k = slot - slots;
    std::move(slot + 1, slotsEnd, slot);
    std::move(vertex->InfluenceWeights + k + 1, vertex->InfluenceWeights + vertex->InfluenceCount,
              vertex->InfluenceWeights + k);
    --vertex->InfluenceCount;
    vertex->InfluenceBones[vertex->InfluenceCount] = nullptr;
    vertex->InfluenceWeights[vertex->InfluenceCount] = 0.0f;
    const std::ptrdiff_t e = entry - bone->Vertices.begin();
    bone->Vertices.erase(entry);
    bone->Weights.erase(bone->Weights.begin() + e);
    return 0;
}
