#include "geometry/SkinEncoding.h"

#include "model/SkinInfluences.h"
#include "model/VMModel.h"

#include <vector>

namespace {

bool HasBones(const VMModel& model)
{
    return model.Skeleton && model.Skeleton->Bones.Count() > 0;
}

// Each bone's inverse global transform by its number; the skeleton is numbered here.
std::vector<VMTransform> InverseGlobals(VMSkeleton& skeleton)
{
    skeleton.Enumerate();
    std::vector<VMTransform> inverses(static_cast<size_t>(skeleton.Bones.Count()));
    for (VMBone* bone : skeleton.Bones) {
        if (bone != nullptr)
            Invert(bone->GlobalTransform, inverses[static_cast<size_t>(bone->Index)]);
    }
    return inverses;
}

} // namespace

int EncodeVertices(VMModel& model)
{
    if (model.HasBones && !HasBones(model))
        model.HasBones = 0;
    if (!model.HasBones) {
        for (VMSkinVertex* vertex : model.Vertices) {
            if (vertex == nullptr)
                continue;
            for (int axis = 0; axis < 3; ++axis) {
                vertex->SlotPositions[0][axis] = vertex->Position[axis];
                vertex->SlotNormal[axis] = vertex->Normal[axis];
            }
        }
        return 0;
    }

    VMSkeleton& skeleton = *model.Skeleton;
    const std::vector<VMTransform> inverses = InverseGlobals(skeleton);
    const auto inverseOf = [&](const VMBone* bone) -> const VMTransform& {
        return inverses[static_cast<size_t>(bone->Index)];
    };
    int result = 0;
    for (VMSkinVertex* vertex : model.Vertices) {
        if (vertex == nullptr)
            continue;
        if (vertex->InfluenceCount == 0) {
            AttachVertex(skeleton.GetRootBone(), vertex, 1.0f);
            result = -1;
        }
        if (vertex->InfluenceCount == 0)
            continue;
        inverseOf(vertex->InfluenceBones[0]).TransformDirection(vertex->Normal, vertex->SlotNormal);
        for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot)
            inverseOf(vertex->InfluenceBones[slot]).TransformPoint(vertex->Position, vertex->SlotPositions[slot]);
    }
    return result;
}
