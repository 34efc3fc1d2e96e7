#include <maya/MDagPath.h>
#include <maya/MFnAmbientLight.h>
#include <maya/MFnAreaLight.h>
#include <maya/MFnBlinnShader.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnNumericData.h>
#include <maya/MFnPhongEShader.h>
#include <maya/MFnPhongShader.h>
#include <maya/MFnPointLight.h>
#include <maya/MFnSpotLight.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <numbers>

namespace {

using namespace standin;

class ShaderAndLightTest : public ::testing::Test {
protected:
  void SetUp() override { NewScene(); }
};

TEST_F(ShaderAndLightTest, LambertReadsItsColoursAndDiffuseWithMayasDefaults)
{
  const MObject lambert = CreateNode("lambert", "clay");
  SetAttr("clay.color", 0.25, 0.5, 0.75);
  MFnLambertShader fn(lambert);
  EXPECT_EQ(fn.color(), MColor(0.25f, 0.5f, 0.75f));
  EXPECT_FLOAT_EQ(fn.diffuseCoeff(), 0.8f);
  EXPECT_EQ(fn.ambientColor(), MColor(0.0f, 0.0f, 0.0f));
  MObject triple;
  ASSERT_TRUE(Plug("clay.color").getValue(triple));
  float r = 0, g = 0, b = 0;
  ASSERT_TRUE(MFnNumericData(triple).getData(r, g, b));
  EXPECT_FLOAT_EQ(b, 0.75f);
}

TEST_F(ShaderAndLightTest, ShaderFunctionSetsAttachOnlyToTheirKinds)
{
  const MObject blinn = CreateNode("blinn", "shiny");
  const MObject phongE = CreateNode("phongE", "soft");
  MStatus status;
  MFnBlinnShader blinnFn(blinn, &status);
  EXPECT_TRUE(status);
  EXPECT_FLOAT_EQ(blinnFn.eccentricity(), 0.3f);
  EXPECT_FLOAT_EQ(blinnFn.specularColor().r, 0.5f);
  MFnPhongShader wrong(blinn, &status);
  EXPECT_FALSE(status);
  MFnPhongEShader phongEFn(phongE, &status);
  EXPECT_TRUE(status);
  EXPECT_FLOAT_EQ(phongEFn.roughness(), 0.5f);
  EXPECT_TRUE(phongE.hasFn(MFn::kLambert));
  EXPECT_FALSE(CreateNode("surfaceShader", "flat").hasFn(MFn::kLambert));
  EXPECT_TRUE(CreateNode("layeredShader", "layers").hasFn(MFn::kLayeredShader));
}

TEST_F(ShaderAndLightTest, SpotLightGivesIntensityColourDecayAndConeAngle)
{
  const MObject transform = CreateNode("transform", "lamp");
  CreateNode("spotLight", "lampShape", transform);
  SetAttr("lampShape.intensity", 2.5);
  SetAttr("lampShape.color", 1.0, 0.5, 0.0);
  SetAttr("lampShape.decayRate", 2.0);
  const MDagPath path = PathTo("|lamp");
  EXPECT_TRUE(path.hasFn(MFn::kLight));
  EXPECT_TRUE(path.hasFn(MFn::kSpotLight));
  EXPECT_TRUE(path.hasFn(MFn::kTransform));
  MStatus status;
  MFnSpotLight spot(path, &status);
  ASSERT_TRUE(status);
  EXPECT_FLOAT_EQ(spot.intensity(), 2.5f);
  EXPECT_EQ(spot.color(), MColor(1.0f, 0.5f, 0.0f));
  EXPECT_EQ(spot.decayRate(), 2);
  EXPECT_NEAR(spot.coneAngle(), 40.0 * std::numbers::pi / 180.0, 1e-12);
}

TEST_F(ShaderAndLightTest, AmbientLightIsNoNonAmbientLight)
{
  CreateNode("ambientLight", "fillShape");
  const MDagPath path = PathTo("|fill|fillShape");
  MStatus status;
  MFnNonAmbientLight wrong(path, &status);
  EXPECT_FALSE(status);
  MFnAmbientLight ambient(path, &status);
  ASSERT_TRUE(status);
  EXPECT_FLOAT_EQ(ambient.intensity(), 1.0f);
  MFnPointLight point(CreateNode("pointLight", "bulbShape"), &status);
  EXPECT_TRUE(status);
  EXPECT_EQ(point.decayRate(), 0);
}

TEST_F(ShaderAndLightTest, AreaLightIsANonExtendedLightAndSettersReachTheGettersPlugs)
{
  CreateNode("areaLight", "panelShape");
  const MDagPath path = PathTo("|panel|panelShape");
  EXPECT_TRUE(path.hasFn(MFn::kNonExtendedLight));
  EXPECT_FALSE(path.hasFn(MFn::kPointLight));
  MStatus status;
  MFnAreaLight area(path, &status);
  ASSERT_TRUE(status);
  EXPECT_TRUE(area.setColor(MColor(0.25f, 0.5f, 0.75f)));
  EXPECT_TRUE(area.setIntensity(3.0f));
  EXPECT_TRUE(area.setDecayRate(3));
  EXPECT_TRUE(area.setUseRayTraceShadows(true));
  EXPECT_EQ(area.color(), MColor(0.25f, 0.5f, 0.75f));
  EXPECT_FLOAT_EQ(Plug("panelShape.intensity").asFloat(), 3.0f);
  EXPECT_EQ(area.decayRate(), 3);
  EXPECT_TRUE(area.useRayTraceShadows());

  MFnSpotLight spot(CreateNode("spotLight", "beamShape"), &status);
  ASSERT_TRUE(status);
  EXPECT_TRUE(spot.setConeAngle(0.5));
  EXPECT_DOUBLE_EQ(Plug("beamShape.coneAngle").asDouble(), 0.5);
  MFnAmbientLight ambient(CreateNode("ambientLight", "skyShape"), &status);
  ASSERT_TRUE(status);
  EXPECT_TRUE(ambient.setShadowColor(MColor(1.0f, 0.0f, 0.0f)));
  EXPECT_EQ(ambient.shadowColor(), MColor(1.0f, 0.0f, 0.0f));
}

}
