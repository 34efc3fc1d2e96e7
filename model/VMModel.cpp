#include "model/VMModel.h"

#include "model/MakeRecord.h"

VMModel::~VMModel()
{
    Clear();
}

void VMModel::Clear()
{
    Faces.Clear();
    BoneAnimations.Clear();
    VertexAnimations.Clear();
    Skeleton.reset();
    BoneMasks.clear();
    Vertices.Clear();
    ClearMeshBase();
    Box.Reset();
    CollisionBox.Reset();
    VisibilityRadius = 0.0f;
    HasBones = 0;
    HasVertexAnimation = 0;
    Blended = 0;
}

int VMModel::Enumerate()
{
    if (Skeleton)
        Skeleton->Enumerate();
    uint32_t index = 0;
    for (VMSkinVertex* vertex : Vertices) {
        if (vertex != nullptr)
            vertex->Index = index;
        ++index;
    }
    int faceIndex = 0;
    for (VMFace* face : Faces) {
        if (face != nullptr)
            face->Index = faceIndex;
        ++faceIndex;
    }
    EnumerateMaterials();
    return 0;
}

std::unique_ptr<VMSkinVertex> VMModel::NewVertex() { return MakeRecord<VMSkinVertex>(); }
std::unique_ptr<VMFace> VMModel::NewFace() { return MakeRecord<VMFace>(); }
std::unique_ptr<VMBone> VMModel::NewBone() { return MakeRecord<VMBone>(); }
std::unique_ptr<VMSkeleton> VMModel::NewSkeleton() { return MakeRecord<VMSkeleton>(); }
std::unique_ptr<VMAnimation> VMModel::NewAnimation(const std::string& name, int frameCapacity)
{
    return MakeRecord<VMAnimation>(name, frameCapacity);
}
