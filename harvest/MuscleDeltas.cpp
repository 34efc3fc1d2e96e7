#include "harvest/MuscleDeltas.h"

#include "harvest/GetSkins.h"
#include "harvest/ModelMeshExporter.h"
#include "report/DebugFile.h"
#include "report/VIssueKind.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float NormalTolerance = 0.01f;

VMTransform RotationOnly(VMTransform transform)
{
    std::fill_n(transform.Translation(), 3, 0.0f);
    return transform;
}

} // namespace

MuscleDeltas::MuscleDeltas(const HarvestState& state, const VMModel& model, const VMAnimFrame* reference, std::string name)
    : m_state(state)
    , m_model(model)
    , m_reference(reference)
    , m_name(std::move(name))
    , m_scratchState(state.Parameters, m_repeatedIssues)
{
    m_scratchState.Stats = state.Stats;
    m_scratchState.Materials = state.Materials;
    m_scratchState.TextureNames = state.TextureNames;
}

VMModel& MuscleDeltas::HarvestScratch()
{
    m_scratch.Clear();
    m_scratch.HasTangents = 1;
    const bool bones = m_state.Parameters.Options.ExportBones;
    if (bones)
        m_scratch.Skeleton = VMModel::NewSkeleton();
    m_scratchState.MeshNodes.Reset(m_state.Stats.MeshNodeCount);
    GetMeshes(m_scratchState, m_scratch, 0);
    if (bones)
        GetSkins(m_scratchState, m_scratch);
    return m_scratch;
}

void MuscleDeltas::DecodeReference()
{
    const int count = m_model.Vertices.Count();
    m_positions.assign(static_cast<size_t>(count) * 3, 0.0f);
    m_normals.assign(static_cast<size_t>(count) * 3, 0.0f);
    m_toBone.assign(static_cast<size_t>(count), VMTransform::Identity());
    std::vector<bool> posed(m_reference ? static_cast<size_t>(m_reference->Capacity()) : 0u, false);
    if (m_reference) {
        for (const VMBone* bone : m_reference->Bones())
            posed[static_cast<size_t>(bone->Index)] = true;
    }
    // A bone the reference frame holds no pose for stays where it was bound.
    const auto poseOf = [&](const VMBone& bone) -> const VMTransform& {
        const bool held = bone.Index >= 0 && static_cast<size_t>(bone.Index) < posed.size() && posed[static_cast<size_t>(bone.Index)];
        return held ? m_reference->World(bone.Index) : bone.GlobalTransform;
    };
    for (int v = 0; v < count; ++v) {
        const VMSkinVertex& vertex = *m_model.Vertices[v];
        float* position = &m_positions[static_cast<size_t>(v) * 3];
        float* normal = &m_normals[static_cast<size_t>(v) * 3];
        if (!m_reference || vertex.InfluenceCount == 0) {
            std::copy_n(vertex.Position, 3, position);
            std::copy_n(vertex.Normal, 3, normal);
            continue;
        }
        for (uint32_t slot = 0; slot < vertex.InfluenceCount; ++slot) {
            float moved[3];
            poseOf(*vertex.InfluenceBones[slot]).TransformPoint(vertex.SlotPositions[slot], moved);
            for (int axis = 0; axis < 3; ++axis)
                position[axis] += vertex.InfluenceWeights[slot] * moved[axis];
        }
        // Compared in the first bone's space, where the encoded normal already is.
        std::copy_n(vertex.SlotNormal, 3, normal);
        Invert(RotationOnly(poseOf(*vertex.InfluenceBones[0])), m_toBone[static_cast<size_t>(v)]);
    }
    m_decoded = true;
}

std::unique_ptr<VMVertexTrack> MuscleDeltas::Frame()
{
    auto track = std::make_unique<VMVertexTrack>();
    const VMModel& scratch = HarvestScratch();
    const int count = m_model.Vertices.Count();
    if (scratch.Vertices.Count() != count) {
        DebugPrint("The number of vertices (%d) in the muscle animation model\r\n", scratch.Vertices.Count());
        DebugPrint("is not the same as the original number (%d) in the reference model\r\n", count);
        m_state.Report.AddIssue(IssueMuscleVertexCountMismatch, m_name);
        return track;
    }
    DebugPrint("Decoding vertices...\r\n");
    if (!m_decoded)
        DecodeReference();
    const float threshold = m_state.Parameters.Options.MeshFactor * 0.001f;
    DebugPrint("Getting deltas (%i:%i)...\r\n", scratch.Vertices.Count(), count);
    for (int v = 0; v < count; ++v) {
        DebugPrint("V:%i ", v);
        const VMSkinVertex& now = *scratch.Vertices[v];
        VMVertexDelta delta;
        delta.Vertex = m_model.Vertices[v];
        for (int axis = 0; axis < 3; ++axis)
            delta.Position[axis] = now.Position[axis] - m_positions[static_cast<size_t>(v) * 3 + axis];
        std::copy_n(now.Normal, 3, delta.Normal);
        const VMTransform& toBone = m_toBone[static_cast<size_t>(v)];
        toBone.TransformDirection(delta.Position, delta.Position);
        toBone.TransformDirection(delta.Normal, delta.Normal);
        bool moved = false;
        for (int axis = 0; axis < 3; ++axis) {
            moved = moved || !(std::fabs(delta.Position[axis]) < threshold) ||
                    !(std::fabs(delta.Normal[axis] - m_normals[static_cast<size_t>(v) * 3 + axis]) <= NormalTolerance);
        }
        DebugPrint(moved ? "1\r\n" : "0\r\n");
        if (moved)
            track->Deltas.push_back(delta);
    }
    DebugPrint("Found %i deltas\r\n", static_cast<int>(track->Deltas.size()));
    return track;
}
