#include "model/VMFace.h"

#include "model/VMMaterial.h"
#include "model/VMSkinVertex.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(VMFaceTest, AddingACornerGrowsBothArraysAtTheEnd)
{
    VMSkinVertex a, b;
    VMFace face;
    EXPECT_EQ(face.AddCorner(&a), 0);
    EXPECT_EQ(face.AddCorner(&b), 0);
    EXPECT_EQ(face.CornerCount(), 2);
    EXPECT_EQ(face.Corner(1), &b);
    EXPECT_EQ(face.CornerLink(1), nullptr);
}

TEST(VMFaceTest, ReversingKeepsTheSecondArrayInStep)
{
    VMSkinVertex a, b, c, linked;
    VMFace face;
    face.AddCorner(&a);
    face.AddCorner(&b);
    face.AddCorner(&c);
    face.SetCornerLink(0, &linked);

    face.ReverseCorners();

    EXPECT_EQ(face.Corners(), (std::vector<VMSkinVertex*> {&c, &b, &a}));
    EXPECT_EQ(face.CornerLink(2), &linked);
    EXPECT_EQ(face.CornerLink(0), nullptr);
}

TEST(VMFaceTest, AssigningAMaterialMovesTheUseCount)
{
    VMMaterial stone, wood;
    {
        VMFace face;
        face.SetMaterial(&stone);
        EXPECT_EQ(stone.UseCount, 1u);
        face.SetMaterial(&wood);
        EXPECT_EQ(stone.UseCount, 0u);
        EXPECT_EQ(wood.UseCount, 1u);
        face.SetMaterial(&wood);
        EXPECT_EQ(wood.UseCount, 1u);
    }
    EXPECT_EQ(wood.UseCount, 0u);
}

} // namespace
