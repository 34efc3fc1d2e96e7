#include <maya/MFnDependencyNode.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnStringData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MPlug.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

namespace {

using namespace standin;

class AttributeTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    NewScene();
    node = CreateNode("transform", "portal");
  }

  MObject node;
};

TEST_F(AttributeTest, AddedNumericAttributeReadsItsDefaultUntilSet)
{
  MFnNumericAttribute numeric;
  const MObject attribute = numeric.create("CollisionFlags", "cf", MFnNumericData::kInt, 65535.0);
  numeric.setHidden(true);
  MFnDependencyNode fn(node);
  ASSERT_TRUE(fn.addAttribute(attribute));
  MPlug plug = fn.findPlug("CollisionFlags");
  EXPECT_EQ(plug.asInt(), 65535);
  ASSERT_TRUE(plug.setValue(12));
  EXPECT_EQ(fn.findPlug("cf").asInt(), 12);
  EXPECT_TRUE(MFnAttribute(fn.attribute("CollisionFlags")).isHidden());
  EXPECT_EQ(MFnNumericAttribute(attribute).unitType(), MFnNumericData::kInt);
  EXPECT_FALSE(fn.addAttribute(numeric.create("visibility", "vv", MFnNumericData::kBoolean))) << "an existing name";
  EXPECT_FALSE(fn.addAttribute(numeric.create("Other", "v", MFnNumericData::kBoolean)));
}

TEST_F(AttributeTest, StringAttributeTakesItsDefaultFromStringData)
{
  MFnStringData text;
  const MObject defaultText = text.create("room1");
  MFnTypedAttribute typed;
  const MObject attribute = typed.create("PortalTarget", "pt", MFnData::kString, defaultText);
  ASSERT_TRUE(MFnDependencyNode(node).addAttribute(attribute));
  EXPECT_EQ(MFnTypedAttribute(attribute).attrType(), MFnData::kString);
  EXPECT_EQ(Plug("portal.PortalTarget").asString(), "room1");
  MObject data;
  ASSERT_TRUE(Plug("portal.PortalTarget").getValue(data));
  EXPECT_EQ(MFnStringData(data).string(), "room1");
}

TEST_F(AttributeTest, EnumAttributeNamesItsFields)
{
  MFnEnumAttribute enumeration;
  const MObject attribute = enumeration.create("BlendMode", "bm", 1);
  ASSERT_TRUE(enumeration.addField("Opaque", 0));
  ASSERT_TRUE(enumeration.addField("Additive", 1));
  EXPECT_FALSE(enumeration.addField("Again", 1));
  ASSERT_TRUE(MFnDependencyNode(node).addAttribute(attribute));
  EXPECT_EQ(Plug("portal.BlendMode").asShort(), 1);
  EXPECT_EQ(enumeration.fieldName(1), "Additive");
  MStatus status;
  enumeration.fieldName(7, &status);
  EXPECT_FALSE(status);
  EXPECT_EQ(MFnEnumAttribute(MFnDependencyNode(node).attribute("rotateOrder")).fieldName(5), "zyx");
}

TEST_F(AttributeTest, AttributeCountListsEveryAttributeWithDynamicOnesLast)
{
  MFnDependencyNode fn(node);
  const unsigned int before = fn.attributeCount();
  MFnNumericAttribute numeric;
  fn.addAttribute(numeric.create("Visible", "vsb", MFnNumericData::kBoolean, 1.0));
  ASSERT_EQ(fn.attributeCount(), before + 1);
  const MFnAttribute last(fn.attribute(before));
  EXPECT_EQ(last.name(), "Visible");
  EXPECT_TRUE(last.isDynamic());
  EXPECT_FALSE(MFnAttribute(fn.attribute(0u)).isDynamic());
}

TEST_F(AttributeTest, NumericPairAndColourAttributesGetNamedChildren)
{
  MFnNumericAttribute numeric;
  MFnDependencyNode fn(node);
  ASSERT_TRUE(fn.addAttribute(numeric.create("scroll", "scr", MFnNumericData::k2Float, 0.5)));
  ASSERT_TRUE(fn.addAttribute(numeric.createColor("tint", "tn")));
  EXPECT_EQ(fn.findPlug("scroll").numChildren(), 2u);
  EXPECT_FLOAT_EQ(fn.findPlug("scrollY").asFloat(), 0.5f);
  EXPECT_EQ(MFnNumericAttribute(fn.attribute("scroll")).unitType(), MFnNumericData::k2Float);
  ASSERT_TRUE(SetAttr("portal.tint", 0.1, 0.2, 0.3));
  EXPECT_FLOAT_EQ(fn.findPlug("tnb").asFloat(), 0.3f);
}

}
