#include "model/VMVertex.h"

#include "model/VMMaterial.h"

#include <gtest/gtest.h>

namespace {

TEST(VMVertexTest, ACopyTakesEveryFieldButTheColourAndTheSiblings)
{
    VMMaterial material;
    VMVertex other;
    VMVertex source;
    source.Position[1] = 2.0f;
    source.Normal[2] = 1.0f;
    source.BaseUV[0] = 0.25f;
    source.SecondUV[1] = 0.75f;
    source.Tangent[0] = 1.0f;
    source.Colour[0] = 10;
    source.Colour[3] = 20;
    source.SmoothingMask = 6;
    source.Index = 4;
    source.MaterialLink = &material;
    source.MergeLink = &other;
    source.GroupNumber = 3;
    source.Siblings.Add(&other);
    source.UseCount = 5;
    source.State = 4;

    const auto copy = source.Copy();

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->Position[1], 2.0f);
    EXPECT_EQ(copy->Normal[2], 1.0f);
    EXPECT_EQ(copy->BaseUV[0], 0.25f);
    EXPECT_EQ(copy->SecondUV[1], 0.75f);
    EXPECT_EQ(copy->Tangent[0], 1.0f);
    EXPECT_EQ(copy->SmoothingMask, 6u);
    EXPECT_EQ(copy->Index, 4u);
    EXPECT_EQ(copy->MaterialLink, &material);
    EXPECT_EQ(copy->MergeLink, &other);
    EXPECT_EQ(copy->GroupNumber, 3u);
    EXPECT_EQ(copy->UseCount, 5u);
    EXPECT_EQ(copy->State, 4u);
    EXPECT_EQ(copy->Colour[0], 255);
    EXPECT_EQ(copy->Colour[3], 255);
    EXPECT_TRUE(copy->Siblings.IsEmpty());
}

TEST(VMVertexTest, ACopyOwnsItsOwnCopyOfTheAttachment)
{
    VMVertex source;
    EXPECT_EQ(source.Copy()->Attachment, nullptr);
    source.Attachment = std::make_unique<VMVertexAttachment>();
    source.Attachment->Data = {1, 2, 3};

    const auto copy = source.Copy();

    ASSERT_NE(copy->Attachment, nullptr);
    EXPECT_NE(copy->Attachment.get(), source.Attachment.get());
    EXPECT_EQ(copy->Attachment->Data, (std::vector<uint8_t> {1, 2, 3}));
    source.Attachment->Data[0] = 9;
    EXPECT_EQ(copy->Attachment->Data[0], 1);
}

} // namespace
