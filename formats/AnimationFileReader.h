#pragma once
// Reads an animation file (AnimationChunks.h) back, for tests and for "kestrel info". Every
// count is checked against the bytes its chunk holds before anything is allocated or read, so a
// damaged or hostile file ends in an error message, never in a crash or a huge allocation.
// Chunks the reader does not know are skipped.

#include "model/VMAnimation.h"
#include "model/VMBoneMask.h"
#include "model/VMSkeleton.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class VChunkStreamProvider;

// One key list: per key its time and Width floats.
struct VAnimKeyList {
    int32_t Width = 0;
    std::vector<float> Times;
    std::vector<float> Values;

    int32_t KeyCount() const { return static_cast<int32_t>(Times.size()); }
    const float* Key(int32_t key) const { return Values.data() + static_cast<size_t>(key) * static_cast<size_t>(Width); }
};

struct VAnimFileDelta {
    int32_t Vertex = 0;
    float Position[3] = {};
    float Normal[3] = {};
};

struct VAnimFileAnimation {
    // BANI or VANI.
    uint32_t Kind = 0;
    uint16_t Version = 0;
    std::string Name;
    // The child chunks in file order.
    std::vector<uint32_t> Chunks;
    std::vector<VMEvent> Events;

    // Bone animations.
    uint16_t SkeletonNumber = 0;
    uint16_t BoneCount = 0;
    VAnimKeyList Boxes;
    VAnimKeyList Offsets;
    // 0 x, 1 y, 2 z.
    uint8_t RotationAxis = 0;
    VAnimKeyList RotationDeltas;
    VAnimKeyList Positions;
    VAnimKeyList Rotations;
    VAnimKeyList Scales;
    std::vector<VMBoneMask> BoneMasks;

    // Vertex animations.
    uint16_t VertexCount = 0;
    std::vector<float> DeltaTimes;
    std::vector<std::vector<VAnimFileDelta>> Deltas;
    int32_t MaskBits = 0;
    std::vector<uint32_t> MaskWords;

    bool IsBoneAnimation() const;
    bool Has(uint32_t chunk) const;
};

struct VAnimationFile {
    // What HEAD says; the animations are those the file holds.
    int32_t DeclaredCount = 0;
    std::unique_ptr<VMSkeleton> Skeleton;
    std::vector<VAnimFileAnimation> Animations;
};

// False with the last-error text set when the file cannot be read or is damaged.
bool ReadAnimationFile(std::string_view path, VAnimationFile& animations, VChunkStreamProvider* provider = nullptr);

// The file as text: the skeleton's size, then per animation its kind, name, key count, time
// span and the tracks it holds.
std::string DescribeAnimationFile(const VAnimationFile& animations);
