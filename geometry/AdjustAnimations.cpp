#include "geometry/AdjustAnimations.h"

#include "model/FrameBones.h"
#include "model/VMModel.h"

#include <algorithm>
#include <cmath>

namespace {

// Below this the axis itself is nearly turned onto the plane of the other two, and the
// increment is read from the other pair of elements.
constexpr float GimbalLimit = 1.9073486328125e-6f;
constexpr float RadiansToDegrees = 180.0f / 3.1415927f;

VMTransform WithoutTranslation(VMTransform transform)
{
    transform.Translation()[0] = transform.Translation()[1] = transform.Translation()[2] = 0.0f;
    return transform;
}

// The turn by angle about axis a, j and k being the next two axes in cyclic order.
VMTransform TurnAbout(int a, double angle)
{
    const int j = (a + 1) % 3;
    const int k = (a + 2) % 3;
    VMTransform turn;
    const float c = static_cast<float>(std::cos(angle));
    const float s = static_cast<float>(std::sin(angle));
    turn.At(j, j) = c;
    turn.At(k, k) = c;
    turn.At(k, j) = s;
    turn.At(j, k) = -s;
    return turn;
}

class AnimationAdjuster {
public:
    AnimationAdjuster(const VMSkeleton& skeleton, const VMBone& root, bool newRotationDeltas)
        : m_skeleton(skeleton), m_root(root.Index), m_global(root.GlobalTransform), m_newRotationDeltas(newRotationDeltas)
    {
    }

    int Adjust(VMAnimation& animation) const
    {
        if (animation.Frames.IsEmpty())
            return -1;
        for (const VMAnimFrame* frame : animation.Frames) {
            if (m_root < 0 || m_root >= frame->Capacity())
                return -1;
        }
        TakeTranslation(animation);
        TakeRotation(animation);
        return 0;
    }

private:
    void TakeTranslation(VMAnimation& animation) const
    {
        VMAnimFrame& first = *animation.Frames[0];
        float p[3];
        VMTransform correction;
        if (animation.CompensateRotation != 0) {
            std::copy_n(m_global.Translation(), 3, p);
            VMTransform inverse;
            Invert(WithoutTranslation(first.Local(m_root)), inverse);
            correction = WithoutTranslation(m_global) * inverse;
        } else {
            std::copy_n(first.Local(m_root).Translation(), 3, p);
        }
        for (VMAnimFrame* frame : animation.Frames) {
            frame->Local(m_root) = correction * frame->Local(m_root);
            for (int slot = 0; slot < frame->BoneCount() && slot < frame->Capacity(); ++slot)
                frame->World(slot) = correction * frame->World(slot);
        }
        float d[3];
        for (int axis = 0; axis < 3; ++axis)
            d[axis] = first.Local(m_root).Translation()[axis] - p[axis];

        for (VMAnimFrame* frame : animation.Frames) {
            float* rootTranslation = frame->Local(m_root).Translation();
            for (int axis = 0; axis < 3; ++axis) {
                if (!animation.Move[axis]) {
                    rootTranslation[axis] -= d[axis];
                    ForEachFrameBone(m_skeleton, *frame,
                                     [&](VMBone&, int slot) { frame->World(slot).Translation()[axis] -= d[axis]; });
                    continue;
                }
                frame->MotionTranslation[axis] = rootTranslation[axis] - p[axis];
                ForEachFrameBone(m_skeleton, *frame, [&](VMBone& bone, int slot) {
                    if (slot == m_root)
                        rootTranslation[axis] = m_newRotationDeltas ? 0.0f : p[axis];
                    // With new rotation deltas the root's translation is read as it stands, so
                    // the bones after the root keep theirs.
                    const float s = m_newRotationDeltas ? rootTranslation[axis] : frame->MotionTranslation[axis];
                    if (slot != m_root && bone.Parent == nullptr)
                        frame->Local(slot).Translation()[axis] -= s;
                    frame->World(slot).Translation()[axis] -= s;
                });
            }
        }
    }

    void TakeRotation(VMAnimation& animation) const
    {
        const uint8_t* flags = animation.RotationAxis;
        if (!flags[0] && !flags[1] && !flags[2])
            return;
        const int a = flags[2] ? 2 : flags[1] ? 1 : 0;
        const int j = (a + 1) % 3;
        const int k = (a + 2) % 3;
        animation.Frames[0]->MotionRotation[a] = 0.0f;
        double angle = 0.0;
        for (int f = 1; f < animation.Frames.Count(); ++f) {
            VMTransform inverse;
            Invert(animation.Frames[f - 1]->World(m_root), inverse);
            const VMTransform d = animation.Frames[f]->World(m_root) * inverse;
            const float g = std::sqrt(d.At(a, a) * d.At(a, a) + d.At(a, j) * d.At(a, j));
            const float increment = g > GimbalLimit ? std::atan2(d.At(j, k), d.At(k, k)) : std::atan2(-d.At(k, j), d.At(j, j));
            angle += increment;
            animation.Frames[f]->MotionRotation[a] = static_cast<float>(angle);
        }
        for (VMAnimFrame* frame : animation.Frames) {
            const float theta = frame->MotionRotation[a];
            const VMTransform turn = TurnAbout(a, theta);
            ForEachFrameBone(m_skeleton, *frame, [&](VMBone& bone, int slot) {
                if (bone.Parent == nullptr)
                    frame->Local(slot) = turn * frame->Local(slot);
                frame->World(slot) = turn * frame->World(slot);
            });
            frame->MotionRotation[a] = theta * RadiansToDegrees;
        }
    }

    const VMSkeleton& m_skeleton;
    int m_root;
    VMTransform m_global;
    bool m_newRotationDeltas;
};

} // namespace

int AdjustAnimations(VMModel& model, bool newRotationDeltas)
{
    if (model.BoneAnimations.IsEmpty())
        return 0;
    const VMBone* root = model.Skeleton ? model.Skeleton->GetRootBone() : nullptr;
    if (model.BoneAnimations[0]->Frames.IsEmpty() || root == nullptr)
        return -1;
    const AnimationAdjuster adjuster(*model.Skeleton, *root, newRotationDeltas);
    int result = 0;
    for (VMAnimation* animation : model.BoneAnimations) {
        if (animation->ExtractMotionDelta && adjuster.Adjust(*animation) != 0)
            result = -1;
    }
    return result;
}
