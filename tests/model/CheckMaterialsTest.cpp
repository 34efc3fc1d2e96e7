#include "model/CheckMaterials.h"

#include "model/ReplaceMaterial.h"
#include "model/VMModel.h"
#include "model/Validate.h"

#include "WorldBuilder.h"

#include <gtest/gtest.h>

namespace {

class CheckMaterialsTest : public testing::Test {
protected:
    CheckMaterialsTest()
    {
        a = AddVertex(world, 0, 0, 0);
        b = AddVertex(world, 1, 0, 0);
        c = AddVertex(world, 0, 1, 0);
    }

    VMWorld world;
    VMVertex* a = nullptr;
    VMVertex* b = nullptr;
    VMVertex* c = nullptr;
};

TEST_F(CheckMaterialsTest, ReplaceMaterialMovesPrimitivesVerticesAndUseCounts)
{
    VMMaterial* stone = AddMaterial(world, "stone");
    VMMaterial* wood = AddMaterial(world, "wood");
    VMPolygon* polygon = AddTriangle(world, a, b, c, stone);
    VMTriList* triList = VMWorld::NewTriList().release();
    triList->SetMaterial(stone);
    world.TriLists.Add(triList);
    VMPatch* patch = VMWorld::NewPatch(false).release();
    patch->SetMaterial(wood);
    world.Patches.Add(patch);
    a->MaterialLink = stone;
    b->MaterialLink = wood;

    ReplaceMaterial(world, stone, wood);

    EXPECT_EQ(polygon->Material(), wood);
    EXPECT_EQ(triList->Material(), wood);
    EXPECT_EQ(a->MaterialLink, wood);
    EXPECT_EQ(b->MaterialLink, wood);
    EXPECT_EQ(stone->UseCount, 0u);
    EXPECT_EQ(wood->UseCount, 3u);
    wood->UseCount = 0;
    polygon->SetMaterial(nullptr);
    EXPECT_EQ(wood->UseCount, 0u) << "use counts never drop below zero";
}

TEST_F(CheckMaterialsTest, UnusedMaterialsAreRemovedAndVertexLinksToThemCleared)
{
    VMMaterial* unused = AddMaterial(world, "unused");
    VMMaterial* stone = AddMaterial(world, "stone");
    AddTriangle(world, a, b, c, stone);
    c->MaterialLink = unused;

    EXPECT_EQ(CheckMaterials(world), 1);

    ASSERT_EQ(world.Materials.Count(), 1);
    EXPECT_EQ(world.Materials[0], stone);
    EXPECT_EQ(c->MaterialLink, nullptr);
    EXPECT_TRUE(Validate(world).empty());
}

TEST_F(CheckMaterialsTest, EqualMaterialsMergeIntoTheFirstWithTheSumOfTheUseCounts)
{
    VMMaterial* first = AddMaterial(world, "brick");
    VMMaterial* other = AddMaterial(world, "stone");
    VMMaterial* second = AddMaterial(world, "BRICK");
    second->DiffuseColour[1] = 0;
    VMMaterial* third = AddMaterial(world, "brick");
    third->UVTransform[2] = 0.5f;
    AddTriangle(world, a, b, c, first);
    AddTriangle(world, a, b, c, other);
    VMPolygon* merged = AddTriangle(world, a, b, c, second);
    AddTriangle(world, a, b, c, second);
    AddTriangle(world, a, b, c, third);
    b->MaterialLink = second;

    EXPECT_EQ(CheckMaterials(world), 2);

    ASSERT_EQ(world.Materials.Count(), 2);
    EXPECT_EQ(world.Materials[0], first);
    EXPECT_EQ(world.Materials[1], other);
    EXPECT_EQ(first->UseCount, 4u);
    EXPECT_EQ(merged->Material(), first);
    EXPECT_EQ(b->MaterialLink, first);
    EXPECT_TRUE(Validate(world).empty());
}

TEST(CheckModelMaterialsTest, EqualModelMaterialsMergeAcrossFaces)
{
    VMModel model;
    VMMaterial* first = VMModel::NewMaterial().release();
    VMMaterial* second = VMModel::NewMaterial().release();
    model.Materials.Add(first);
    model.Materials.Add(second);
    VMFace* face = VMModel::NewFace().release();
    VMFace* other = VMModel::NewFace().release();
    model.Faces.Add(face);
    model.Faces.Add(other);
    face->SetMaterial(second);
    other->SetMaterial(first);

    EXPECT_EQ(CheckMaterials(model), 1);

    ASSERT_EQ(model.Materials.Count(), 1);
    EXPECT_EQ(face->Material(), first);
    EXPECT_EQ(first->UseCount, 2u);
    EXPECT_TRUE(Validate(model).empty());
}

} // namespace
