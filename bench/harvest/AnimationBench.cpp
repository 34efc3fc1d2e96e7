// The animation phase of a model export: ten bone animations of 300 frames each with every joint keyed (cost per
// bone and frame), on the skinned grid's chain of 100 joints (the deepest skeleton: each joint's world matrix is
// a product of up to 100) and on a character-like tree of 100 joints; and a muscle animation of a 100k-vertex
// grid, its skin deformed anew at every frame (cost per frame).

#include "../common/SkinnedGridScene.h"
#include "harvest/CountTriangles.h"
#include "harvest/EnterBindPose.h"
#include "harvest/HarvestState.h"
#include "harvest/ModelMeshExporter.h"
#include "harvest/SampleAnimations.h"
#include "model/VMModel.h"
#include "report/KestrelReportMessage.h"
#include "settings/VAnimationTable.h"

#include <maya/MTime.h>
#include <standin/SceneBuilder.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

constexpr int kClips = 10;
constexpr int kClipFrames = 300;

// Every joint turns about z and back, keyed every 30 frames, so that each frame evaluates every curve.
void KeyEveryJoint(int frames)
{
    for (int j = 0; j < SkinnedGridJointCount; ++j) {
        std::vector<standin::KeySpec> keys;
        for (int frame = 0; frame <= frames; frame += 30)
            keys.push_back({MTime(frame, MTime::kFilm), (frame / 30 % 2) * 0.2 + j * 0.001, standin::TangentType::Clamped,
                            standin::TangentType::Clamped});
        standin::Animate("bone" + std::to_string(j) + ".rotateZ", keys);
    }
    standin::SetPlaybackRange(MTime(0.0, MTime::kFilm), MTime(frames - 1, MTime::kFilm));
}

// A spine of 10 joints with nine limbs of 10 joints hanging from it, no joint deeper than 20; a strip of quads
// skinned to all of them. Every joint turns about x, y and z and moves along x, keyed every 10 frames with a
// tangent type that differs from channel to channel. Answers the number of joints.
int BuildCharacterScene(int frames)
{
    constexpr int kLimbs = 9;
    constexpr int kLimbJoints = 10;
    standin::NewScene();
    std::vector<MObject> joints;
    std::vector<std::string> names;
    auto addJoint = [&](const std::string& name, const MObject& parent, double x, double y) {
        joints.push_back(standin::CreateNode("joint", name, parent));
        names.push_back(name);
        standin::SetAttr(name + ".translate", x, y, 0.0);
    };
    for (int j = 0; j < kLimbJoints; ++j)
        addJoint("spine" + std::to_string(j), j == 0 ? MObject() : joints.back(), 0.0, j == 0 ? 100.0 : 8.0);
    for (int limb = 0; limb < kLimbs; ++limb)
        for (int j = 0; j < kLimbJoints; ++j)
            addJoint("limb" + std::to_string(limb) + "_" + std::to_string(j),
                     j == 0 ? joints[static_cast<size_t>(limb + 1)] : joints.back(), limb % 2 == 0 ? 6.0 : -6.0, 0.0);

    standin::MeshDescription strip;
    for (size_t j = 0; j < joints.size(); ++j)
        for (double y : {0.0, 1.0})
            strip.points.emplace_back(static_cast<double>(j), y, 0.0);
    standin::SkinWeights weights;
    for (size_t v = 0; v < strip.points.size(); ++v) {
        weights.Add(static_cast<unsigned int>(v / 2), 1.0);
        weights.EndVertex();
    }
    for (int q = 0; q + 1 < static_cast<int>(joints.size()); ++q) {
        strip.counts.push_back(4);
        for (int c : {2 * q, 2 * q + 1, 2 * q + 3, 2 * q + 2})
            strip.connects.push_back(c);
    }
    const MObject shape = standin::CreateMesh("bodyShape", standin::CreateNode("transform", "body"), strip);
    standin::Assign(standin::CreateShader("lambert", "skin"), shape);
    standin::SkinMesh(shape, joints, weights);
    standin::SaveBindPose(joints);

    constexpr standin::TangentType kTangents[] = {standin::TangentType::Linear, standin::TangentType::Spline,
                                                  standin::TangentType::Clamped, standin::TangentType::Step,
                                                  standin::TangentType::Flat};
    int channel = 0;
    for (size_t j = 0; j < names.size(); ++j)
        for (const char* attribute : {".rotateX", ".rotateY", ".rotateZ", ".translateX"}) {
            const standin::TangentType tangent = kTangents[channel++ % 5];
            std::vector<standin::KeySpec> keys;
            for (int frame = 0; frame <= frames; frame += 10)
                keys.push_back({MTime(frame, MTime::kFilm), 0.05 * ((frame / 10 + channel) % 7) + 0.001 * static_cast<double>(j),
                                tangent, tangent});
            standin::Animate(names[j] + attribute, keys);
        }
    standin::SetPlaybackRange(MTime(0.0, MTime::kFilm), MTime(frames - 1, MTime::kFilm));
    return static_cast<int>(joints.size());
}

VAnimationDescription Entry(const std::string& name, int32_t type, int32_t start, int32_t end)
{
    VAnimationDescription entry;
    entry.Name = name;
    entry.Type = type;
    entry.UseRange = 1;
    entry.RangeStart = start;
    entry.RangeEnd = end;
    entry.UseMaxFrames = 0;
    entry.Frames = 0;
    return entry;
}

// Sampling with the model harvested once: the benchmark times the animation phase alone.
void SampleRepeatedly(benchmark::State& benchState, HarvestParameters parameters, const VAnimationTable& table)
{
    KestrelReportMessage report;
    HarvestState state(parameters, report);
    state.StartExport();
    CountTriangles(state);
    EnterBindPose(state);
    VMModel model;
    GetMeshes(state, model, 3);
    model.Enumerate();
    for (auto _ : benchState) {
        VAnimationTable animations = table;
        SampleAnimations(state, model, animations);
        benchmark::DoNotOptimize(model.BoneAnimations.Count() + model.VertexAnimations.Count());
        model.BoneAnimations.Clear();
        model.VertexAnimations.Clear();
    }
}

void SampleTenClips(benchmark::State& benchState, int joints)
{
    VAnimationTable table;
    for (int c = 0; c < kClips; ++c)
        table.Add(Entry("clip" + std::to_string(c), kAnimTypeBone, c * kClipFrames, (c + 1) * kClipFrames - 1));
    HarvestParameters parameters;
    parameters.FormatKind = kFormatKindModel;
    parameters.Options.ExportBones = true;
    SampleRepeatedly(benchState, parameters, table);
    const double boneFrames = static_cast<double>(joints) * kClips * kClipFrames;
    benchState.counters["bone_frames"] = boneFrames;
    benchState.counters["ns_per_bone_frame"] = benchmark::Counter(
        boneFrames * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_SampleBoneAnimations(benchmark::State& benchState)
{
    BuildSkinnedGridScene(99, 10);
    KeyEveryJoint(kClips * kClipFrames);
    SampleTenClips(benchState, SkinnedGridJointCount);
}

BENCHMARK(BM_SampleBoneAnimations)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_SampleCharacterBoneAnimations(benchmark::State& benchState)
{
    SampleTenClips(benchState, BuildCharacterScene(kClips * kClipFrames));
}

BENCHMARK(BM_SampleCharacterBoneAnimations)->Unit(benchmark::kMillisecond)->Iterations(1);

// 400 x 250 quads: 100,651 vertices.
void BM_SampleMuscleAnimation(benchmark::State& benchState)
{
    constexpr int kFrames = 10;
    BuildSkinnedGridScene(400, 250);
    KeyEveryJoint(kFrames * 30);
    VAnimationTable table;
    table.Add(Entry("flex", kAnimTypeMuscle, 0, kFrames - 1));
    HarvestParameters parameters;
    parameters.FormatKind = kFormatKindModel;
    parameters.MuscleAnimation = true;
    SampleRepeatedly(benchState, parameters, table);
    benchState.counters["ms_per_frame"] = benchmark::Counter(
        kFrames * 1e-3, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK(BM_SampleMuscleAnimation)->Unit(benchmark::kMillisecond)->Iterations(2);

} // namespace
