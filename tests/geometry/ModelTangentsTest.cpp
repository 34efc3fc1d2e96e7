#include "geometry/ModelTangents.h"

#include "model/Validate.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::Pointwise;

std::vector<float> Tangent(const VMSkinVertex* vertex)
{
    return {vertex->Tangent[0], vertex->Tangent[1], vertex->Tangent[2]};
}

//  v3 ─── v2        (0,1) ─── (1,1)     positions and texture coordinates: the left triangle
//   │  B ╱ │          │       ╱│        v0 v2 v3 has v3's u at 2, so its u runs from right to
//   │  ╱ A │          │  (2,1) │        left while A's runs from left to right: a mirrored seam
//  v0 ─── v1        (0,0) ─── (1,0)     along v0-v2.
TEST(ModelTangents, AMirroredSeamSplitsItsVerticesAndTheCopiesKeepTheirBones)
{
    VMModel model;
    VMBone* bone = AddBone(model, "bone");
    VMMaterial* skin = AddModelMaterial(model, "skin");
    const float corners[4][4] = {{0, 0, 0, 0}, {1, 0, 1, 0}, {1, 1, 1, 1}, {0, 1, 2, 1}};
    std::vector<VMSkinVertex*> v;
    for (const auto& corner : corners) {
        VMSkinVertex* vertex = AddSkinVertex(model, corner[0], corner[1], 0);
        vertex->BaseUV[0] = corner[2];
        vertex->BaseUV[1] = corner[3];
        vertex->Normal[2] = 1;
        AttachVertex(bone, vertex, 1.0f);
        v.push_back(vertex);
    }
    AddFace(model, {v[0], v[1], v[2]}, skin);
    AddFace(model, {v[0], v[2], v[3]}, skin);

    EXPECT_EQ(ComputeModelTangents(model), 0);

    ASSERT_EQ(model.Vertices.Count(), 6);
    VMSkinVertex* v0Copy = model.Vertices[4];
    VMSkinVertex* v2Copy = model.Vertices[5];
    EXPECT_THAT(model.Faces[0]->Corners(), ElementsAre(v[0], v[1], v[2]));
    EXPECT_THAT(model.Faces[1]->Corners(), ElementsAre(v0Copy, v2Copy, v[3]));
    EXPECT_THAT(v0Copy->Position, ElementsAre(0, 0, 0));
    EXPECT_EQ(v0Copy->Source, v[0]);
    EXPECT_THAT(v2Copy->BaseUV, ElementsAre(1, 1));
    // A's frame has (N x T) . B > 0 and is stored at the length that marks it; B's is not.
    EXPECT_THAT(Tangent(v[0]), Pointwise(FloatNear(1e-6f), std::vector<float> {1.7320508f, 0, 0}));
    EXPECT_THAT(Tangent(v[3]), Pointwise(FloatNear(1e-6f), std::vector<float> {-1, 0, 0}));
    EXPECT_THAT(Tangent(v0Copy), Pointwise(FloatNear(1e-6f), std::vector<float> {-1, 0, 0}));
    EXPECT_EQ(v0Copy->InfluenceCount, 1u);
    EXPECT_EQ(bone->Vertices.size(), 6u);
    EXPECT_EQ(model.HasTangents, 1);
    EXPECT_THAT(Validate(model), IsEmpty());
}

TEST(ModelTangents, ATriangleWithoutTextureMappingGivesTheFallbackTangent)
{
    VMModel model;
    VMMaterial* skin = AddModelMaterial(model, "skin");
    VMSkinVertex* a = AddSkinVertex(model, 0, 0, 0);
    VMSkinVertex* b = AddSkinVertex(model, 1, 0, 0);
    VMSkinVertex* c = AddSkinVertex(model, 0, 1, 0);
    AddFace(model, {a, b, c}, skin);

    EXPECT_EQ(ComputeModelTangents(model), 0);

    EXPECT_EQ(model.Vertices.Count(), 3);
    EXPECT_THAT(Tangent(a), ElementsAre(0, 0, 0));
}

} // namespace
