#include "geometry/BoneAnimationBounds.h"

#include "model/VMModel.h"

#include <algorithm>

namespace {

const VMTransform& PosedTransform(const VMAnimFrame& frame, const VMBone& bone)
{
    return bone.Index >= 0 && bone.Index < frame.Capacity() ? frame.World(bone.Index) : bone.GlobalTransform;
}

void PoseVertex(const VMAnimFrame& frame, const VMSkinVertex& vertex, float posed[3])
{
    if (vertex.InfluenceCount == 0) {
        std::copy_n(vertex.Position, 3, posed);
        return;
    }
    posed[0] = posed[1] = posed[2] = 0.0f;
    for (uint32_t slot = 0; slot < vertex.InfluenceCount; ++slot) {
        float moved[3];
        PosedTransform(frame, *vertex.InfluenceBones[slot]).TransformPoint(vertex.SlotPositions[slot], moved);
        for (int axis = 0; axis < 3; ++axis)
            posed[axis] += vertex.InfluenceWeights[slot] * moved[axis];
    }
}

} // namespace

void ComputeBoneAnimationBounds(VMModel& model)
{
    for (VMAnimation* animation : model.BoneAnimations) {
        animation->Box.Reset();
        for (VMAnimFrame* frame : animation->Frames) {
            frame->Box.Reset();
            for (const VMSkinVertex* vertex : model.Vertices) {
                float posed[3];
                PoseVertex(*frame, *vertex, posed);
                frame->Box.Grow(posed);
            }
            if (!frame->Box.IsEmpty()) {
                animation->Box.Grow(frame->Box.Min);
                animation->Box.Grow(frame->Box.Max);
            }
        }
        animation->HasBoundaries = 1;
    }
}
