#include "geometry/LimitInfluences.h"

#include "model/Validate.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using testing::ElementsAreArray;
using testing::FloatNear;
using testing::IsEmpty;
using testing::Pointwise;

struct Case {
    const char* Name;
    std::vector<float> Harvested;
    // The export options' switches as the model pipeline applies them: -1 skips a step.
    float ThresholdFirst;
    int Maximum;
    float ThresholdAfter;
    std::vector<int> Bones;
    std::vector<float> Weights;
};

class LimitInfluencesTest : public testing::TestWithParam<Case> {};

TEST_P(LimitInfluencesTest, LeavesTheExpectedBonesAndWeights)
{
    const Case& c = GetParam();
    VMModel model;
    std::vector<VMBone*> bones;
    for (size_t i = 0; i < c.Harvested.size(); ++i)
        bones.push_back(AddBone(model, "b" + std::to_string(i)));
    VMSkinVertex* vertex = AddSkinVertex(model, 0, 0, 0);
    for (size_t i = 0; i < c.Harvested.size(); ++i)
        AttachVertex(bones[i], vertex, c.Harvested[i]);

    if (c.ThresholdFirst >= 0) {
        EXPECT_EQ(ApplyBlendThreshold(model, c.ThresholdFirst), 0);
    }
    if (c.Maximum > 0) {
        EXPECT_EQ(LimitInfluences(model, c.Maximum), 0);
    }
    if (c.ThresholdAfter >= 0) {
        EXPECT_EQ(ApplyBlendThreshold(model, c.ThresholdAfter), 0);
    }

    std::vector<int> slotBones;
    for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot)
        slotBones.push_back(static_cast<int>(std::find(bones.begin(), bones.end(), vertex->InfluenceBones[slot]) -
                                             bones.begin()));
    EXPECT_EQ(slotBones, c.Bones);
    EXPECT_THAT(std::vector<float>(vertex->InfluenceWeights, vertex->InfluenceWeights + vertex->InfluenceCount),
                Pointwise(FloatNear(1e-4f), c.Weights));
    EXPECT_THAT(Validate(model), IsEmpty());
}

// A harvested vertex keeps the first four of 0.4, 0.3, 0.15, 0.1, 0.05: the fifth is refused.
INSTANTIATE_TEST_SUITE_P(
    FiveInfluences, LimitInfluencesTest,
    testing::Values(
        Case {"KeepsFourAndNormalises", {0.4f, 0.3f, 0.15f, 0.1f, 0.05f}, -1, 4, -1, {0, 1, 2, 3},
              {0.4f / 0.95f, 0.3f / 0.95f, 0.15f / 0.95f, 0.1f / 0.95f}},
        Case {"MaximumTwo", {0.4f, 0.3f, 0.15f, 0.1f, 0.05f}, -1, 2, -1, {0, 1}, {0.5714f, 0.4286f}},
        // 0.1/0.95 is below 0.2 and goes; after renormalising 0.15/0.85 goes; then 0.3/0.7 stays.
        Case {"ThresholdAfterEachRenormalisation", {0.4f, 0.3f, 0.15f, 0.1f, 0.05f}, -1, 0, 0.2f, {0, 1},
              {0.5714f, 0.4286f}},
        // 0.5 stays: only weights strictly below the threshold go.
        Case {"ThresholdIsStrict", {0.25f, 0.25f, 0.25f, 0.25f}, -1, 0, 0.5f, {2, 3}, {0.5f, 0.5f}},
        Case {"ThresholdNeverTakesTheLast", {0.3f, 0.3f, 0.4f}, -1, 0, 0.5f, {2}, {1.0f}},
        // Blending off: one bone at weight 1; of equal weakest the first goes.
        Case {"BlendingOff", {0.4f, 0.4f, 0.2f}, 0.001f, 1, -1, {1}, {1.0f}},
        Case {"BlendingOffOneInfluence", {0.3f}, 0.001f, 1, -1, {0}, {1.0f}}),
    [](const testing::TestParamInfo<Case>& paramInfo) { return paramInfo.param.Name; });

TEST(LimitInfluencesArguments, OutOfRangeValuesChangeNothing)
{
    VMModel model;
    VMBone* a = AddBone(model, "a");
    VMBone* b = AddBone(model, "b");
    VMSkinVertex* vertex = AddSkinVertex(model, 0, 0, 0);
    AttachVertex(a, vertex, 0.9f);
    AttachVertex(b, vertex, 0.05f);

    EXPECT_EQ(LimitInfluences(model, 0), -1);
    EXPECT_EQ(LimitInfluences(model, 5), -1);
    EXPECT_EQ(ApplyBlendThreshold(model, 0.6f), -1);
    EXPECT_EQ(ApplyBlendThreshold(model, -0.1f), -1);

    EXPECT_EQ(vertex->InfluenceCount, 2u);
    EXPECT_EQ(vertex->InfluenceWeights[1], 0.05f);
}

} // namespace
