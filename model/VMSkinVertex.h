#pragma once
// The vertex of a skinned model: a vertex with up to four bone influences. A bone and its
// vertices mirror each other: the vertex lists the bone in a slot exactly when the bone lists
// the vertex.

#include "model/VMVertexData.h"

#include <cstdint>

class VMBone;

struct VMSkinVertex : VMVertexData {
    static constexpr int MaxInfluences = 4;

    // The vertex position in the space of each slot's bone.
    float SlotPositions[MaxInfluences][3] = {};
    // The normal in the space of the first slot's bone.
    float SlotNormal[3] = {0.0f, 0.0f, 0.0f};
    uint32_t InfluenceCount = 0;
    VMBone* InfluenceBones[MaxInfluences] = {nullptr, nullptr, nullptr, nullptr};
    float InfluenceWeights[MaxInfluences] = {0.0f, 0.0f, 0.0f, 0.0f};
    // Where each slot's entry sits in its bone's arrays. The influences change only through
    // AttachVertex and DetachVertex (model/SkinInfluences.h), which keep all of this in step.
    uint32_t InfluenceEntries[MaxInfluences] = {0, 0, 0, 0};

    // The vertex that harvesting split this one from, null for a vertex of its own: skin weights
    // and animation deltas follow it.
    VMSkinVertex* Source = nullptr;
    // Set when the vertex had no weights of its own and was bound to the root bone.
    uint8_t BoundToRoot = 0;

    // The first vertex with exactly the same position (FixModelID).
    VMSkinVertex* IdLink = nullptr;
};
