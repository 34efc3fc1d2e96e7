#include "HarvestTestScene.h"

#include "base/Path.h"
#include "harvest/ExportMesh.h"
#include "harvest/ExportTexture.h"
#include "harvest/MaterialLookup.h"
#include "harvest/MaterialNameCheck.h"
#include "harvest/PolygonStep.h"
#include "model/CheckMaterials.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"
#include "report/VIssueKind.h"
#include "settings/FindProjectFile.h"
#include "tests/UniqueTempFolder.h"

#include <maya/MFnDependencyNode.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace {

using namespace harvesttest;
using namespace standin;
namespace fs = std::filesystem;

class ExportTextureTest : public HarvestTest {
protected:
    void SetUp() override
    {
        HarvestTest::SetUp();
        fs::create_directories(m_root / "source");
        fs::create_directories(m_root / "target" / "Textures");
        parameters.Textures.BaseDirectory = SystemDir(m_root / "target");
        parameters.Textures.TextureDirectory = SystemDir(m_root / "target" / "Textures");
    }

    static std::string SystemDir(const fs::path& path) { return FromNativePath(path.string()) + "\\"; }

    // A texture file in the source folder, named as Maya stores it (forward slashes).
    std::string SourceTexture(const std::string& name)
    {
        const fs::path path = m_root / "source" / name;
        std::ofstream(path) << "pixels";
        return path.generic_string();
    }

    MObject Shader(const std::string& type, const std::string& name)
    {
        CreateShader(type, name);
        return NodeByName(name);
    }

    static std::string Name(const MObject& node) { return MFnDependencyNode(node).name().asChar(); }

    VMMaterial* Material(const MObject& shader, uint8_t doubleSided = 0)
    {
        return LookupMaterial(State(), world, shader, doubleSided);
    }

    UniqueTempFolder m_folder{"kestrel_textures"};
    const fs::path& m_root = m_folder.Native();
    VMWorld world;
};

// Exponent by shader kind: Blinn 128 below an eccentricity of 1/32, else 4 / eccentricity; Phong
// four times the cosine power, PhongE four times the roughness, Lambert none. The multiplier is
// the specular colour's average.
TEST_F(ExportTextureTest, SpecularValuesFollowTheShaderKindOrItsTextures)
{
    SetAttr(Name(Shader("blinn", "sharp")) + ".eccentricity", 0.0);
    SetAttr(Name(Shader("blinn", "soft")) + ".eccentricity", 0.5);
    SetAttr(Name(Shader("blinn", "edge")) + ".eccentricity", 0.03125);
    SetAttr(Name(Shader("phong", "shiny")) + ".cosinePower", 20.0);
    SetAttr(Name(Shader("phongE", "rough")) + ".roughness", 0.25);
    SetAttr("soft.specularColor", 0.3, 0.6, 0.9);
    const std::pair<const char*, float> exponents[] = {
        {"sharp", 128.0f}, {"soft", 8.0f}, {"edge", 128.0f}, {"shiny", 80.0f}, {"rough", 1.0f}};
    for (const auto& [shader, exponent] : exponents)
        EXPECT_FLOAT_EQ(Material(NodeByName(shader))->SpecularExponent, exponent) << shader;
    EXPECT_FLOAT_EQ(Material(NodeByName("soft"))->SpecularMultiplier, 0.6f);
    const VMMaterial* matte = Material(Shader("lambert", "matte"));
    EXPECT_EQ(matte->SpecularExponent, 0.0f);
    EXPECT_EQ(matte->SpecularMultiplier, 0.0f);

    // Textured specular attributes give fixed values and the specular map.
    const MObject blinn = Shader("blinn", "mapped");
    CreateFileTexture("specFile", SourceTexture("description.tga"), "mapped.specularColor");
    CreateFileTexture("eccFile", SourceTexture("ecc.tga"), "");
    ConnectAttr("eccFile.outAlpha", "mapped.eccentricity");
    VMMaterial* material = Material(blinn);
    EXPECT_FLOAT_EQ(material->SpecularMultiplier, 1.0f);
    EXPECT_FLOAT_EQ(material->SpecularExponent, 128.0f);
    EXPECT_EQ(material->SpecularMap, "Textures\\ecc.tga");
}

// Without a texture the shader is a colour material of the atlas; pure white ambient turns lighting off.
TEST_F(ExportTextureTest, DiffuseBytesAreColourTimesDiffuseRoundedOfAColourMaterial)
{
    const MObject lambert = Shader("lambert", "orange");
    SetAttr("orange.color", 1.0, 0.5, 0.0);
    SetAttr("orange.diffuse", 0.8);
    SetAttr("orange.ambientColor", 0.2, 0.0, 1.0);
    VMMaterial* material = Material(lambert);
    EXPECT_EQ(material->DiffuseColour[0], 204u);
    EXPECT_EQ(material->DiffuseColour[1], 102u);
    EXPECT_EQ(material->DiffuseColour[2], 0u);
    EXPECT_EQ(material->AmbientColour[0], 51u);
    EXPECT_EQ(material->AmbientColour[2], 255u);
    EXPECT_EQ(material->Name, "orange");
    EXPECT_EQ(material->LightingFlag, 1);
    EXPECT_EQ(material->ModelFlag, 0);
    EXPECT_EQ(material->AtlasFlag, 1u);
    EXPECT_EQ(material->DiffuseTexture, "\\VColors.dds");
    EXPECT_TRUE(report.Issues().empty());

    SetAttr(Name(Shader("lambert", "lit")) + ".ambientColor", 1.0, 1.0, 1.0);
    EXPECT_EQ(Material(NodeByName("lit"))->LightingFlag, 0);
}

TEST_F(ExportTextureTest, ColourMaterialUVsGoToTheCentreOfTheColoursAtlasTexelOthersThroughTheUVTransform)
{
    VMMaterial colour;
    colour.AtlasFlag = 1;
    colour.DiffuseColour[0] = 255;
    colour.DiffuseColour[1] = 128;
    colour.DiffuseColour[2] = 8;
    // texel = (8 >> 3) * 2048 + (128 >> 2) * 32 + (255 >> 3) = 3103: column 31, row 12
    float uv[2] = {0.7f, 0.2f};
    MapMaterialUV(&colour, uv);
    EXPECT_FLOAT_EQ(uv[0], 31.5f / 256.0f);
    EXPECT_FLOAT_EQ(uv[1], 12.5f / 256.0f);

    VMMaterial textured;
    std::copy_n(std::array<float, 4> {2.0f, 3.0f, 0.5f, -1.0f}.begin(), 4, textured.UVTransform);
    float mapped[2] = {0.25f, 0.5f};
    MapMaterialUV(&textured, mapped);
    EXPECT_FLOAT_EQ(mapped[0], 1.0f);
    EXPECT_FLOAT_EQ(mapped[1], 0.5f);
}

TEST_F(ExportTextureTest, RepeatAndOffsetOfTheColourTextureBecomeTheUVTransform)
{
    const MObject lambert = Shader("lambert", "tiled");
    CreateFileTexture("tiledFile", SourceTexture("tiles.tga"), "tiled.color");
    SetAttr("place2dTexture1.repeatU", 4.0);
    SetAttr("place2dTexture1.offsetV", 0.5);
    VMMaterial* material = Material(lambert);
    EXPECT_FLOAT_EQ(material->UVTransform[0], 4.0f);
    EXPECT_FLOAT_EQ(material->UVTransform[1], 1.0f);
    EXPECT_FLOAT_EQ(material->UVTransform[2], 0.0f);
    EXPECT_FLOAT_EQ(material->UVTransform[3], 0.5f);
    EXPECT_EQ(material->AtlasFlag, 0u);
}

TEST_F(ExportTextureTest, SameShaderOnDoubleAndSingleSidedMeshesGivesTwoMaterials)
{
    parameters.Options.DoubleSided = 1;
    CreateShader("lambert", "paint");
    const MObject single = CreateMesh("singleShape", CreateNode("transform", "single"), Cube());
    const MObject both = CreateMesh("bothShape", CreateNode("transform", "both"), Cube());
    Assign(NodeByName("paintSG"), single);
    Assign(NodeByName("paintSG"), both);
    SetAttr("singleShape.doubleSided", 0.0);
    ASSERT_TRUE(ExportMesh(State(), PathTo("singleShape"), world, 0));
    ASSERT_TRUE(ExportMesh(State(), PathTo("bothShape"), world, 0));
    ASSERT_EQ(world.Materials.Count(), 2);
    EXPECT_EQ(world.Materials[0]->Name, "paint");
    EXPECT_EQ(world.Materials[0]->DoubleSided, 0);
    EXPECT_EQ(world.Materials[1]->Name, "paint_dbl");
    EXPECT_EQ(world.Materials[1]->DoubleSided, 1);
    EXPECT_EQ(world.Polygons[6]->Material(), world.Materials[1]);
}

TEST_F(ExportTextureTest, MeshFlagIsIgnoredUnlessDoubleSidedComesFromTheMesh)
{
    parameters.Options.DoubleSided = 2;
    CreateShader("lambert", "paint");
    const MObject mesh = CreateMesh("meshShape", CreateNode("transform", "mesh"), Cube());
    Assign(NodeByName("paintSG"), mesh);
    AddAttr(NodeByName("paint"), "v_doublesided", AttrType::Bool, 1.0);
    ASSERT_TRUE(ExportMesh(State(), PathTo("meshShape"), world, 0));
    ASSERT_EQ(world.Materials.Count(), 1);
    EXPECT_EQ(world.Materials[0]->Name, "paint");
    EXPECT_EQ(world.Materials[0]->DoubleSided, 1);
}

TEST_F(ExportTextureTest, OpacityTextureWithoutColourTextureIsDroppedAndOneUnlikeTheColourMapIsReported)
{
    const MObject lambert = Shader("lambert", "glass");
    CreateFileTexture("alphaFile", SourceTexture("alpha.tga"), "glass.transparency");
    VMMaterial* material = Material(lambert);
    EXPECT_EQ(material->Transparency, 2u);
    EXPECT_EQ(material->AtlasFlag, 1u);
    EXPECT_EQ(report.Details(IssueBumpOpacityOnUntextured), (std::vector<std::string>{"glass"}));

    // An opacity map that differs from the colour map is reported.
    CreateFileTexture("leafColour", SourceTexture("leaf.tga"), Name(Shader("lambert", "leaf")) + ".color");
    CreateFileTexture("leafAlpha", SourceTexture("leaf_alpha.tga"), "leaf.transparency");
    Material(NodeByName("leaf"));
    ASSERT_EQ(report.Count(IssueOpacityMapMismatch), 1);
    EXPECT_EQ(report.Details(IssueOpacityMapMismatch)[0].rfind("Materials: leaf\r\n  Colormap: ", 0), 0u);
}

TEST_F(ExportTextureTest, BumpTextureNeedsABumpNodeAndCustomAttributesOverrideTheHarvestedValues)
{
    const MObject lambert = Shader("lambert", "rock");
    CreateFileTexture("rockColour", SourceTexture("rock.tga"), "rock.color");
    CreateFileTexture("rockBump", SourceTexture("rock_n.tga"), "");
    CreateNode("bump2d", "rockBumpNode");
    ConnectAttr("rockBump.outAlpha", "rockBumpNode.bumpValue");
    ConnectAttr("rockBumpNode.outNormal", "rock.normalCamera");
    VMMaterial* material = Material(lambert);
    EXPECT_EQ(material->DiffuseTexture, "Textures\\rock.tga");
    EXPECT_EQ(material->NormalMap, "Textures\\rock_n.tga");

    // Custom shader attributes override the harvested values.
    const MObject custom = Shader("lambert", "custom");
    AddAttr(custom, "v_blendmode", AttrType::Int, 5);
    AddAttr(custom, "v_userdata", AttrType::String);
    SetAttr("custom.v_userdata", std::string("glow=1"));
    AddAttr(custom, "Bump_Texture_1", AttrType::String);
    SetAttr("custom.Bump_Texture_1", SourceTexture("custom_n.tga"));
    const VMMaterial* overridden = Material(custom);
    EXPECT_EQ(overridden->Transparency, 5u);
    EXPECT_EQ(overridden->UserData, "glow=1");
    EXPECT_EQ(overridden->NormalMap, "Textures\\custom_n.tga");
}

TEST_F(ExportTextureTest, ShaderIsReadOncePerExportAndFlag)
{
    const MObject lambert = Shader("lambert", "once");
    VMMaterial* first = Material(lambert);
    EXPECT_EQ(Material(lambert), first);
    EXPECT_NE(Material(lambert, 1), first);
    EXPECT_EQ(world.Materials.Count(), 2);
    EXPECT_EQ(Material(MObject()), nullptr);
    EXPECT_EQ(State().Materials.Count(), 3);
}

TEST_F(ExportTextureTest, TextureUsedByThreeMaterialsIsCopiedOnceUnderOneName)
{
    const std::string source = SourceTexture("wood.tga");
    for (const char* name : {"woodA", "woodB", "woodC"}) {
        Shader("lambert", name);
        CreateFileTexture(std::string(name) + "File", source, std::string(name) + ".color");
    }
    for (const char* name : {"woodA", "woodB", "woodC"})
        EXPECT_EQ(Material(NodeByName(name))->DiffuseTexture, "Textures\\wood.tga");
    EXPECT_TRUE(fs::exists(m_root / "target" / "Textures" / "wood.tga"));
    EXPECT_EQ(State().TextureNames.Size(), 1u);
    EXPECT_TRUE(report.Issues().empty());
}

TEST_F(ExportTextureTest, LocatedTextureIsFoundInASubFolderOfTheTextureDirectory)
{
    parameters.Textures.TextureBehaviour = 1;
    fs::create_directories(m_root / "target" / "Textures" / "props");
    std::ofstream(m_root / "target" / "Textures" / "props" / "crate.tga") << "pixels";
    const MObject lambert = Shader("lambert", "crate");
    CreateFileTexture("crateFile", "D:/art/crate.tga", "crate.color");
    EXPECT_EQ(Material(lambert)->DiffuseTexture, "Textures\\props\\crate.tga");
    EXPECT_TRUE(report.Issues().empty());
}

TEST_F(ExportTextureTest, TextureNamesAreRelativeToTheProjectFoundAboveTheTarget)
{
    fs::create_directories(m_root / "game" / "levels" / "town");
    std::ofstream(m_root / "game" / "town.project");
    const auto project = FindProjectFile(SystemDir(m_root / "game" / "levels" / "town"));
    ASSERT_TRUE(project.has_value());
    EXPECT_EQ(project->Directory, SystemDir(m_root / "game"));
    parameters.Textures.ProjectDirectory = project->Directory;
    parameters.Textures.TextureDirectory = project->Directory + "Textures\\";
    parameters.Textures.ProjRelativeFilenames = true;
    fs::create_directories(m_root / "game" / "Textures");
    const MObject lambert = Shader("lambert", "brick");
    CreateFileTexture("brickFile", SourceTexture("brick.tga"), "brick.color");
    EXPECT_EQ(Material(lambert)->DiffuseTexture, "\\Textures\\brick.tga");
}

TEST_F(ExportTextureTest, MaterialNamesEqualButForCaseAreReportedOncePerPairInPairOrder)
{
    Material(Shader("lambert", "Stone"));
    Material(Shader("lambert", "Moss"));
    EXPECT_EQ(CheckDuplicateMaterialNames(world, report), 0);
    EXPECT_TRUE(report.Issues().empty());
    Material(Shader("lambert", "moss"));
    Material(Shader("lambert", "stone"));
    Material(Shader("lambert", "marble"));
    EXPECT_EQ(CheckDuplicateMaterialNames(world, report), -1);
    EXPECT_EQ(report.Details(IssueDuplicateMaterialNames), (std::vector<std::string>{"stone", "moss"}));
}

// A model's materials carry the model flag and no lighting.
TEST_F(ExportTextureTest, MaterialsWithoutPolygonsLeaveTheModelInOrder)
{
    parameters.FormatKind = kFormatKindModel;
    VMModel model;
    CreateShader("lambert", "used");
    const MObject mesh = CreateMesh("meshShape", CreateNode("transform", "mesh"), Cube());
    Assign(NodeByName("usedSG"), mesh);
    const VMMaterial* unused = LookupMaterial(State(), model, Shader("lambert", "unused"), 0);
    ASSERT_NE(unused, nullptr);
    EXPECT_EQ(unused->ModelFlag, 1);
    EXPECT_EQ(unused->LightingFlag, 0);
    ASSERT_TRUE(ExportMesh(State(), PathTo("meshShape"), model, 0));
    ASSERT_EQ(model.Materials.Count(), 2);
    DropUnusedMaterials(model);
    ASSERT_EQ(model.Materials.Count(), 1);
    EXPECT_EQ(model.Materials[0]->Name, "used");
}

}
