#include "model/VMAnimFrame.h"

#include "model/VMBone.h"

#include <new>

std::unique_ptr<VMAnimFrame> VMAnimFrame::Create(int capacity, bool withScales)
{
    if (capacity < 0 || capacity > MaxCapacity)
        return nullptr;
    try {
        std::unique_ptr<VMAnimFrame> frame(new VMAnimFrame());
        const size_t slots = static_cast<size_t>(capacity);
        frame->m_bones.reserve(slots);
        frame->m_local.resize(slots);
        frame->m_world.resize(slots);
        if (withScales)
            frame->m_scales.assign(slots * 3, 1.0f);
        return frame;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

float* VMAnimFrame::Scale(int boneNumber)
{
    return HasScales() ? &m_scales[static_cast<size_t>(boneNumber) * 3] : nullptr;
}

const float* VMAnimFrame::Scale(int boneNumber) const
{
    return HasScales() ? &m_scales[static_cast<size_t>(boneNumber) * 3] : nullptr;
}

int VMAnimFrame::AddBone(VMBone* bone, const VMTransform* local, const VMTransform* world, const float* scale)
{
    if (bone == nullptr || BoneCount() >= Capacity() || bone->Index < 0 || bone->Index >= Capacity())
        return -1;
    const int number = bone->Index;
    Local(number) = local != nullptr ? *local : VMTransform::Identity();
    World(number) = world != nullptr ? *world : VMTransform::Identity();
    if (scale != nullptr && HasScales()) {
        float* slot = Scale(number);
        slot[0] = scale[0];
        slot[1] = scale[1];
        slot[2] = scale[2];
    }
    m_bones.push_back(bone);
    return 0;
}

void VMAnimFrame::Close()
{
    for (const VMBone* bone : m_bones) {
        const int number = bone->Index;
        const VMBone* parent = bone->Parent;
        VMTransform parentInverse;
        const bool hasParentSlot = parent != nullptr && parent->Index >= 0 && parent->Index < Capacity();
        if (hasParentSlot && Invert(World(parent->Index), parentInverse))
            Local(number) = parentInverse * World(number);
        else
            Local(number) = World(number);
    }
}
