#pragma once
// A sampled animation of a model with its events. A bone animation keeps one pose frame per
// key, a vertex animation one vertex track per key; the keys (time and duration) run parallel.

#include "model/VMAnimFrame.h"
#include "model/VMBoneMask.h"
#include "model/VMBoundingBox.h"
#include "model/VMOwnedList.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct VMSkinVertex;

struct VMEvent {
    // Seconds since the animation's first frame.
    float Time = 0.0f;
    std::string Name;
};

struct VMFrameKey {
    // Seconds since the animation's first frame.
    float Time = 0.0f;
    int32_t DurationMs = 0;
};

struct VMVertexDelta {
    VMSkinVertex* Vertex = nullptr;
    float Position[3] = {0.0f, 0.0f, 0.0f};
    float Normal[3] = {0.0f, 0.0f, 0.0f};
};

struct VMVertexTrack {
    std::vector<VMVertexDelta> Deltas;
};

class VMAnimation {
public:
    explicit VMAnimation(std::string name = {}, int frameCapacity = 0);
    VMAnimation(const VMAnimation&) = delete;
    VMAnimation& operator=(const VMAnimation&) = delete;

    std::string Name;
    VMOwnedList<VMEvent> Events;
    VMOwnedList<VMAnimFrame> Frames;
    VMOwnedList<VMVertexTrack> VertexTracks;
    std::vector<VMFrameKey> Keys;

    // Which bones the animation drives, when it plays as a layer; written, never filled by sampling.
    std::vector<VMBoneMask> BoneMasks;

    // The user asked for compressed tracks; kept for the editor, the file has one form only.
    uint8_t Compressed = 0;
    uint8_t ExtractMotionDelta = 0;
    uint8_t CompensateRotation = 0;
    uint8_t RotationAxis[3] = {0, 0, 0};
    uint8_t Move[3] = {0, 0, 0};
    uint8_t HasBoundaries = 0;
    VMBoundingBox Box;

    int FrameCount() const { return static_cast<int>(Keys.size()); }
    // The number of keys that room was made for; adding beyond it grows the arrays.
    int FrameCapacity() const { return m_frameCapacity; }

    // Appends a key with its pose (bone animations) or its deltas (vertex animations).
    // -1 for a null frame, -301 when memory runs out (nothing is added then).
    int AddFrame(std::unique_ptr<VMAnimFrame> frame, float time, int32_t durationMs);
    int AddVertexFrame(std::unique_ptr<VMVertexTrack> track, float time, int32_t durationMs);

private:
    int m_frameCapacity = 0;
};
