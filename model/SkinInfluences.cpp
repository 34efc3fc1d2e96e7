#include "model/SkinInfluences.h"

#include "model/VMBone.h"
#include "model/VMSkinVertex.h"

#include <cstddef>
#include <cstdint>

namespace {

// The slot of vertex whose entry sits at position entry of bone's arrays.
int SlotOfEntry(const VMSkinVertex& vertex, const VMBone* bone, uint32_t entry)
{
    for (uint32_t slot = 0; slot < vertex.InfluenceCount; ++slot) {
        if (vertex.InfluenceBones[slot] == bone && vertex.InfluenceEntries[slot] == entry)
            return static_cast<int>(slot);
    }
    return -1;
}

void RemoveBoneEntry(VMBone& bone, uint32_t entry)
{
    const uint32_t last = static_cast<uint32_t>(bone.Vertices.size() - 1);
    if (entry != last) {
        VMSkinVertex* moved = bone.Vertices[last];
        bone.Vertices[entry] = moved;
        bone.Weights[entry] = bone.Weights[last];
        const int slot = SlotOfEntry(*moved, &bone, last);
        if (slot >= 0)
            moved->InfluenceEntries[slot] = entry;
    }
    bone.Vertices.pop_back();
    bone.Weights.pop_back();
}

} // namespace

int WeakestSlot(const VMSkinVertex& vertex)
{
    int weakest = -1;
    float smallest = 9999.9f;
    for (uint32_t slot = 0; slot < vertex.InfluenceCount; ++slot) {
        if (vertex.InfluenceWeights[slot] < smallest) {
            smallest = vertex.InfluenceWeights[slot];
            weakest = static_cast<int>(slot);
        }
    }
    return weakest;
}

void DetachSlot(VMSkinVertex& vertex, int slot)
{
    RemoveBoneEntry(*vertex.InfluenceBones[slot], vertex.InfluenceEntries[slot]);
    for (uint32_t later = static_cast<uint32_t>(slot) + 1; later < vertex.InfluenceCount; ++later) {
        vertex.InfluenceBones[later - 1] = vertex.InfluenceBones[later];
        vertex.InfluenceWeights[later - 1] = vertex.InfluenceWeights[later];
        vertex.InfluenceEntries[later - 1] = vertex.InfluenceEntries[later];
        for (int axis = 0; axis < 3; ++axis)
            vertex.SlotPositions[later - 1][axis] = vertex.SlotPositions[later][axis];
    }
    --vertex.InfluenceCount;
    vertex.InfluenceBones[vertex.InfluenceCount] = nullptr;
    vertex.InfluenceWeights[vertex.InfluenceCount] = 0.0f;
}

int AttachVertex(VMBone* bone, VMSkinVertex* vertex, float weight)
{
    if (bone == nullptr || vertex == nullptr)
        return -1;
    if (!(weight >= SmallestAttachedWeight))
        return 0;
    if (vertex->InfluenceCount >= VMSkinVertex::MaxInfluences) {
        const int weakest = WeakestSlot(*vertex);
        if (weakest < 0 || !(weight > vertex->InfluenceWeights[weakest]))
            return -1;
        DetachSlot(*vertex, weakest);
    }
    const uint32_t slot = vertex->InfluenceCount;
    vertex->InfluenceBones[slot] = bone;
    vertex->InfluenceWeights[slot] = weight;
    vertex->InfluenceEntries[slot] = static_cast<uint32_t>(bone->Vertices.size());
    bone->Vertices.push_back(vertex);
    bone->Weights.push_back(weight);
    vertex->InfluenceCount = slot + 1;
    return 0;
}

int DetachVertex(VMBone* bone, VMSkinVertex* vertex)
{
    if (bone == nullptr || vertex == nullptr)
        return -1;
    for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot) {
        if (vertex->InfluenceBones[slot] == bone) {
            DetachSlot(*vertex, static_cast<int>(slot));
            return 0;
        }
    }
    return -1;
}

int NormalizeWeights(VMSkinVertex& vertex)
{
    float sum = 0.0f;
    for (uint32_t slot = 0; slot < vertex.InfluenceCount; ++slot)
        sum += vertex.InfluenceWeights[slot];
    if (sum < 0.0001f)
        return -1;
    if (sum > 0.9999f && sum < 1.0001f)
        return 0;
    for (uint32_t slot = 0; slot < vertex.InfluenceCount; ++slot) {
        const float weight = vertex.InfluenceWeights[slot] / sum;
        vertex.InfluenceWeights[slot] = weight;
        vertex.InfluenceBones[slot]->Weights[vertex.InfluenceEntries[slot]] = weight;
    }
    return 0;
}
