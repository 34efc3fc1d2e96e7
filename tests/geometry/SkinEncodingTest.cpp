#include "geometry/ModelBounds.h"
#include "geometry/SkinEncoding.h"

#include "model/Validate.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SkinEncodingTest : public testing::Test {
protected:
    SkinEncodingTest()
    {
        // The upper arm lies at x = 10; the lower arm at x = 20, turned a quarter about z.
        upper = AddBone(model, "upper");
        lower = AddBone(model, "lower", upper);
        SetTranslation(upper->GlobalTransform, 10, 0, 0);
        lower->GlobalTransform.At(0, 0) = 0;
        lower->GlobalTransform.At(1, 0) = 1;
        lower->GlobalTransform.At(0, 1) = -1;
        lower->GlobalTransform.At(1, 1) = 0;
        SetTranslation(lower->GlobalTransform, 20, 0, 0);
        model.HasBones = 1;
        elbow = AddSkinVertex(model, 21, 0, 0);
        elbow->Normal[0] = 1;
        AttachVertex(upper, elbow, 0.25f);
        AttachVertex(lower, elbow, 0.75f);
    }

    VMModel model;
    VMBone* upper = nullptr;
    VMBone* lower = nullptr;
    VMSkinVertex* elbow = nullptr;
};

TEST_F(SkinEncodingTest, EachSlotHoldsThePositionInItsBonesSpaceAndTheNormalIsInTheFirstBones)
{
    EXPECT_EQ(EncodeVertices(model), 0);

    EXPECT_THAT(elbow->SlotPositions[0], ElementsAre(11, 0, 0));
    EXPECT_THAT(elbow->SlotPositions[1], ElementsAre(0, -1, 0));
    EXPECT_THAT(elbow->SlotNormal, ElementsAre(1, 0, 0));
}

TEST_F(SkinEncodingTest, AVertexWithoutInfluencesIsBoundToTheRootAndReported)
{
    VMSkinVertex* loose = AddSkinVertex(model, 10, 0, 3);
    model.Skeleton->Root = lower;

    EXPECT_EQ(EncodeVertices(model), -1);

    EXPECT_THAT(std::vector<VMBone*>(loose->InfluenceBones, loose->InfluenceBones + loose->InfluenceCount),
                ElementsAre(lower));
    EXPECT_EQ(loose->InfluenceWeights[0], 1.0f);
    EXPECT_THAT(Validate(model), IsEmpty());
}

TEST_F(SkinEncodingTest, WithoutBonesTheSlotHoldsThePositionAndAnEmptySkeletonDropsTheClaim)
{
    VMModel plain;
    plain.HasBones = 1;
    plain.Skeleton = VMModel::NewSkeleton();
    VMSkinVertex* vertex = AddSkinVertex(plain, 1, 2, 3);
    vertex->Normal[2] = 1;

    EXPECT_EQ(EncodeVertices(plain), 0);

    EXPECT_EQ(plain.HasBones, 0);
    EXPECT_THAT(vertex->SlotPositions[0], ElementsAre(1, 2, 3));
    EXPECT_THAT(vertex->SlotNormal, ElementsAre(0, 0, 1));
}

TEST_F(SkinEncodingTest, BoneBoxesSpanTheirVerticesInBoneSpace)
{
    AttachVertex(upper, AddSkinVertex(model, 10, 0, 4), 1.0f);
    EncodeVertices(model);
    ComputeBoneBounds(*model.Skeleton);
    VMBone* unused = AddBone(model, "unused");
    ComputeBoneBounds(*model.Skeleton);

    EXPECT_THAT(upper->Box.Min, ElementsAre(0, 0, 0));
    EXPECT_THAT(upper->Box.Max, ElementsAre(11, 0, 4));
    EXPECT_THAT(lower->Box.Min, ElementsAre(0, -1, 0));
    EXPECT_THAT(unused->Box.Max, ElementsAre(0, 0, 0));
}

} // namespace
