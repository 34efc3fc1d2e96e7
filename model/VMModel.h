#pragma once
// The container of a skinned, animated model. Every list owns its records; the skeleton is
// owned too (null for a model without bones).

#include "model/VMAnimation.h"
#include "model/VMBoneMask.h"
#include "model/VMBoundingBox.h"
#include "model/VMFace.h"
#include "model/VMMeshBase.h"
#include "model/VMOwnedList.h"
#include "model/VMSkeleton.h"
#include "model/VMSkinVertex.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class VMModel : public VMMeshBase {
public:
    VMModel() = default;
    ~VMModel();

    VMOwnedList<VMSkinVertex> Vertices;
    VMOwnedList<VMFace> Faces;
    VMOwnedList<VMAnimation> BoneAnimations;
    VMOwnedList<VMAnimation> VertexAnimations;
    std::unique_ptr<VMSkeleton> Skeleton;
    std::vector<VMBoneMask> BoneMasks;
    VMBoundingBox Box;
    VMBoundingBox CollisionBox;
    float VisibilityRadius = 0.0f;
    uint8_t HasBones = 0;
    uint8_t HasVertexAnimation = 0;
    uint8_t Blended = 0;

    // Destroys every record; the lists end empty, no skeleton, boxes and flags at their
    // initial values. The model pipeline calls it at the start of every export.
    void Clear();

    // Numbers the bones in skeleton order, then the skin vertices, the faces and the
    // materials, each by list position. Answers 0.
    int Enumerate();

    // Factories: each answers null when memory runs out, and none adds the record.
    static std::unique_ptr<VMSkinVertex> NewVertex();
    static std::unique_ptr<VMFace> NewFace();
    static std::unique_ptr<VMBone> NewBone();
    static std::unique_ptr<VMSkeleton> NewSkeleton();
    static std::unique_ptr<VMAnimation> NewAnimation(const std::string& name, int frameCapacity);
};
