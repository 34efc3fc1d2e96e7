#include "geometry/ModelBounds.h"
#include "geometry/PlaceModel.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

using testing::ElementsAre;
using testing::FloatEq;
using testing::FloatNear;
using testing::Pointwise;

// Vertices spanning x -1..3, y 0..2, z 5..9; a root bone at (1, 1, 1) with a child.
class PlaceModelTest : public testing::Test {
protected:
    PlaceModelTest()
    {
        a = AddSkinVertex(model, -1, 0, 5);
        b = AddSkinVertex(model, 3, 2, 9);
        c = AddSkinVertex(model, 3, 2, 9);
        root = AddBone(model, "root");
        child = AddBone(model, "child", root);
        SetTranslation(root->GlobalTransform, 1, 1, 1);
        SetTranslation(root->LocalTransform, 1, 1, 1);
        SetTranslation(child->GlobalTransform, 2, 1, 1);
        SetTranslation(child->LocalTransform, 1, 0, 0);
        ComputeModelBounds(model);
        model.CollisionBox = model.Box;
    }

    VMModel model;
    VMSkinVertex* a = nullptr;
    VMSkinVertex* b = nullptr;
    VMSkinVertex* c = nullptr;
    VMBone* root = nullptr;
    VMBone* child = nullptr;
};

struct CenterCase {
    int Method;
    float Offset[3];
};

class CenterModelTest : public PlaceModelTest, public testing::WithParamInterface<CenterCase> {};

TEST_P(CenterModelTest, MovesTheModelByMinusThePointOfTheMethod)
{
    const CenterCase& param = GetParam();
    CenterModel(model, param.Method);

    EXPECT_THAT(a->Position, Pointwise(FloatEq(), std::vector<float> {-1 + param.Offset[0], param.Offset[1],
                                                                      5 + param.Offset[2]}));
    EXPECT_THAT(root->GlobalTransform.Translation()[0], FloatEq(1 + param.Offset[0]));
    EXPECT_THAT(root->LocalTransform.Translation()[2], FloatEq(1 + param.Offset[2]));
    // A child's local transform is relative to its parent and does not move.
    EXPECT_THAT(child->LocalTransform.Translation()[0], FloatEq(1));
    EXPECT_THAT(model.CollisionBox.Min[2], FloatEq(5 + param.Offset[2]));
}

INSTANTIATE_TEST_SUITE_P(Methods, CenterModelTest,
                         testing::Values(CenterCase {0, {0, 0, 0}}, CenterCase {1, {-1, -1, -7}},
                                         CenterCase {2, {-5.0f / 3, -4.0f / 3, -23.0f / 3}},
                                         CenterCase {3, {-1, -1, -5}}, CenterCase {4, {-1, -1, -1}}));

std::vector<float> Translation(const VMTransform& transform)
{
    return {transform.Translation(), transform.Translation() + 3};
}

// A frame posing the bones where they stand, and a vertex track moving vertex a by (1, 0, 0).
TEST_F(PlaceModelTest, VerticesBonesBoxesFramesAndDeltasFollowMovingScalingAndTurning)
{
    a->Normal[0] = 1;
    model.Enumerate();
    VMAnimation* walk = VMModel::NewAnimation("walk", 1).release();
    model.BoneAnimations.Add(walk);
    walk->ExtractMotionDelta = 1;
    auto frame = VMAnimFrame::Create(VMAnimFrame::SampledCapacity, false);
    frame->AddBone(root, &root->LocalTransform, &root->GlobalTransform, nullptr);
    frame->AddBone(child, &child->LocalTransform, &child->GlobalTransform, nullptr);
    frame->Box = model.Box;
    frame->MotionTranslation[0] = 1;
    walk->AddFrame(std::move(frame), 0.0f, 1);
    auto track = std::make_unique<VMVertexTrack>();
    track->Deltas.push_back({a, {1, 0, 0}, {1, 0, 0}});
    walk->VertexTracks.Add(std::move(track));
    const VMAnimFrame& posed = *walk->Frames[0];

    const float offset[3] = {1, 1, 1};
    MoveModel(model, offset);
    EXPECT_THAT(Translation(posed.Local(0)), Pointwise(FloatEq(), std::vector<float> {0.0f, 0.0f, 0.0f}));
    EXPECT_THAT(Translation(posed.World(1)), Pointwise(FloatEq(), std::vector<float> {1.0f, 0.0f, 0.0f}));
    EXPECT_THAT(Translation(posed.Local(1)), Pointwise(FloatEq(), std::vector<float> {1.0f, 0.0f, 0.0f}));
    EXPECT_THAT(posed.Box.Min, Pointwise(FloatEq(), std::vector<float> {-2.0f, -1.0f, 4.0f}));
    EXPECT_EQ(posed.MotionTranslation[0], 1.0f);

    ScaleModel(model, 2.0f);
    EXPECT_THAT(b->Position, ElementsAre(4, 2, 16));
    EXPECT_THAT(Translation(child->GlobalTransform), Pointwise(FloatEq(), std::vector<float> {2.0f, 0.0f, 0.0f}));
    EXPECT_THAT(Translation(posed.World(1)), Pointwise(FloatEq(), std::vector<float> {2.0f, 0.0f, 0.0f}));
    EXPECT_THAT(Translation(posed.Local(1)), Pointwise(FloatEq(), std::vector<float> {2.0f, 0.0f, 0.0f}));
    EXPECT_EQ(posed.MotionTranslation[0], 2.0f);
    EXPECT_THAT(walk->VertexTracks[0]->Deltas[0].Position, Pointwise(FloatEq(), std::vector<float> {2.0f, 0.0f, 0.0f}));

    // A quarter turn about z with a move by (0, 0, 3): x goes to y.
    VMTransform turn;
    turn.At(0, 0) = turn.At(1, 1) = 0;
    turn.At(1, 0) = 1;
    turn.At(0, 1) = -1;
    SetTranslation(turn, 0, 0, 3);
    const VMBoundingBox unturned = model.Box;
    TransformModel(model, turn);
    EXPECT_THAT(Translation(posed.World(1)), Pointwise(FloatNear(1e-6f), std::vector<float> {0.0f, 2.0f, 3.0f}));
    EXPECT_THAT(Translation(posed.Local(0)), Pointwise(FloatNear(1e-6f), std::vector<float> {0.0f, 0.0f, 3.0f}));
    // The child's local transform is relative to the root and keeps its translation.
    EXPECT_THAT(Translation(posed.Local(1)), Pointwise(FloatEq(), std::vector<float> {2.0f, 0.0f, 0.0f}));
    EXPECT_THAT(posed.MotionTranslation, Pointwise(FloatNear(1e-6f), std::vector<float> {0.0f, 2.0f, 3.0f}));
    EXPECT_THAT(walk->VertexTracks[0]->Deltas[0].Position, Pointwise(FloatNear(1e-6f), std::vector<float> {0.0f, 2.0f, 0.0f}));
    EXPECT_THAT(walk->VertexTracks[0]->Deltas[0].Normal, Pointwise(FloatNear(1e-6f), std::vector<float> {0.0f, 1.0f, 0.0f}));
    EXPECT_THAT(a->Position, Pointwise(FloatNear(1e-6f), std::vector<float> {2, -4, 11}));
    EXPECT_THAT(a->Normal, Pointwise(FloatNear(1e-6f), std::vector<float> {0, 1, 0}));
    EXPECT_THAT(Translation(child->GlobalTransform), Pointwise(FloatNear(1e-6f), std::vector<float> {0, 2, 3}));
    EXPECT_THAT(Translation(child->LocalTransform), Pointwise(FloatEq(), std::vector<float> {2, 0, 0}));
    // The box turns with the model: x takes the former -y, y the former x.
    const std::vector<float> min {-unturned.Max[1], unturned.Min[0], unturned.Min[2] + 3};
    const std::vector<float> max {-unturned.Min[1], unturned.Max[0], unturned.Max[2] + 3};
    EXPECT_THAT(model.Box.Min, Pointwise(FloatNear(1e-6f), min));
    EXPECT_THAT(model.Box.Max, Pointwise(FloatNear(1e-6f), max));
}

TEST(ModelBounds, TheRadiusReachesTheFarthestCornerAndAnEmptyModelHasNone)
{
    VMModel model;
    ComputeModelBounds(model);
    EXPECT_TRUE(model.Box.IsEmpty());
    EXPECT_EQ(model.VisibilityRadius, 0.0f);

    AddSkinVertex(model, -1, 0, 5);
    AddSkinVertex(model, 3, 2, 9);
    ComputeModelBounds(model);
    EXPECT_THAT(model.Box.Min, ElementsAre(-1, 0, 5));
    EXPECT_FLOAT_EQ(model.VisibilityRadius, std::sqrt(9.0f + 4.0f + 81.0f));
}

} // namespace
