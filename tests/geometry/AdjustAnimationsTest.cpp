#include "geometry/AdjustAnimations.h"
#include "geometry/BoneAnimationBounds.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::FloatNear;
using testing::Pointwise;

constexpr float Degree = 3.14159265f / 180.0f;

VMTransform TurnAboutZ(float radians)
{
    VMTransform turn;
    turn.At(0, 0) = turn.At(1, 1) = std::cos(radians);
    turn.At(1, 0) = std::sin(radians);
    turn.At(0, 1) = -std::sin(radians);
    return turn;
}

std::vector<float> Column(const VMTransform& transform, int column)
{
    return {transform.At(0, column), transform.At(1, column), transform.At(2, column)};
}

// A root "hip" bound at (5, 0, 0) with a child "leg" one unit below it; frame k poses the hip
// as poseOfFrame(k) and keeps the leg hanging below it.
class AdjustAnimationsTest : public testing::Test {
protected:
    AdjustAnimationsTest()
    {
        SetTranslation(hip->GlobalTransform, 5, 0, 0);
        hip->LocalTransform = hip->GlobalTransform;
        SetTranslation(leg->LocalTransform, 0, 0, -1);
        leg->GlobalTransform = hip->GlobalTransform * leg->LocalTransform;
        model.Enumerate();
    }

    template <class Pose>
    VMAnimation& Sample(int frames, Pose poseOfFrame)
    {
        VMAnimation* animation = VMModel::NewAnimation("walk", frames).release();
        model.BoneAnimations.Add(animation);
        animation->ExtractMotionDelta = 1;
        for (int k = 0; k < frames; ++k) {
            auto frame = VMAnimFrame::Create(VMAnimFrame::SampledCapacity, false);
            const VMTransform hipPose = poseOfFrame(k);
            const VMTransform legPose = hipPose * leg->LocalTransform;
            frame->AddBone(hip, nullptr, &hipPose, nullptr);
            frame->AddBone(leg, nullptr, &legPose, nullptr);
            frame->Close();
            animation->AddFrame(std::move(frame), static_cast<float>(k), 41);
        }
        return *animation;
    }

    VMModel model;
    VMBone* hip = AddBone(model, "hip");
    VMBone* leg = AddBone(model, "leg", hip);
};

TEST_F(AdjustAnimationsTest, ARootTurningTenDegreesAFrameAboutZRecordsTheTurnAndFacesFrameZero)
{
    VMAnimation& turning = Sample(4, [&](int k) { return hip->GlobalTransform * TurnAboutZ(10.0f * Degree * k); });
    turning.RotationAxis[2] = 1;

    EXPECT_EQ(AdjustAnimations(model, true), 0);

    std::vector<float> recorded;
    for (const VMAnimFrame* frame : turning.Frames) {
        recorded.push_back(frame->MotionRotation[2]);
        EXPECT_THAT(Column(frame->World(0), 0), Pointwise(FloatNear(1e-5f), std::vector<float> {1, 0, 0}));
        EXPECT_THAT(Column(frame->Local(0), 1), Pointwise(FloatNear(1e-5f), std::vector<float> {0, 1, 0}));
        EXPECT_THAT(Column(frame->World(1), 0), Pointwise(FloatNear(1e-5f), std::vector<float> {1, 0, 0}));
    }
    EXPECT_THAT(recorded, Pointwise(FloatNear(1e-4f), std::vector<float> {0, -10, -20, -30}));
}

struct MoveCase {
    bool NewRotationDeltas;
    float RootLocalX;
    // Where the leg's world x ends in frame 2.
    float LegWorldX;
};

class MoveXTest : public AdjustAnimationsTest, public testing::WithParamInterface<MoveCase> {};

// The hip walks 2 units along x a frame from its bound place, and rises 1 along z a frame.
TEST_P(MoveXTest, TheRootsTravelAlongXBecomesMotionAndTheRootStaysPut)
{
    VMAnimation& walking = Sample(3, [&](int k) {
        VMTransform pose = hip->GlobalTransform;
        SetTranslation(pose, 5.0f + 2.0f * k, 0, static_cast<float>(k));
        return pose;
    });
    walking.Move[0] = 1;

    EXPECT_EQ(AdjustAnimations(model, GetParam().NewRotationDeltas), 0);

    for (int k = 0; k < 3; ++k) {
        const VMAnimFrame& frame = *walking.Frames[k];
        EXPECT_FLOAT_EQ(frame.MotionTranslation[0], 2.0f * k);
        EXPECT_FLOAT_EQ(frame.Local(0).Translation()[0], GetParam().RootLocalX);
        // Axes without the flag keep the travel.
        EXPECT_FLOAT_EQ(frame.Local(0).Translation()[2], static_cast<float>(k));
    }
    EXPECT_FLOAT_EQ(walking.Frames[2]->World(1).Translation()[0], GetParam().LegWorldX);
}

// With new rotation deltas the root's own local translation is what is taken from the bones
// after it, and that is 0 once the root is put back, so the leg keeps its travel.
INSTANTIATE_TEST_SUITE_P(NewRotationDeltas, MoveXTest,
                         testing::Values(MoveCase {true, 0.0f, 9.0f}, MoveCase {false, 5.0f, 5.0f}));

TEST_F(AdjustAnimationsTest, AModelWithoutRootOrFramesIsLeftAsItIs)
{
    EXPECT_EQ(AdjustAnimations(model, true), 0);

    VMAnimation& walking = Sample(2, [&](int k) {
        VMTransform pose = hip->GlobalTransform;
        SetTranslation(pose, 5.0f + k, 0, 0);
        return pose;
    });
    walking.Move[0] = 1;
    model.Skeleton.reset();
    EXPECT_EQ(AdjustAnimations(model, true), -1);
    EXPECT_EQ(walking.Frames[1]->World(0).Translation()[0], 6.0f);
    EXPECT_EQ(walking.Frames[1]->MotionTranslation[0], 0.0f);
}

// Two vertices below the hip, the second half on the leg; the hip rises 1 along z a frame.
TEST_F(AdjustAnimationsTest, EachFramesBoxHoldsTheSkinPosedByThatFrame)
{
    VMSkinVertex* top = AddSkinVertex(model, 5, 0, 0);
    VMSkinVertex* foot = AddSkinVertex(model, 5, 1, -1);
    AttachVertex(hip, top, 1.0f);
    AttachVertex(hip, foot, 0.5f);
    AttachVertex(leg, foot, 0.5f);
    for (VMSkinVertex* vertex : model.Vertices) {
        for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot) {
            VMTransform inverse;
            Invert(vertex->InfluenceBones[slot]->GlobalTransform, inverse);
            inverse.TransformPoint(vertex->Position, vertex->SlotPositions[slot]);
        }
    }
    VMAnimation& rising = Sample(2, [&](int k) {
        VMTransform pose = hip->GlobalTransform;
        pose.Translation()[2] = static_cast<float>(k);
        return pose;
    });

    ComputeBoneAnimationBounds(model);

    EXPECT_EQ(rising.HasBoundaries, 1);
    EXPECT_THAT(rising.Frames[0]->Box.Min, ElementsAre(5, 0, -1));
    EXPECT_THAT(rising.Frames[1]->Box.Max, ElementsAre(5, 1, 1));
    EXPECT_THAT(rising.Box.Min, ElementsAre(5, 0, -1));
    EXPECT_THAT(rising.Box.Max, ElementsAre(5, 1, 1));
}

} // namespace
