// The animation phase of a model export on the skinned grid's chain of 100 joints: ten bone animations of
// 300 frames each with every joint keyed (cost per bone and frame), and a muscle animation of a 100k-vertex
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

void BM_SampleBoneAnimations(benchmark::State& benchState)
{
    BuildSkinnedGridScene(99, 10);
    KeyEveryJoint(kClips * kClipFrames);
    VAnimationTable table;
    for (int c = 0; c < kClips; ++c)
        table.Add(Entry("clip" + std::to_string(c), kAnimTypeBone, c * kClipFrames, (c + 1) * kClipFrames - 1));
    HarvestParameters parameters;
    parameters.FormatKind = kFormatKindModel;
    parameters.Options.ExportBones = true;
    SampleRepeatedly(benchState, parameters, table);
    const double boneFrames = static_cast<double>(SkinnedGridJointCount) * kClips * kClipFrames;
    benchState.counters["bone_frames"] = boneFrames;
    benchState.counters["ns_per_bone_frame"] = benchmark::Counter(
        boneFrames * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK(BM_SampleBoneAnimations)->Unit(benchmark::kMillisecond)->Iterations(1);

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
