#include "model/AttachVertex.h"

#include "model/VMBone.h"
#include "model/VMSkinVertex.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace {

class AttachVertexTest : public ::testing::Test {
protected:
    std::array<VMBone, 6> bones;
    VMSkinVertex vertex;

    std::vector<const VMBone*> SlotBones() const
    {
        return {vertex.InfluenceBones, vertex.InfluenceBones + vertex.InfluenceCount};
    }
    std::vector<float> SlotWeights() const
    {
        return {vertex.InfluenceWeights, vertex.InfluenceWeights + vertex.InfluenceCount};
    }
};

TEST_F(AttachVertexTest, AFullVertexRefusesAWeakerFifthInfluenceAndTradesItsWeakestForAStrongerOne)
{
    const float weights[5] = {0.4f, 0.3f, 0.15f, 0.1f, 0.05f};
    for (int b = 0; b < 4; ++b)
        ASSERT_EQ(AttachVertex(&bones[b], &vertex, weights[b]), 0);
    EXPECT_EQ(AttachVertex(&bones[4], &vertex, weights[4]), -1);
    EXPECT_TRUE(bones[4].Vertices.empty());
    EXPECT_EQ(SlotWeights(), (std::vector<float>{0.4f, 0.3f, 0.15f, 0.1f}));
    // Equal to the weakest is not stronger.
    EXPECT_EQ(AttachVertex(&bones[4], &vertex, 0.1f), -1);

    EXPECT_EQ(AttachVertex(&bones[5], &vertex, 0.2f), 0);
    EXPECT_EQ(SlotBones(), (std::vector<const VMBone*>{&bones[0], &bones[1], &bones[2], &bones[5]}));
    EXPECT_EQ(SlotWeights(), (std::vector<float>{0.4f, 0.3f, 0.15f, 0.2f}));
    EXPECT_TRUE(bones[3].Vertices.empty());
    EXPECT_TRUE(bones[3].Weights.empty());
    EXPECT_EQ(bones[5].Vertices, (std::vector<VMSkinVertex*>{&vertex}));
    EXPECT_EQ(bones[5].Weights, (std::vector<float>{0.2f}));
}

TEST_F(AttachVertexTest, WeightsBelowOneIn1024AreNotStored)
{
    EXPECT_EQ(AttachVertex(&bones[0], &vertex, 0.0009765f), 0);
    EXPECT_EQ(vertex.InfluenceCount, 0u);
    EXPECT_EQ(AttachVertex(&bones[0], &vertex, kSmallestStoredWeight), 0);
    EXPECT_EQ(vertex.InfluenceCount, 1u);
    EXPECT_EQ(AttachVertex(nullptr, &vertex, 1.0f), -1);
    EXPECT_EQ(AttachVertex(&bones[0], nullptr, 1.0f), -1);
}

TEST_F(AttachVertexTest, DetachingMovesLaterSlotsAndEntriesUpOnBothSides)
{
    VMSkinVertex other;
    AttachVertex(&bones[0], &other, 1.0f);
    for (int b = 0; b < 3; ++b)
        AttachVertex(&bones[b], &vertex, 0.1f * static_cast<float>(b + 1));

    EXPECT_EQ(DetachVertex(&bones[0], &vertex), 0);
    EXPECT_EQ(SlotBones(), (std::vector<const VMBone*>{&bones[1], &bones[2]}));
    EXPECT_EQ(SlotWeights(), (std::vector<float>{0.2f, 0.3f}));
    EXPECT_EQ(bones[0].Vertices, (std::vector<VMSkinVertex*>{&other}));
    EXPECT_EQ(bones[0].Weights, (std::vector<float>{1.0f}));

    EXPECT_EQ(DetachVertex(&bones[0], &vertex), -1);
    EXPECT_EQ(DetachVertex(&bones[3], &vertex), -1);
}

}
