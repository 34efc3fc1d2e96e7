#include "model/SkinInfluences.h"

#include "model/Validate.h"

#include "ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::FloatEq;
using testing::IsEmpty;

class SkinInfluencesTest : public testing::Test {
protected:
    SkinInfluencesTest()
    {
        for (const char* name : {"b0", "b1", "b2", "b3", "b4"})
            bones.push_back(AddBone(model, name));
        vertex = AddSkinVertex(model, 0, 0, 0);
    }

    std::vector<const VMBone*> SlotBones() const
    {
        return std::vector<const VMBone*>(vertex->InfluenceBones, vertex->InfluenceBones + vertex->InfluenceCount);
    }
    std::vector<float> SlotWeights() const
    {
        return std::vector<float>(vertex->InfluenceWeights, vertex->InfluenceWeights + vertex->InfluenceCount);
    }

    VMModel model;
    std::vector<VMBone*> bones;
    VMSkinVertex* vertex = nullptr;
};

TEST_F(SkinInfluencesTest, AFullVertexRefusesAWeakerFifthInfluence)
{
    const float weights[5] = {0.4f, 0.3f, 0.15f, 0.1f, 0.05f};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(AttachVertex(bones[i], vertex, weights[i]), 0);

    EXPECT_EQ(AttachVertex(bones[4], vertex, weights[4]), -1);

    EXPECT_THAT(SlotBones(), ElementsAre(bones[0], bones[1], bones[2], bones[3]));
    EXPECT_TRUE(bones[4]->Vertices.empty());
    EXPECT_THAT(Validate(model), IsEmpty());
}

TEST_F(SkinInfluencesTest, AStrongerFifthInfluenceReplacesTheFirstWeakestAndTakesTheLastSlot)
{
    for (int i = 0; i < 4; ++i)
        AttachVertex(bones[i], vertex, i == 1 || i == 3 ? 0.1f : 0.4f);

    EXPECT_EQ(AttachVertex(bones[4], vertex, 0.2f), 0);

    EXPECT_THAT(SlotBones(), ElementsAre(bones[0], bones[2], bones[3], bones[4]));
    EXPECT_THAT(SlotWeights(), ElementsAre(0.4f, 0.4f, 0.1f, 0.2f));
    EXPECT_TRUE(bones[1]->Vertices.empty());
    EXPECT_THAT(Validate(model), IsEmpty());
}

TEST_F(SkinInfluencesTest, WeightsBelowOneOver1024AttachNothing)
{
    EXPECT_EQ(AttachVertex(bones[0], vertex, 0.0005f), 0);
    EXPECT_EQ(AttachVertex(bones[0], vertex, std::numeric_limits<float>::quiet_NaN()), 0);
    EXPECT_EQ(AttachVertex(bones[0], nullptr, 0.5f), -1);

    EXPECT_EQ(vertex->InfluenceCount, 0u);
    EXPECT_TRUE(bones[0]->Vertices.empty());
}

TEST_F(SkinInfluencesTest, DetachingKeepsBothSidesInStepWhenTheBoneMovesAnotherEntry)
{
    VMSkinVertex* second = AddSkinVertex(model, 1, 0, 0);
    VMSkinVertex* third = AddSkinVertex(model, 2, 0, 0);
    for (VMSkinVertex* v : {vertex, second, third}) {
        AttachVertex(bones[0], v, 0.5f);
        AttachVertex(bones[1], v, 0.5f);
    }

    EXPECT_EQ(DetachVertex(bones[0], vertex), 0);
    EXPECT_EQ(DetachVertex(bones[0], vertex), -1);
    // The bone's last entry now fills the freed place; detaching it must still find it.
    EXPECT_EQ(DetachVertex(bones[0], third), 0);

    EXPECT_THAT(bones[0]->Vertices, ElementsAre(second));
    EXPECT_THAT(SlotBones(), ElementsAre(bones[1]));
    EXPECT_THAT(Validate(model), IsEmpty());
}

TEST_F(SkinInfluencesTest, NormalizingScalesBothSidesUnlessTheSumIsNearOneOrNearZero)
{
    AttachVertex(bones[0], vertex, 0.4f);
    AttachVertex(bones[1], vertex, 0.3f);
    EXPECT_EQ(NormalizeWeights(*vertex), 0);
    EXPECT_THAT(SlotWeights(), ElementsAre(FloatEq(0.4f / 0.7f), FloatEq(0.3f / 0.7f)));
    EXPECT_THAT(bones[1]->Weights, ElementsAre(FloatEq(0.3f / 0.7f)));

    VMSkinVertex* nearOne = AddSkinVertex(model, 1, 0, 0);
    AttachVertex(bones[0], nearOne, 0.99995f);
    EXPECT_EQ(NormalizeWeights(*nearOne), 0);
    EXPECT_EQ(nearOne->InfluenceWeights[0], 0.99995f);

    VMSkinVertex* none = AddSkinVertex(model, 2, 0, 0);
    EXPECT_EQ(NormalizeWeights(*none), -1);
    EXPECT_THAT(Validate(model), IsEmpty());
}

} // namespace
