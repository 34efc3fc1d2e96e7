#include "model/VMModel.h"

#include <gtest/gtest.h>

namespace {

TEST(VMModelTest, EnumerationNumbersBonesInSkeletonOrderThenVerticesAndMaterials)
{
    VMModel model;
    model.Skeleton = VMModel::NewSkeleton();
    VMBone* first = VMModel::NewBone().release();
    VMBone* second = VMModel::NewBone().release();
    model.Skeleton->Bones.Add(first);
    model.Skeleton->Bones.Add(second);
    for (int i = 0; i < 3; ++i)
        model.Vertices.Add(VMModel::NewVertex());
    model.Materials.Add(VMModel::NewMaterial());
    model.Materials.Add(VMModel::NewMaterial());

    EXPECT_EQ(model.Enumerate(), 0);

    EXPECT_EQ(first->Index, 0);
    EXPECT_EQ(second->Index, 1);
    EXPECT_EQ(model.Vertices[2]->Index, 2u);
    EXPECT_EQ(model.Materials[1]->Index, 1);
}

TEST(VMModelTest, ClearResetsTheModelForTheNextExport)
{
    VMModel model;
    model.Skeleton = VMModel::NewSkeleton();
    VMMaterial* skin = VMModel::NewMaterial().release();
    model.Materials.Add(skin);
    VMFace* face = VMModel::NewFace().release();
    face->SetMaterial(skin);
    model.Faces.Add(face);
    model.BoneAnimations.Add(VMModel::NewAnimation("walk", 10));
    const float point[3] = {1, 2, 3};
    model.Box.Grow(point);
    model.HasBones = 1;
    model.VisibilityRadius = 4.0f;

    model.Clear();

    EXPECT_EQ(model.Skeleton, nullptr);
    EXPECT_EQ(model.Materials.Count(), 0);
    EXPECT_EQ(model.Faces.Count(), 0);
    EXPECT_EQ(model.BoneAnimations.Count(), 0);
    EXPECT_TRUE(model.Box.IsEmpty());
    EXPECT_EQ(model.HasBones, 0);
    EXPECT_EQ(model.VisibilityRadius, 0.0f);
}

} // namespace
