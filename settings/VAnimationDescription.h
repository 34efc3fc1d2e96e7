#pragma once
// One entry of the animation table: a range of the Maya time line to export as one animation.

#include <cstdint>
#include <string>
#include <vector>

// Animation types.
inline constexpr int32_t kAnimTypeMuscle = 2;
inline constexpr int32_t kAnimTypeBone = 3;
inline constexpr int32_t kAnimTypeMorphTarget = 5;

// Capacity of an entry's key-frame tables.
inline constexpr int kMaxAnimationKeyFrames = 8192;

struct VAnimationDescription {
    std::string Name = "Noname";
    std::string SourceFile = "[This file]";
    int32_t Type = kAnimTypeMuscle;
    int32_t Looped = 0;
    int32_t UseRange = 0;
    int32_t RangeStart = 0;
    int32_t RangeEnd = 0;
    int32_t UseMaxFrames = 1;
    int32_t EstimateFrames = 0;
    int32_t EstimateLevel = 1;
    int32_t Frames = 0;
    int32_t MotionDelta = 0;
    int32_t CompensateRotation = 0;
    int32_t CompensateOffset = 0;
    int32_t MoveX = 0;
    int32_t MoveY = 0;
    int32_t MoveZ = 0;
    // 0 none, 1 x, 2 y, 3 z.
    int32_t RotationAxis = 0;
    bool Compressed = true;

    // The sampled frames (ticks), filled by the animation phase and never saved.
    int32_t KeyFrameCount = 0;
    std::vector<int32_t> KeyFrameTimes;
    std::vector<int32_t> KeyFrameDurations;

    bool operator==(const VAnimationDescription&) const = default;
};
