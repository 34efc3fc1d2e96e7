#include "model/VMAnimFrame.h"

#include "model/VMAnimation.h"
#include "model/VMBone.h"

#include <gtest/gtest.h>

namespace {

VMTransform Translation(float x, float y, float z)
{
    VMTransform t;
    t.Translation()[0] = x;
    t.Translation()[1] = y;
    t.Translation()[2] = z;
    return t;
}

TEST(VMAnimFrameTest, AFrameRefusesABoneBeyondItsCapacityOrWhenFullAndACorruptCapacityMakesNone)
{
    auto frame = VMAnimFrame::Create(2, false);
    ASSERT_NE(frame, nullptr);
    VMBone inside, outside, unnumbered, first;
    inside.Index = 1;
    outside.Index = 2;
    first.Index = 0;
    EXPECT_EQ(frame->AddBone(&inside, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(frame->AddBone(&outside, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(frame->AddBone(&unnumbered, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(frame->AddBone(&first, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(frame->AddBone(&first, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(frame->BoneCount(), 2);
    EXPECT_EQ(VMAnimFrame::Create(-1, false), nullptr);
    EXPECT_EQ(VMAnimFrame::Create(VMAnimFrame::MaxCapacity + 1, true), nullptr);
}

TEST(VMAnimFrameTest, AMissingTransformIsTheIdentityAndAScaleIsKeptOnlyWithAScaleArray)
{
    auto frame = VMAnimFrame::Create(VMAnimFrame::SampledCapacity, true);
    auto withoutScales = VMAnimFrame::Create(1, false);
    VMBone bone;
    bone.Index = 3;
    const VMTransform world = Translation(1, 2, 3);
    const float scale[3] = {2, 3, 4};
    frame->AddBone(&bone, nullptr, &world, scale);
    EXPECT_TRUE(frame->Local(3).IsIdentity());
    EXPECT_EQ(frame->World(3).Translation()[2], 3.0f);
    EXPECT_EQ(frame->Scale(3)[1], 3.0f);
    bone.Index = 0;
    withoutScales->AddBone(&bone, nullptr, nullptr, scale);
    EXPECT_EQ(withoutScales->Scale(0), nullptr);
}

TEST(VMAnimFrameTest, ClosingMakesEachLocalTransformRelativeToTheParentsWorld)
{
    auto frame = VMAnimFrame::Create(2, false);
    VMBone root, child;
    root.Index = 0;
    child.Index = 1;
    child.Parent = &root;
    const VMTransform rootWorld = Translation(10, 0, 0);
    const VMTransform childWorld = Translation(12, 3, 0);
    frame->AddBone(&root, nullptr, &rootWorld, nullptr);
    frame->AddBone(&child, nullptr, &childWorld, nullptr);

    frame->Close();

    EXPECT_EQ(frame->Local(0).Translation()[0], 10.0f);
    EXPECT_FLOAT_EQ(frame->Local(1).Translation()[0], 2.0f);
    EXPECT_FLOAT_EQ(frame->Local(1).Translation()[1], 3.0f);
}

TEST(VMAnimationTest, FramesAndKeysRunParallel)
{
    VMAnimation animation("walk", 2);
    EXPECT_EQ(animation.AddFrame(VMAnimFrame::Create(1, false), 0.0f, 41), 0);
    EXPECT_EQ(animation.AddFrame(nullptr, 0.5f, 41), -1);
    EXPECT_EQ(animation.AddFrame(VMAnimFrame::Create(1, false), 0.5f, 41), 0);
    EXPECT_EQ(animation.AddFrame(VMAnimFrame::Create(1, false), 1.0f, 1), 0);
    EXPECT_EQ(animation.FrameCount(), 3);
    EXPECT_EQ(animation.Frames.Count(), 3);
    EXPECT_EQ(animation.Keys[2].Time, 1.0f);
    EXPECT_GE(animation.FrameCapacity(), 3);
}

} // namespace
