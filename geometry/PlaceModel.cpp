#include "geometry/PlaceModel.h"

#include "model/FrameBones.h"
#include "model/VMModel.h"

#include <cstdint>

namespace {

void MoveBox(VMBoundingBox& box, const float offset[3])
{
    for (int axis = 0; axis < 3; ++axis) {
        box.Min[axis] -= offset[axis];
        box.Max[axis] -= offset[axis];
    }
}

void TransformBox(VMBoundingBox& box, const VMTransform& transform)
{
    if (box.IsEmpty())
        return;
    VMBoundingBox moved;
    for (int corner = 0; corner < 8; ++corner) {
        const float point[3] = {corner & 1 ? box.Max[0] : box.Min[0], corner & 2 ? box.Max[1] : box.Min[1],
                                corner & 4 ? box.Max[2] : box.Min[2]};
        float out[3];
        transform.TransformPoint(point, out);
        moved.Grow(out);
    }
    box = moved;
}

template <class Change>
void ForEachBone(VMModel& model, Change change)
{
    if (!model.Skeleton)
        return;
    for (VMBone* bone : model.Skeleton->Bones) {
        if (bone != nullptr)
            change(*bone);
    }
}

// Each frame of every bone animation with the bones it holds a pose for.
template <class Change>
void ForEachPosedBone(VMModel& model, Change change)
{
    if (!model.Skeleton)
        return;
    for (VMAnimation* animation : model.BoneAnimations) {
        for (VMAnimFrame* frame : animation->Frames)
            ForEachFrameBone(*model.Skeleton, *frame, [&](VMBone& bone, int slot) { change(*frame, bone, slot); });
    }
}

template <class Change>
void ForEachVertexDelta(VMModel& model, Change change)
{
    for (auto* animations : {&model.BoneAnimations, &model.VertexAnimations}) {
        for (VMAnimation* animation : *animations) {
            for (VMVertexTrack* track : animation->VertexTracks) {
                for (VMVertexDelta& delta : track->Deltas)
                    change(delta);
            }
        }
    }
}

} // namespace

void MoveModel(VMModel& model, const float offset[3])
{
    for (VMSkinVertex* vertex : model.Vertices) {
        if (vertex == nullptr)
            continue;
        for (int axis = 0; axis < 3; ++axis)
            vertex->Position[axis] -= offset[axis];
    }
    ForEachBone(model, [&](VMBone& bone) {
        for (int axis = 0; axis < 3; ++axis) {
            bone.GlobalTransform.Translation()[axis] -= offset[axis];
            if (bone.Parent == nullptr)
                bone.LocalTransform.Translation()[axis] -= offset[axis];
        }
    });
    ForEachPosedBone(model, [&](VMAnimFrame& frame, VMBone& bone, int slot) {
        for (int axis = 0; axis < 3; ++axis) {
            frame.World(slot).Translation()[axis] -= offset[axis];
            if (bone.Parent == nullptr)
                frame.Local(slot).Translation()[axis] -= offset[axis];
        }
    });
    for (VMAnimation* animation : model.BoneAnimations) {
        for (VMAnimFrame* frame : animation->Frames)
            MoveBox(frame->Box, offset);
    }
    MoveBox(model.Box, offset);
    MoveBox(model.CollisionBox, offset);
}

void CenterModel(VMModel& model, int method)
{
    if (method < 1 || method > 4)
        return;
    VMBoundingBox box;
    double sum[3] = {0.0, 0.0, 0.0};
    int64_t count = 0;
    for (const VMSkinVertex* vertex : model.Vertices) {
        if (vertex == nullptr)
            continue;
        box.Grow(vertex->Position);
        for (int axis = 0; axis < 3; ++axis)
            sum[axis] += vertex->Position[axis];
        ++count;
    }
    if (count == 0)
        return;
    float p[3];
    for (int axis = 0; axis < 3; ++axis)
        p[axis] = (box.Min[axis] + box.Max[axis]) * 0.5f;
    if (method == 2) {
        for (int axis = 0; axis < 3; ++axis)
            p[axis] = static_cast<float>(sum[axis] / static_cast<double>(count));
    } else if (method == 3) {
        p[2] = box.Min[2];
    } else if (method == 4) {
        const VMBone* root = model.Skeleton ? model.Skeleton->GetRootBone() : nullptr;
        if (root == nullptr)
            return;
        for (int axis = 0; axis < 3; ++axis)
            p[axis] = root->GlobalTransform.Translation()[axis];
    }
    MoveModel(model, p);
}

void ScaleModel(VMModel& model, float factor)
{
    for (VMSkinVertex* vertex : model.Vertices) {
        if (vertex == nullptr)
            continue;
        for (float& coordinate : vertex->Position)
            coordinate *= factor;
    }
    ForEachBone(model, [&](VMBone& bone) {
        for (int axis = 0; axis < 3; ++axis) {
            bone.GlobalTransform.Translation()[axis] *= factor;
            bone.LocalTransform.Translation()[axis] *= factor;
        }
    });
    ForEachPosedBone(model, [&](VMAnimFrame& frame, VMBone&, int slot) {
        for (int axis = 0; axis < 3; ++axis) {
            frame.World(slot).Translation()[axis] *= factor;
            frame.Local(slot).Translation()[axis] *= factor;
        }
    });
    for (VMAnimation* animation : model.BoneAnimations) {
        for (VMAnimFrame* frame : animation->Frames) {
            for (float& coordinate : frame->MotionTranslation)
                coordinate *= factor;
        }
    }
    ForEachVertexDelta(model, [&](VMVertexDelta& delta) {
        for (float& coordinate : delta.Position)
            coordinate *= factor;
    });
}

void TransformModel(VMModel& model, const VMTransform& transform)
{
    for (VMSkinVertex* vertex : model.Vertices) {
        if (vertex == nullptr)
            continue;
        transform.TransformPoint(vertex->Position, vertex->Position);
        transform.TransformDirection(vertex->Normal, vertex->Normal);
        transform.TransformDirection(vertex->Tangent, vertex->Tangent);
    }
    ForEachBone(model, [&](VMBone& bone) {
        bone.GlobalTransform = transform * bone.GlobalTransform;
        if (bone.Parent == nullptr)
            bone.LocalTransform = transform * bone.LocalTransform;
    });
    if (model.Skeleton) {
        for (VMAnimation* animation : model.BoneAnimations) {
            for (VMAnimFrame* frame : animation->Frames) {
                if (animation->ExtractMotionDelta)
                    transform.TransformPoint(frame->MotionTranslation, frame->MotionTranslation);
                TransformBox(frame->Box, transform);
            }
        }
    }
    ForEachPosedBone(model, [&](VMAnimFrame& frame, VMBone& bone, int slot) {
        frame.World(slot) = transform * frame.World(slot);
        if (bone.Parent == nullptr)
            frame.Local(slot) = transform * frame.Local(slot);
    });
    ForEachVertexDelta(model, [&](VMVertexDelta& delta) {
        transform.TransformDirection(delta.Position, delta.Position);
        transform.TransformDirection(delta.Normal, delta.Normal);
    });
    TransformBox(model.Box, transform);
    TransformBox(model.CollisionBox, transform);
}
