#include "model/Validate.h"

#include "model/VMModel.h"

#include "WorldBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ValidateWorldTest : public testing::Test {
protected:
    ValidateWorldTest()
    {
        stone = AddMaterial(world, "stone");
        VMVertex* a = AddVertex(world, 0, 0, 0);
        VMVertex* b = AddVertex(world, 1, 0, 0);
        VMVertex* c = AddVertex(world, 0, 1, 0);
        polygon = AddTriangle(world, a, b, c, stone);
        area = AddVisArea(world, "hall");
        area->Link(*polygon);
    }

    VMWorld world;
    VMMaterial* stone = nullptr;
    VMPolygon* polygon = nullptr;
    VMVisArea* area = nullptr;
};

TEST_F(ValidateWorldTest, ASoundWorldHasNoProblems)
{
    EXPECT_THAT(Validate(world), IsEmpty());
}

TEST_F(ValidateWorldTest, AWrongUseCountIsReported)
{
    stone->UseCount = 3;
    EXPECT_THAT(Validate(world), ElementsAre("material 0 has use count 3 but 1 users"));
}

TEST_F(ValidateWorldTest, ACornerOutsideTheVertexListIsReported)
{
    VMVertex stray;
    polygon->Corners[1] = &stray;
    EXPECT_THAT(Validate(world), ElementsAre("polygon 0 corner 1 is not a vertex of the world"));
}

TEST_F(ValidateWorldTest, AnEmptySlotLeftAfterRemovalIsReported)
{
    AddVertex(world, 5, 5, 5);
    world.Vertices.RemoveLeaveEmpty(3);
    EXPECT_THAT(Validate(world), ElementsAre("vertex slot 3 is empty"));
}

TEST_F(ValidateWorldTest, AMaterialFromAnotherContainerIsReported)
{
    VMMaterial foreign;
    polygon->SetMaterial(&foreign);
    // The world's own material lost its only user, so its count of 0 is exact again.
    EXPECT_THAT(Validate(world), ElementsAre("polygon 0 uses a material that is not in the material list"));
    polygon->SetMaterial(stone);
}

TEST_F(ValidateWorldTest, AnOneSidedVisAreaListingIsReported)
{
    VMPolygon* unowned = AddTriangle(world, polygon->Corners[0], polygon->Corners[1], polygon->Corners[2], stone);
    area->AddPolygon(unowned);
    EXPECT_THAT(Validate(world), ElementsAre("vis area 0 lists a polygon that does not name it as owner"));
}

TEST_F(ValidateWorldTest, ATriListWithAPartialTriangleIsReported)
{
    VMTriList* triList = VMWorld::NewTriList().release();
    triList->Corners = {polygon->Corners[0], polygon->Corners[1]};
    world.TriLists.Add(triList);
    EXPECT_THAT(Validate(world), ElementsAre("tri-list 0 has 2 corners, not a multiple of 3"));
}

TEST(ValidateModelTest, ABoneThatListsAVertexWhichDoesNotNameItIsReported)
{
    VMModel model;
    model.Skeleton = VMModel::NewSkeleton();
    VMBone* bone = VMModel::NewBone().release();
    model.Skeleton->Bones.Add(bone);
    VMSkinVertex* vertex = VMModel::NewVertex().release();
    model.Vertices.Add(vertex);
    bone->Vertices.push_back(vertex);
    bone->Weights.push_back(1.0f);
    EXPECT_THAT(Validate(model), ElementsAre("bone 0 lists a vertex that does not name it"));

    vertex->InfluenceCount = 1;
    vertex->InfluenceBones[0] = bone;
    vertex->InfluenceWeights[0] = 1.0f;
    EXPECT_THAT(Validate(model), IsEmpty());
}

TEST(ValidateModelTest, AVertexTrackMovingAForeignVertexIsReported)
{
    VMModel model;
    VMAnimation* animation = VMModel::NewAnimation("smile", 1).release();
    model.VertexAnimations.Add(animation);
    VMSkinVertex stray;
    auto track = std::make_unique<VMVertexTrack>();
    track->Deltas.push_back({&stray, {0, 0, 1}, {0, 0, 0}});
    animation->AddVertexFrame(std::move(track), 0.0f, 0);
    EXPECT_THAT(Validate(model), ElementsAre("vertex animation 0 moves a vertex that is not in the model"));
}

} // namespace
