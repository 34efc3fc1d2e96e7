#pragma once
// A joint of a model's skeleton.

#include "base/VPList.h"
#include "model/VMBoundingBox.h"
#include "model/VMTransform.h"

#include <cstdint>
#include <string>
#include <vector>

struct VMSkinVertex;

class VMBone {
public:
    VMBone() = default;
    VMBone(const VMBone&) = delete;
    VMBone& operator=(const VMBone&) = delete;

    // -1 until numbered.
    int32_t Index = -1;
    VMBone* Parent = nullptr;
    // The attached vertices and their weights, parallel arrays in no particular order; changed
    // only through AttachVertex and DetachVertex (model/SkinInfluences.h).
    std::vector<VMSkinVertex*> Vertices;
    std::vector<float> Weights;
    std::string Name;
    // The joint's full DAG path name: smooth skinning finds its influences by it.
    std::string FullName;
    // In bone space.
    VMBoundingBox Box;
    VMTransform BoxTransform;
    VMTransform GlobalTransform;
    VMTransform LocalTransform;
    // The pose of the sampled frame last applied to the model.
    VMTransform PosedWorldTransform;
    VMTransform PosedLocalTransform;
    uint32_t ListPosition = 0;
    uint32_t SortIndex = 0;
    // Bones that carry anchor points are never pruned.
    uint8_t Anchored = 0;
    VPListT<VMBone> Children;
    // The animation track that the bone's keys are written from; negative: its skeleton position.
    int32_t TrackIndex = -1;

    int VertexCount() const { return static_cast<int>(Vertices.size()); }
};
