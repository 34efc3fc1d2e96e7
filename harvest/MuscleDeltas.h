#pragma once
// The vertex deltas of a muscle animation or morph target: per sampled frame, how far every
// vertex of the re-harvested scene lies from the model's vertex in the reference pose.

#include "harvest/HarvestState.h"
#include "model/VMModel.h"
#include "report/KestrelReportMessage.h"

#include <memory>
#include <string>
#include <vector>

class VMAnimFrame;

class MuscleDeltas {
public:
    // reference: the skeleton's pose at the animation's first frame, null without bones. The
    // frames are harvested with a state of their own: the model's materials are reused through
    // a copy of the material cache, and what the harvest reports again is not reported twice.
    MuscleDeltas(const HarvestState& state, const VMModel& model, const VMAnimFrame* reference, std::string name);

    // Harvests the meshes as they are at Maya's current time (the final, deformed meshes, with
    // their skins when bones are exported) and records every vertex that moved by
    // MeshFactor * 0.001 or more on some axis, or whose normal changed by more than 0.01 on some
    // axis. A vertex that has a bone in the reference pose gives its delta and normal in that
    // bone's space. A harvest of another vertex count than the model's raises "The number of
    // vertices is different in muscle animation" and records nothing.
    std::unique_ptr<VMVertexTrack> Frame();

private:
    VMModel& HarvestScratch();
    void DecodeReference();

    const HarvestState& m_state;
    const VMModel& m_model;
    const VMAnimFrame* m_reference;
    std::string m_name;
    KestrelReportMessage m_repeatedIssues;
    HarvestState m_scratchState;
    VMModel m_scratch;
    // The model's vertices posed by the reference frame, and the rotation that brings a
    // direction into the reference space of each vertex's first bone.
    std::vector<float> m_positions;
    std::vector<float> m_normals;
    std::vector<VMTransform> m_toBone;
    bool m_decoded = false;
};
