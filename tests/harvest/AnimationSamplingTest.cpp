#include "HarvestTestScene.h"

#include "harvest/FrameTimes.h"
#include "harvest/GetKeyFrames.h"
#include "harvest/ModelMeshExporter.h"
#include "harvest/SampleAnimations.h"
#include "model/VMModel.h"
#include "report/VIssueKind.h"
#include "settings/VAnimationTable.h"

#include <maya/MAnimControl.h>
#include <maya/MGlobal.h>

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace {

using namespace harvesttest;
using namespace standin;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::FloatNear;
using testing::Pointwise;

// The film unit's playback range 1 to 24: ticks 1000 to 24000.
VTimeBase FilmRange(int32_t start, int32_t end)
{
    VTimeBase base;
    base.StartFrame = start;
    base.EndFrame = end;
    base.Duration = end - start + 1;
    base.TicksPerFrame = 1000;
    base.StartTick = start * 1000;
    base.EndTick = end * 1000;
    return base;
}

struct FrameTimesCase {
    const char* Name;
    int32_t Type;
    bool Looped;
    bool KeyFrames;
    std::vector<int32_t> Times;
    std::vector<int32_t> Durations;
};

class FrameTimesTest : public testing::TestWithParam<FrameTimesCase> {};

// Keys at frames 5, 10, 10 and 20 (the repeat counts once), playback range 1 to 30.
TEST_P(FrameTimesTest, TimesAndDurationsFollowTheEntry)
{
    const FrameTimesCase& c = GetParam();
    VAnimationDescription entry;
    entry.Type = c.Type;
    entry.Looped = c.Looped;
    entry.UseMaxFrames = c.KeyFrames;
    const KeyTimeSet keys {5000, 10000, 10000, 20000};
    const VTimeBase base = c.KeyFrames ? FilmRange(1, 30) : FilmRange(1, 24);

    EXPECT_EQ(ComputeFrameTimes(entry, base, keys), FrameTimesResult::Sampled);

    ASSERT_EQ(entry.KeyFrameCount, static_cast<int32_t>(c.Times.size()));
    const auto count = static_cast<std::ptrdiff_t>(entry.KeyFrameCount);
    EXPECT_THAT(std::vector<int32_t>(entry.KeyFrameTimes.begin(), entry.KeyFrameTimes.begin() + count),
                ElementsAreArray(c.Times));
    EXPECT_THAT(std::vector<int32_t>(entry.KeyFrameDurations.begin(), entry.KeyFrameDurations.begin() + count),
                ElementsAreArray(c.Durations));
}

std::vector<int32_t> Every(int32_t first, int32_t step, int count, int32_t last)
{
    std::vector<int32_t> values;
    for (int i = 0; i < count; ++i)
        values.push_back(first + step * i);
    values.back() = last;
    return values;
}

// Looped, 24 samples share the 23000 ticks between start and end, each truncated.
std::vector<int32_t> LoopedFilmTimes()
{
    std::vector<int32_t> times;
    for (int i = 0; i < 24; ++i)
        times.push_back(i * 23000 / 24 + 1000);
    return times;
}

std::vector<int32_t> LoopedFilmDurations()
{
    const std::vector<int32_t> times = LoopedFilmTimes();
    std::vector<int32_t> durations;
    for (size_t i = 0; i + 1 < times.size(); ++i)
        durations.push_back(times[i + 1] - times[i]);
    durations.push_back(24000 - times.back());
    return durations;
}

INSTANTIATE_TEST_SUITE_P(
    Entries, FrameTimesTest,
    testing::Values(FrameTimesCase {"FilmFramesOnePerFrame", kAnimTypeBone, false, false, Every(1000, 1000, 24, 24000),
                                    Every(1000, 0, 24, 1)},
                    FrameTimesCase {"FilmFramesLooped", kAnimTypeBone, true, false, LoopedFilmTimes(),
                                    LoopedFilmDurations()},
                    FrameTimesCase {"KeyFramesWithStartAndEnd", kAnimTypeBone, false, true,
                                    {1000, 5000, 10000, 20000, 30000}, {4000, 5000, 10000, 10000, 1}},
                    FrameTimesCase {"KeyFramesLoopedLeaveTheEndOut", kAnimTypeMuscle, true, true,
                                    {1000, 5000, 10000, 20000}, {4000, 5000, 10000, 10000}},
                    FrameTimesCase {"MorphTargetOnce", kAnimTypeMorphTarget, false, false, {1000}, {0}}),
    [](const testing::TestParamInfo<FrameTimesCase>& param) { return param.param.Name; });

TEST(FrameTimes, OwnRangesBeforeZeroOrBackwardsAreInvalidAndTooManyFramesAreCut)
{
    VAnimationDescription entry;
    entry.UseRange = 1;
    entry.RangeStart = -1;
    entry.RangeEnd = 5;
    EXPECT_EQ(ComputeFrameTimes(entry, FilmRange(1, 24), {}), FrameTimesResult::InvalidRange);
    entry.RangeStart = 6;
    EXPECT_EQ(ComputeFrameTimes(entry, FilmRange(1, 24), {}), FrameTimesResult::InvalidRange);

    entry.UseRange = 0;
    entry.UseMaxFrames = 0;
    entry.Frames = 9000;
    EXPECT_EQ(ComputeFrameTimes(entry, FilmRange(1, 24), {}), FrameTimesResult::Capped);
    EXPECT_EQ(entry.KeyFrameCount, 8191);
    EXPECT_EQ(entry.KeyFrameTimes[8190], 24000);

    KeyTimeSet keys;
    for (int32_t k = 0; k < 9000; ++k)
        keys.insert(1000 + k);
    entry.UseMaxFrames = 1;
    EXPECT_EQ(ComputeFrameTimes(entry, FilmRange(1, 24), keys), FrameTimesResult::Capped);
    EXPECT_EQ(entry.KeyFrameCount, 8191);
    EXPECT_EQ(entry.KeyFrameTimes[8190], 9190);
}

// A model export's harvest: bones, and every reuse of a vertex split for muscle animations.
class AnimationSamplingTest : public HarvestTest {
protected:
    void SetUp() override
    {
        HarvestTest::SetUp();
        parameters.FormatKind = kFormatKindModel;
        parameters.MuscleAnimation = true;
        SetPlaybackRange(MTime(1.0, MTime::kFilm), MTime(3.0, MTime::kFilm));
    }

    VAnimationDescription& Add(const char* name, int32_t type)
    {
        VAnimationDescription entry;
        entry.Name = name;
        entry.Type = type;
        entry.UseMaxFrames = 0;
        animations.Add(entry);
        return animations[animations.Count() - 1];
    }

    void Harvest()
    {
        GetMeshes(State(), model, 3);
        model.Enumerate();
    }

    static KeySpec Key(double frame, double value)
    {
        return {MTime(frame, MTime::kFilm), value, TangentType::Linear, TangentType::Linear};
    }

    // The two quads with a UV per vertex and a shader.
    static void Quads()
    {
        const MObject shape = CreateMesh("quadsShape", CreateNode("transform", "quads"), TwoQuads());
        SetUVs(shape, {"map1", {0, 0.5f, 1, 0, 0.5f, 1}, {1, 1, 1, 0, 0, 0}, {3, 4, 1, 0, 4, 5, 2, 1}});
        Assign(CreateShader("lambert", "skin"), shape);
    }

    VMModel model;
    VAnimationTable animations;
};

TEST_F(AnimationSamplingTest, KeyTimesComeFromEveryAnimatedNodeOrFromTheSelectedOnes)
{
    CreateNode("transform", "left");
    CreateNode("transform", "right");
    Animate("left.translateX", {Key(2, 0), Key(7.5, 1)});
    Animate("right.rotateY", {Key(4, 0), Key(7.5, 1)});

    KeyTimeSet keys;
    EXPECT_EQ(GetKeyFrames(State(), FilmRange(1, 3), keys), 0);
    EXPECT_THAT(keys, ElementsAre(2000, 4000, 7500));

    Select({PathTo("right")});
    parameters.SelectionOnly = true;
    HarvestState selected(parameters, report);
    keys.clear();
    EXPECT_EQ(GetKeyFrames(selected, FilmRange(1, 3), keys), 0);
    EXPECT_THAT(keys, ElementsAre(4000, 7500));
}

// The hip walks 10 cm along Maya's x from frame 1 to 3, which the engine's x keeps.
TEST_F(AnimationSamplingTest, ABoneAnimationHoldsTheSkeletonsPoseAtEveryFrame)
{
    parameters.Options.ExportBones = true;
    CreateNode("joint", "hip");
    Animate("hip.translateX", {Key(1, 0), Key(3, 10)});
    Harvest();
    VAnimationDescription& walk = Add("walk", kAnimTypeBone);
    walk.MotionDelta = 1;
    walk.MoveX = 1;
    walk.RotationAxis = 3;

    SampleAnimations(State(), model, animations);

    ASSERT_EQ(model.BoneAnimations.Count(), 1);
    const VMAnimation& animation = *model.BoneAnimations[0];
    EXPECT_EQ(animation.Name, "walk");
    ASSERT_EQ(animation.FrameCount(), 3);
    std::vector<float> x;
    for (const VMAnimFrame* frame : animation.Frames)
        x.push_back(frame->World(0).Translation()[0]);
    EXPECT_THAT(x, Pointwise(FloatNear(1e-5f), std::vector<float> {0, 5, 10}));
    EXPECT_FLOAT_EQ(animation.Keys[2].Time, 2.0f / 24.0f);
    EXPECT_EQ(animation.Keys[0].DurationMs, 41);
    EXPECT_EQ(animation.Keys[2].DurationMs, 0);
    EXPECT_EQ(animation.ExtractMotionDelta, 1);
    EXPECT_THAT(animation.Move, ElementsAre(1, 0, 0));
    EXPECT_THAT(animation.RotationAxis, ElementsAre(0, 0, 1));
    // The posed skeleton is the last frame's, and Maya stays there.
    EXPECT_FLOAT_EQ(model.Skeleton->Bones[0]->PosedWorldTransform.Translation()[0], 10.0f);
    EXPECT_DOUBLE_EQ(MAnimControl::currentTime().as(MTime::kFilm), 3.0);
}

TEST_F(AnimationSamplingTest, EntriesThatCannotBeSampledAreReportedAndLeftOut)
{
    Harvest();
    Add("dance", 4);
    Add("wave", kAnimTypeBone);
    VAnimationDescription& backwards = Add("backwards", kAnimTypeMuscle);
    backwards.UseRange = 1;
    backwards.RangeStart = 5;
    backwards.RangeEnd = 2;

    SampleAnimations(State(), model, animations);

    EXPECT_TRUE(model.BoneAnimations.IsEmpty());
    EXPECT_TRUE(model.VertexAnimations.IsEmpty());
    EXPECT_THAT(report.Details(IssueUnknownAnimationType), ElementsAre("dance"));
    EXPECT_EQ(report.Count(IssueNoBonesInAnimation), 1);
    EXPECT_THAT(report.Details(IssueAnimationWithoutFrames), ElementsAre("backwards"));
    EXPECT_NE(DebugText().find("Animation dance has unknown animation type 4\r\n"), std::string::npos);
}

// 0---1---2   two quads on Maya's xy plane, tilted about x by a degree at frame 2 and moved along
// |   |   |   x by 0.0005 at frame 3. The tilt moves the top edge by 0.017 and turns every normal
// 3---4---5   by 0.017; the bottom edge stays on the axis.
TEST_F(AnimationSamplingTest, VerticesThatMoveLessThanTheThresholdAndKeepTheirNormalGiveNoDelta)
{
    Quads();
    Animate("quads.rotateX", {Key(1, 0), Key(2, std::numbers::pi / 180), Key(3, 0)});
    Animate("quads.translateX", {Key(2, 0), Key(3, 0.0005)});
    Harvest();
    Add("tilt", kAnimTypeMuscle);

    SampleAnimations(State(), model, animations);

    ASSERT_EQ(model.VertexAnimations.Count(), 1);
    const VMAnimation& tilt = *model.VertexAnimations[0];
    ASSERT_EQ(tilt.FrameCount(), 3);
    EXPECT_TRUE(tilt.VertexTracks[0]->Deltas.empty());
    EXPECT_TRUE(tilt.VertexTracks[2]->Deltas.empty());
    const std::vector<VMVertexDelta>& tilted = tilt.VertexTracks[1]->Deltas;
    // Every corner is a vertex of its own, so that each can move on its own.
    ASSERT_EQ(model.Vertices.Count(), 8);
    ASSERT_EQ(tilted.size(), 8u);
    for (const VMVertexDelta& delta : tilted) {
        const bool farEdge = delta.Vertex->Position[2] > 0.5f;
        const float sine = std::sin(std::numbers::pi_v<float> / 180);
        EXPECT_NEAR(delta.Position[1], farEdge ? -sine : 0.0f, 1e-6f);
        // The tilted normal itself, Maya's (0, -sin, cos) in engine axes.
        EXPECT_NEAR(delta.Normal[2], -sine, 1e-6f);
    }
}

TEST_F(AnimationSamplingTest, AMorphTargetIsOneFrameOfDeltasAtItsStart)
{
    Quads();
    Animate("quads.translateY", {Key(1, 0), Key(2, 3)});
    Harvest();
    VAnimationDescription& smile = Add("smile", kAnimTypeMorphTarget);
    smile.UseRange = 1;
    smile.RangeStart = 2;
    smile.RangeEnd = 3;

    SampleAnimations(State(), model, animations);

    ASSERT_EQ(model.VertexAnimations.Count(), 1);
    const VMAnimation& morph = *model.VertexAnimations[0];
    ASSERT_EQ(morph.FrameCount(), 1);
    EXPECT_EQ(morph.Keys[0].DurationMs, 0);
    ASSERT_EQ(morph.VertexTracks[0]->Deltas.size(), static_cast<size_t>(model.Vertices.Count()));
    EXPECT_FLOAT_EQ(morph.VertexTracks[0]->Deltas[0].Position[2], 3.0f);
}

} // namespace
