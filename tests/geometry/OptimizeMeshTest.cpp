#include "geometry/OptimizeMesh.h"

#include "model/Validate.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Two triangles sharing the edge p1-p2 through four vertices, where v3 is a second vertex at p1:
//
//   p0 ── p1 (v1, v3)
//    │  ╱  │
//   p2 ── p4
//
// v3 starts identical to v1; each case changes one thing about it.
class OptimizeMeshTest : public testing::Test {
protected:
    OptimizeMeshTest()
    {
        skin = AddModelMaterial(model, "skin");
        a = AddBone(model, "a");
        b = AddBone(model, "b");
        v0 = AddSkinVertex(model, 0, 1, 0);
        v1 = AddSkinVertex(model, 1, 1, 0);
        v2 = AddSkinVertex(model, 0, 0, 0);
        v3 = AddSkinVertex(model, 1, 1, 0);
        v4 = AddSkinVertex(model, 1, 0, 0);
        for (VMSkinVertex* v : {v0, v1, v2, v3, v4}) {
            v->BaseUV[0] = v->Position[0];
            v->Normal[2] = 1;
        }
        AddFace(model, {v0, v1, v2}, skin);
        AddFace(model, {v2, v3, v4}, skin);
    }

    void Bind(VMSkinVertex* v, float weightA)
    {
        AttachVertex(a, v, weightA);
        AttachVertex(b, v, 1.0f - weightA);
    }

    VMModel model;
    VMMaterial* skin = nullptr;
    VMBone* a = nullptr;
    VMBone* b = nullptr;
    VMSkinVertex *v0 = nullptr, *v1 = nullptr, *v2 = nullptr, *v3 = nullptr, *v4 = nullptr;
};

TEST_F(OptimizeMeshTest, IdenticalVerticesMergeIntoTheFirstAndItsBonesForgetTheOther)
{
    Bind(v1, 0.5f);
    // The same influences in the other slot order are the same influences.
    AttachVertex(b, v3, 0.5f);
    AttachVertex(a, v3, 0.5f);
    v3->Position[2] = -0.0f;
    v4->Source = v3;

    // A negative tolerance merges nothing.
    EXPECT_EQ(OptimizeMesh(model, -1.0f), 0);
    EXPECT_EQ(model.Vertices.Count(), 5);
    EXPECT_EQ(OptimizeMesh(model, 0.0f), 0);

    EXPECT_EQ(v4->Source, v1);
    EXPECT_THAT(Items(model.Vertices), ElementsAre(v0, v1, v2, v4));
    EXPECT_THAT(model.Faces[1]->Corners(), ElementsAre(v2, v1, v4));
    EXPECT_THAT(a->Vertices, ElementsAre(v1));
    EXPECT_EQ(v4->Index, 3u);
    EXPECT_THAT(Validate(model), IsEmpty());
}

struct Difference {
    const char* Name;
    std::function<void(VMSkinVertex&)> Change;
};

class OptimizeMeshDifferenceTest : public OptimizeMeshTest, public testing::WithParamInterface<Difference> {};

TEST_P(OptimizeMeshDifferenceTest, KeepsBothVerticesAndLinksTheLaterToTheEarlier)
{
    Bind(v1, 0.5f);
    Bind(v3, 0.5f);
    GetParam().Change(*v3);

    EXPECT_EQ(OptimizeMesh(model, 0.0f), 0);

    EXPECT_EQ(model.Vertices.Count(), 5);
    EXPECT_EQ(v3->IdLink, v1);
    EXPECT_EQ(v1->IdLink, nullptr);
    EXPECT_THAT(Validate(model), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    OneField, OptimizeMeshDifferenceTest,
    testing::Values(
        Difference {"Weight", [](VMSkinVertex& v) { v.InfluenceWeights[0] = 0.5001f; v.InfluenceBones[0]->Weights[v.InfluenceEntries[0]] = 0.5001f; }},
        Difference {"SecondUV", [](VMSkinVertex& v) { v.SecondUV[1] = 0.25f; }},
        Difference {"Tangent", [](VMSkinVertex& v) { v.Tangent[0] = 1; }},
        Difference {"Colour", [](VMSkinVertex& v) { v.Colour[3] = 0; }},
        Difference {"NaN", [](VMSkinVertex& v) { v.Normal[0] = std::numeric_limits<float>::quiet_NaN(); }},
        Difference {"InfluenceCount", [](VMSkinVertex& v) { DetachSlot(v, 1); }}),
    [](const testing::TestParamInfo<Difference>& paramInfo) { return paramInfo.param.Name; });

TEST_F(OptimizeMeshTest, VerticesThatMoveDifferentlyInOneFrameStaySeparate)
{
    Bind(v1, 0.5f);
    Bind(v3, 0.5f);
    VMAnimation* muscle = VMModel::NewAnimation("flex", 2).release();
    model.VertexAnimations.Add(muscle);
    for (float lift : {0.0f, 0.5f}) {
        auto track = std::make_unique<VMVertexTrack>();
        // Frame 0 moves both alike (v3 by an entry equal to its own values); frame 1 only v1.
        track->Deltas.push_back({v1, {1, 1, lift}, {0, 0, 1}});
        if (lift == 0.0f)
            track->Deltas.push_back({v3, {1, 1, 0}, {0, 0, 1}});
        muscle->AddVertexFrame(std::move(track), lift, 0);
    }

    EXPECT_EQ(OptimizeMesh(model, 0.0f), 0);
    EXPECT_EQ(model.Vertices.Count(), 5);

    // Without the second frame's move the two are one vertex, and the track loses v3's entry.
    muscle->VertexTracks[1]->Deltas[0].Position[2] = 0;
    EXPECT_EQ(OptimizeMesh(model, 0.0f), 0);
    EXPECT_EQ(model.Vertices.Count(), 4);
    EXPECT_EQ(muscle->VertexTracks[0]->Deltas.size(), 1u);
    EXPECT_THAT(Validate(model), IsEmpty());
}

} // namespace
