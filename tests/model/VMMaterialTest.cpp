#include "model/VMMaterial.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

VMMaterial Brick()
{
    VMMaterial material;
    material.Name = "brick";
    material.DiffuseTexture = "textures\\brick.dds";
    material.NormalMap = "textures\\brick_n.dds";
    material.SpecularMultiplier = 0.5f;
    material.AmbientColour[0] = 20;
    return material;
}

TEST(VMMaterialTest, MaterialsDifferingOnlyInUncomparedFieldsOrTheCaseOfTheirTextsAreEqual)
{
    const VMMaterial a = Brick();
    VMMaterial b = Brick();
    b.DiffuseColour[0] = 3;
    b.UVTransform[0] = 4.0f;
    b.ParallaxScale = 1.0f;
    b.LightmapID = 7;
    b.FurtherTextures.push_back("detail.dds");
    b.UseCount = 12;
    b.SpecularLevel = 8;
    b.DiffuseTexture = "TEXTURES\\Brick.DDS";
    b.Name = "BRICK";
    EXPECT_TRUE(IsSameMaterial(a, b));
}

TEST(VMMaterialTest, AnyComparedFieldMakesMaterialsDiffer)
{
    const VMMaterial a = Brick();
    const auto differs = [&a](auto change) {
        VMMaterial b = Brick();
        change(b);
        return !IsSameMaterial(a, b);
    };
    EXPECT_TRUE(differs([](VMMaterial& m) { m.Kind = 0; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.SpecularMap = "s.dds"; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.FifthString = "x"; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.UserData = "x"; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.IntegerAttribute2 = 1; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.DoubleSided = 1; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.NoStripping = 1; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.Transparency = 2; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.FlagWord = 4; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.ShortAttribute = 1; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.FurtherValue = 1.0f; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.AmbientColour[0] = 21; }));
    EXPECT_TRUE(differs([](VMMaterial& m) { m.SecondColour[2] = 1; }));
}

TEST(VMMaterialTest, ANaNSpecularValueEqualsNothing)
{
    VMMaterial a = Brick();
    a.SpecularExponent = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(IsSameMaterial(a, a));
}

TEST(VMMaterialTest, ShaderAssignmentsCompareAsTheVerySameRecords)
{
    VMMaterial a = Brick();
    VMMaterial b = Brick();
    a.ShaderAssignments.push_back(std::make_unique<VMShaderAssignment>());
    b.ShaderAssignments.push_back(std::make_unique<VMShaderAssignment>());
    EXPECT_FALSE(IsSameMaterial(a, b));
    EXPECT_TRUE(IsSameMaterial(a, a));
}

} // namespace
