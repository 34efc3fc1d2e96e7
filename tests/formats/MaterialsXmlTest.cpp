#include "TempDirectory.h"
#include "TestWorlds.h"

#include "formats/MaterialsXml.h"
#include "formats/SaveParams.h"
#include "formats/XmlPrinter.h"
#include "formats/chunk/LastError.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <memory>
#include <string>

namespace {

std::string Merge(const std::string& existing, const VMWorld& world, uint32_t flags)
{
    tinyxml2::XMLDocument document(true, XmlReadWhitespace);
    if (!existing.empty()) {
        EXPECT_EQ(document.Parse(existing.c_str()), tinyxml2::XML_SUCCESS);
    }
    MergeMaterials(document, world.Materials, flags);
    return PrintXml(document);
}

TEST(MaterialsXmlTest, NewMaterialGetsEveryGroupInOrder)
{
    VMWorld world;
    VMMaterial& brick = AddMaterial(world, "brick");
    brick.DiffuseTexture = "brick.dds";
    brick.Transparency = 15;
    brick.DoubleSided = 1;
    brick.SpecularMultiplier = 0.5f;
    brick.SpecularExponent = 8.0f;
    brick.LightmapSize[0] = 64;
    brick.LightmapID = 3;
    auto shader = std::make_unique<VMShaderAssignment>();
    shader->EffectLibrary = "wall.ShaderLib";
    shader->EffectName = "Bumpy";
    shader->Parameters = {{"Scale", "2"}};
    brick.ShaderAssignments.push_back(std::move(shader));

    EXPECT_EQ(Merge("", world, 0),
              "<root>\r\n"
              "    <Materials>\r\n"
              "        <Material name=\"brick\" diffuse=\"brick.dds\" transparency=\"alphasmooth\" doublesided=\"TRUE\""
              " specmul=\"0.500000\" specexp=\"8.000000\" parallaxscale=\"-0.030000\" parallaxbias=\"-0.015000\""
              " lightmapsize=\"64,128\" lightmapgran=\"0.000000\" lightmapID=\"3\">\r\n"
              "            <Shader library=\"wall.ShaderLib\" effect=\"Bumpy\" paramstring=\"Scale=2;\" />\r\n"
              "        </Material>\r\n"
              "    </Materials>\r\n"
              "</root>\r\n");
}

TEST(MaterialsXmlTest, ExistingMaterialGetsOnlyTheGroupsOfTheFlags)
{
    VMWorld world;
    VMMaterial& brick = AddMaterial(world, "brick");
    brick.DoubleSided = 1;
    brick.DiffuseTexture = "new.dds";

    const std::string merged = Merge("<root><Materials><Material name=\"BRICK\" diffuse=\"old.dds\" doublesided=\"FALSE\"/>"
                                     "</Materials></root>",
                                     world, SaveFlagDoubleSided);

    EXPECT_EQ(merged, "<root>\r\n    <Materials>\r\n        <Material name=\"BRICK\" diffuse=\"old.dds\" doublesided=\"TRUE\" />\r\n"
                      "    </Materials>\r\n</root>\r\n");
}

TEST(MaterialsXmlTest, HandEditedAttributesOfOtherGroupsAndUnknownOnesSurvive)
{
    VMWorld world;
    VMMaterial& brick = AddMaterial(world, "brick");
    brick.SpecularMultiplier = 2.0f;

    const std::string merged = Merge("<?xml version=\"1.0\"?><!-- mine --><root><Editor zoom=\"3\"/><Materials>"
                                     "<Material name=\"brick\" specmul=\"9\" parallaxbias=\"0.5\" custom=\"x\" specexp=\"1\"/>"
                                     "</Materials></root>",
                                     world, SaveFlagSpecular);

    EXPECT_EQ(merged, "<?xml version=\"1.0\" ?>\r\n<!-- mine -->\r\n<root>\r\n    <Editor zoom=\"3\" />\r\n    <Materials>\r\n"
                      "        <Material name=\"brick\" specmul=\"2.000000\" parallaxbias=\"0.5\" custom=\"x\" specexp=\"0.000000\" />\r\n"
                      "    </Materials>\r\n</root>\r\n");
}

TEST(MaterialsXmlTest, RenamedMaterialReplacesItsElement)
{
    VMWorld world;
    AddMaterial(world, "granite").DiffuseTexture = "granite.dds";
    // A transparency without a mode name writes no attribute.
    AddMaterial(world, "glass").Transparency = 6;

    const std::string merged = Merge("<root><Materials><Material name=\"stone\" diffuse=\"stone.dds\"/><Note/>"
                                     "<Material lost=\"1\"/></Materials></root>",
                                     world, SaveFlagDoubleSided);

    EXPECT_EQ(merged.find("stone"), std::string::npos);
    EXPECT_NE(merged.find("<Material name=\"granite\" diffuse=\"granite.dds\" transparency=\"opaque\" doublesided=\"FALSE\""),
              std::string::npos);
    // Elements without a name are not the exporter's to remove.
    EXPECT_NE(merged.find("<Material lost=\"1\" />"), std::string::npos);
    EXPECT_NE(merged.find("<Note />"), std::string::npos);
    EXPECT_NE(merged.find("<Material name=\"glass\" doublesided=\"FALSE\""), std::string::npos);
}

TEST(MaterialsXmlTest, EmptyTexturesRemoveTheirAttributes)
{
    VMWorld world;
    AddMaterial(world, "brick").DiffuseTexture = "brick.dds";

    const std::string merged = Merge("<root><Materials><Material name=\"brick\" normalmap=\"n.dds\" specularmap=\"s.dds\"/>"
                                     "</Materials></root>",
                                     world, SaveFlagTextures);

    EXPECT_NE(merged.find("<Material name=\"brick\" diffuse=\"brick.dds\" />"), std::string::npos);
}

// An empty file is refused like any broken one: rebuilding it would lose the user's edits.
class UnreadableMaterialsXml : public ::testing::TestWithParam<std::string> {};

TEST_P(UnreadableMaterialsXml, IsRefusedAndLeftUntouched)
{
    TempDirectory folder;
    folder.Write("materials.xml", GetParam());
    VMWorld world;
    AddMaterial(world, "brick");

    EXPECT_FALSE(SaveMaterialsXml(world.Materials, folder.Path("materials.xml"), SaveFlagMaterialGroups));
    EXPECT_EQ(LastError().Text,
              "Error reading XML file '" + folder.Native("materials.xml").string() + "'. Please fix or delete this file");
    EXPECT_EQ(folder.Read("materials.xml"), GetParam());
}

INSTANTIATE_TEST_SUITE_P(MaterialsXmlTest, UnreadableMaterialsXml,
                         ::testing::Values("<root><Materials><Material name=\"brick\"></root>", "", " \r\n"));

TEST(MaterialsXmlTest, SavedFileIsMergedOnTheNextSave)
{
    TempDirectory folder;
    VMWorld world;
    VMMaterial& brick = AddMaterial(world, "brick");
    brick.SpecularExponent = 4.0f;
    ASSERT_TRUE(SaveMaterialsXml(world.Materials, folder.Path("materials.xml"), SaveFlagMaterialGroups));
    const std::string first = folder.Read("materials.xml");
    std::string edited = first;
    edited.replace(edited.find("specexp=\"4.000000\""), 18, "specexp=\"7\"");
    folder.Write("materials.xml", edited);

    ASSERT_TRUE(SaveMaterialsXml(world.Materials, folder.Path("materials.xml"), SaveFlagTextures));

    EXPECT_EQ(folder.Read("materials.xml"), edited);
}

TEST(MaterialsXmlTest, UnwritableFileFailsWithItsPath)
{
    TempDirectory folder;
    VMWorld world;
    AddMaterial(world, "brick");
    const std::string path = folder.Path("missing\\materials.xml");

    EXPECT_FALSE(SaveMaterialsXml(world.Materials, path, SaveFlagMaterialGroups));
    EXPECT_EQ(LastError().Text, "Error writing XML file '" + folder.Native("missing/materials.xml").string() + "'");
}

} // namespace
