#include "geometry/FixModelID.h"
#include "geometry/SortModelPrimitives.h"
#include "geometry/TessellateFaces.h"

#include "model/Validate.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

//  v3 ── v2
//   │ ╲  │     the quad v0 v1 v2 v3 splits along one of its diagonals;
//  v0 ── v1    the triangle before it keeps its place
TEST(TessellateFaces, AQuadBecomesTwoTrianglesAfterTheFacesThatNeedNoSplit)
{
    VMModel model;
    VMMaterial* cloth = AddModelMaterial(model, "cloth");
    VMMaterial* skin = AddModelMaterial(model, "skin");
    VMSkinVertex* v0 = AddSkinVertex(model, 0, 0, 0);
    VMSkinVertex* v1 = AddSkinVertex(model, 1, 0, 0);
    VMSkinVertex* v2 = AddSkinVertex(model, 1, 1, 0);
    VMSkinVertex* v3 = AddSkinVertex(model, 0, 1, 0);
    AddFace(model, {v0, v1, v2, v3}, cloth);
    AddFace(model, {v0, v2, v3}, skin);

    EXPECT_EQ(TessellateFaces(model), 0);

    ASSERT_EQ(model.Faces.Count(), 3);
    EXPECT_EQ(model.Faces[0]->Material(), skin);
    EXPECT_THAT(model.Faces[1]->Corners(), ElementsAre(v0, v1, v2));
    EXPECT_THAT(model.Faces[2]->Corners(), ElementsAre(v2, v3, v0));
    EXPECT_EQ(model.Faces[2]->Material(), cloth);
    EXPECT_EQ(cloth->UseCount, 2u);
    EXPECT_THAT(Validate(model), IsEmpty());
}

TEST(SortModelPrimitives, FacesFollowTheirMaterialAndVerticesTheirFirstBone)
{
    VMModel model;
    model.HasBones = 1;
    VMBone* b0 = AddBone(model, "b0");
    VMBone* b1 = AddBone(model, "b1");
    VMBone* b2 = AddBone(model, "b2");
    VMMaterial* m0 = AddModelMaterial(model, "m0");
    VMMaterial* m1 = AddModelMaterial(model, "m1");
    VMSkinVertex* onB2 = AddSkinVertex(model, 0, 0, 0);
    VMSkinVertex* onB1 = AddSkinVertex(model, 1, 0, 0);
    VMSkinVertex* alsoB1 = AddSkinVertex(model, 0, 0, 0);
    VMSkinVertex* onB0 = AddSkinVertex(model, 0, 1, 0);
    AttachVertex(b2, onB2, 1.0f);
    AttachVertex(b1, onB1, 0.6f);
    AttachVertex(b0, onB1, 0.4f);
    AttachVertex(b1, alsoB1, 1.0f);
    AttachVertex(b0, onB0, 1.0f);
    VMFace* late = AddFace(model, {onB2, onB1, onB0}, m1);
    VMFace* early = AddFace(model, {onB0, onB1, alsoB1}, m0);
    VMFace* secondOfM1 = AddFace(model, {alsoB1, onB1, onB0}, m1);
    VMAnimation* muscle = VMModel::NewAnimation("m", 1).release();
    model.VertexAnimations.Add(muscle);
    auto track = std::make_unique<VMVertexTrack>();
    track->Deltas = {{onB2, {}, {}}, {onB0, {}, {}}};
    muscle->AddVertexFrame(std::move(track), 0, 0);

    EXPECT_EQ(SortPrimitives(model), 0);

    EXPECT_THAT(Items(model.Faces), ElementsAre(early, late, secondOfM1));
    EXPECT_THAT(Items(model.Vertices), ElementsAre(onB0, onB1, alsoB1, onB2));
    EXPECT_EQ(onB2->Index, 3u);
    // ID links follow the new order: the earlier of the two vertices at the origin is the first.
    EXPECT_EQ(onB2->IdLink, alsoB1);
    EXPECT_EQ(alsoB1->IdLink, nullptr);
    EXPECT_EQ(muscle->VertexTracks[0]->Deltas[0].Vertex, onB0);
    EXPECT_THAT(Validate(model), IsEmpty());
}

TEST(FixModelID, LinksEachVertexToTheFirstAtExactlyItsPosition)
{
    VMModel model;
    VMSkinVertex* first = AddSkinVertex(model, 1, 2, 3);
    VMSkinVertex* near = AddSkinVertex(model, 1, 2, 3.00001f);
    VMSkinVertex* same = AddSkinVertex(model, 1, 2, 3);
    VMSkinVertex* again = AddSkinVertex(model, 1, 2, 3);
    same->IdLink = near;

    EXPECT_EQ(FixModelID(model), 0);

    EXPECT_EQ(first->IdLink, nullptr);
    EXPECT_EQ(near->IdLink, nullptr);
    EXPECT_EQ(same->IdLink, first);
    EXPECT_EQ(again->IdLink, first);
}

} // namespace
