#include "model/Validate.h"

#include "model/VMModel.h"

#include "WorldBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// One triangle of one material, listed by one vis area.
struct SmallWorld {
    SmallWorld()
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

TEST(ValidateWorldTest, EachBrokenLinkIsReportedAlone)
{
    EXPECT_THAT(Validate(SmallWorld().world), IsEmpty());
    VMVertex stray;
    VMMaterial foreign;
    const std::pair<std::function<void(SmallWorld&)>, const char*> faults[] = {
        {[](SmallWorld& w) { w.stone->UseCount = 3; }, "material 0 has use count 3 but 1 users"},
        {[&](SmallWorld& w) { w.polygon->Corners[1] = &stray; }, "polygon 0 corner 1 is not a vertex of the world"},
        {[](SmallWorld& w) {
             AddVertex(w.world, 5, 5, 5);
             w.world.Vertices.RemoveLeaveEmpty(3);
         },
         "vertex slot 3 is empty"},
        // The world's own material loses its only user, so its count of 0 is exact again.
        {[&](SmallWorld& w) { w.polygon->SetMaterial(&foreign); },
         "polygon 0 uses a material that is not in the material list"},
        {[](SmallWorld& w) {
             const std::vector<VMVertex*>& corners = w.polygon->Corners;
             w.area->AddPolygon(AddTriangle(w.world, corners[0], corners[1], corners[2], w.stone));
         },
         "vis area 0 lists a polygon that does not name it as owner"},
        {[](SmallWorld& w) {
             VMTriList* triList = VMWorld::NewTriList().release();
             triList->Corners = {w.polygon->Corners[0], w.polygon->Corners[1]};
             w.world.TriLists.Add(triList);
         },
         "tri-list 0 has 2 corners, not a multiple of 3"},
    };
    for (const auto& [fault, problem] : faults) {
        SmallWorld broken;
        fault(broken);
        EXPECT_THAT(Validate(broken.world), ElementsAre(problem));
    }
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
