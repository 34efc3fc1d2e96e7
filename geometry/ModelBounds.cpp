#include "geometry/ModelBounds.h"

#include "model/VMModel.h"

#include <algorithm>
#include <cmath>

void ComputeModelBounds(VMModel& model)
{
    model.Box.Reset();
    for (const VMSkinVertex* vertex : model.Vertices) {
        if (vertex != nullptr)
            model.Box.Grow(vertex->Position);
    }
    model.VisibilityRadius = 0.0f;
    if (model.Box.IsEmpty())
        return;
    float squared = 0.0f;
    for (int corner = 0; corner < 8; ++corner) {
        float sum = 0.0f;
        for (int axis = 0; axis < 3; ++axis) {
            const float value = (corner >> axis) & 1 ? model.Box.Max[axis] : model.Box.Min[axis];
            sum += value * value;
        }
        squared = std::max(squared, sum);
    }
    model.VisibilityRadius = std::sqrt(squared);
}

void ComputeBoneBounds(VMSkeleton& skeleton)
{
    constexpr float Extent = 1e9f;
    for (VMBone* bone : skeleton.Bones) {
        if (bone == nullptr)
            continue;
        VMBoundingBox& box = bone->Box;
        bone->BoxTransform = VMTransform::Identity();
        if (bone->Vertices.empty()) {
            box.Min[0] = box.Min[1] = box.Min[2] = 0.0f;
            box.Max[0] = box.Max[1] = box.Max[2] = 0.0f;
            continue;
        }
        box.Min[0] = box.Min[1] = box.Min[2] = Extent;
        box.Max[0] = box.Max[1] = box.Max[2] = -Extent;
        for (uint32_t entry = 0; entry < bone->Vertices.size(); ++entry) {
            const VMSkinVertex& vertex = *bone->Vertices[entry];
            for (uint32_t slot = 0; slot < vertex.InfluenceCount; ++slot) {
                if (vertex.InfluenceBones[slot] == bone && vertex.InfluenceEntries[slot] == entry) {
                    box.Grow(vertex.SlotPositions[slot]);
                    break;
                }
            }
        }
    }
}
