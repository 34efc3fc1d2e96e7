#include "TestWorlds.h"

#include "formats/ResourcesXml.h"
#include "model/VMModel.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

TEST(ResourcesXmlTest, DocumentListsResourcesWithTheirAttributes)
{
    VResourceList list;
    list.PathType = ResourcePathRelative;
    AddResource(list, ResourceTexture, "\\Textures\\wall.dds");
    AddResource(list, ResourceFile, "/readme.txt");
    list.Resources.back().CustomInts = {1, -2};

    EXPECT_EQ(MakeResourcesXml(list),
              "<root>\r\n"
              "    <Resources Version=\"1\" Count=\"2\" PathType=\"Relative\">\r\n"
              "        <Resource Manager=\"Textures\" Filename=\"Textures\\wall.dds\" Size=\"1\" />\r\n"
              "        <Resource Manager=\"FILE\" Filename=\"readme.txt\" CustomInt=\"1,-2\" Size=\"1\" />\r\n"
              "    </Resources>\r\n"
              "</root>\r\n");
}

TEST(ResourcesXmlTest, SameFileOfTheSameKindInAnotherCaseIsListedOnceButOfAnotherKindAgain)
{
    VMWorld world;
    AddMaterial(world, "a").DiffuseTexture = "Wall.dds";
    AddMaterial(world, "b").NormalMap = "WALL.DDS";

    const VResourceList list = CollectResources(world);

    ASSERT_EQ(list.Resources.size(), 1u);
    EXPECT_EQ(list.Resources[0].Manager, "Textures");

    VResourceList other;
    AddResource(other, ResourceTexture, "x.dat");
    AddResource(other, ResourceEffectLibrary, "x.dat");
    AddResource(other, ResourceEffectLibrary, "");
    EXPECT_EQ(other.Resources.size(), 2u);
}

TEST(ResourcesXmlTest, TexturesComeFirstThenEffectLibrariesThenTheAnimationFileThenByOrderValue)
{
    VMModel model;
    EXPECT_TRUE(CollectResources(model, "hero.model").Resources.empty());
    auto material = VMMeshBase::NewMaterial();
    material->DiffuseTexture = "skin.dds";
    auto shader = std::make_unique<VMShaderAssignment>();
    shader->EffectLibrary = "hero.ShaderLib";
    material->ShaderAssignments.push_back(std::move(shader));
    material->SpecularMap = "skin_s.dds";
    model.Materials.Add(std::move(material));
    model.BoneAnimations.Add(VMModel::NewAnimation("walk", 4));

    VResourceList list = CollectResources(model, "C:\\art\\hero.model");
    SortResources(list);

    ASSERT_EQ(list.Resources.size(), 4u);
    EXPECT_EQ(list.Resources[0].Filename, "skin.dds");
    EXPECT_EQ(list.Resources[1].Filename, "skin_s.dds");
    EXPECT_EQ(list.Resources[2].Manager, "EffectLibs");
    EXPECT_EQ(list.Resources[3].Manager, "Animations");
    EXPECT_EQ(list.Resources[3].Filename, "hero.anim");

    // Of equal priorities the smallest order value comes first.
    VResourceList textures;
    AddResource(textures, ResourceTexture, "late.dds");
    textures.Resources.back().Order = 5;
    AddResource(textures, ResourceTexture, "early.dds");
    SortResources(textures);
    EXPECT_EQ(textures.Resources[0].Filename, "early.dds");
}

} // namespace
