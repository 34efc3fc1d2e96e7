#pragma once
// One sampled bone pose: per bone number a local transform (relative to the parent bone) and a
// world transform, with the root motion that the animation adjustment extracts.

#include "model/VMBoundingBox.h"
#include "model/VMTransform.h"

#include <memory>
#include <vector>

class VMBone;

class VMAnimFrame {
public:
    static constexpr int SampledCapacity = 256;
    static constexpr int MaxCapacity = 65536;

    // Room for bone numbers 0 .. capacity-1, with a scale vector per bone number when asked.
    // Null when the capacity lies outside 0 .. MaxCapacity or memory runs out.
    static std::unique_ptr<VMAnimFrame> Create(int capacity, bool withScales);

    int Capacity() const { return static_cast<int>(m_local.size()); }
    int BoneCount() const { return static_cast<int>(m_bones.size()); }
    // In the order added.
    const std::vector<VMBone*>& Bones() const { return m_bones; }
    bool HasScales() const { return !m_scales.empty(); }

    // The slots of a bone number; the number must lie below the capacity.
    VMTransform& Local(int boneNumber) { return m_local[static_cast<size_t>(boneNumber)]; }
    const VMTransform& Local(int boneNumber) const { return m_local[static_cast<size_t>(boneNumber)]; }
    VMTransform& World(int boneNumber) { return m_world[static_cast<size_t>(boneNumber)]; }
    const VMTransform& World(int boneNumber) const { return m_world[static_cast<size_t>(boneNumber)]; }
    // Null when the frame has no scale array.
    float* Scale(int boneNumber);
    const float* Scale(int boneNumber) const;

    // Stores the bone's transforms under its number (a missing transform as the identity, the
    // scale only when the frame keeps scales) and appends the bone. -1 when the frame is full
    // or the bone's number lies outside the capacity.
    int AddBone(VMBone* bone, const VMTransform* local, const VMTransform* world, const float* scale);

    // For every added bone, in the order added: local := inverse(parent's world) * world, or
    // the world transform for a bone without a parent (or whose parent is not in this frame
    // or cannot be inverted).
    void Close();

    float MotionTranslation[3] = {0.0f, 0.0f, 0.0f};
    float MotionRotation[3] = {0.0f, 0.0f, 0.0f};
    VMBoundingBox Box;

private:
    VMAnimFrame() = default;

    std::vector<VMBone*> m_bones;
    std::vector<VMTransform> m_local;
    std::vector<VMTransform> m_world;
    std::vector<float> m_scales;
};
