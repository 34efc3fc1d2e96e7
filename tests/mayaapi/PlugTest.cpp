#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericData.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace standin;

class PlugTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    NewScene();
    transform = CreateNode("transform", "rock");
    shape = CreateMesh("rockShape", transform, MeshDescription{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0)}, {3}, {0, 1, 2}});
  }

  MObject transform, shape;
};

TEST_F(PlugTest, DynamicAttributeOnTheTransformIsFoundOnlyThereSoLookupsFallBackUpThePath)
{
  ASSERT_TRUE(AddAttr(transform, "ExportSkip", AttrType::Int));
  ASSERT_TRUE(SetAttr("rock.ExportSkip", 1.0));
  MDagPath path = PathTo("|rock|rockShape");
  MStatus status;
  MFnDependencyNode(path.node()).findPlug("ExportSkip", &status);
  EXPECT_FALSE(status);
  path.pop();
  const MPlug plug = MFnDependencyNode(path.node()).findPlug("ExportSkip", &status);
  ASSERT_TRUE(status);
  int value = 0;
  EXPECT_TRUE(plug.getValue(value));
  EXPECT_EQ(value, 1);
}

TEST_F(PlugTest, UnsetAttributeReadsItsDefaultAndEveryNodeHasAMessagePlug)
{
  EXPECT_FALSE(MFnDependencyNode(CreateNode("place2dTexture", "p")).findPlug("message").isNull());
  ASSERT_TRUE(AddAttr(shape, "CollisionFlags", AttrType::Int, 65535.0));
  EXPECT_EQ(Plug("rockShape.CollisionFlags").asInt(), 65535);
  EXPECT_TRUE(Plug("rock.visibility").asBool());
  EXPECT_EQ(Plug("rock.scaleY").asDouble(), 1.0);
}

TEST_F(PlugTest, StringAttributeRoundTripsAndRefusesNumericReads)
{
  ASSERT_TRUE(AddAttr(transform, "v_userdata", AttrType::String));
  ASSERT_TRUE(SetAttr("rock.v_userdata", std::string("speed=2")));
  MString text;
  EXPECT_TRUE(Plug("rock.v_userdata").getValue(text));
  EXPECT_EQ(text, "speed=2");
  int number = 0;
  EXPECT_FALSE(Plug("rock.v_userdata").getValue(number));
}

TEST_F(PlugTest, ShortAndLongNamesReachTheSamePlugAndNameUsesTheLongOne)
{
  MFnDependencyNode fn(transform);
  const MPlug byShort = fn.findPlug("tx");
  EXPECT_EQ(byShort, fn.findPlug("translateX"));
  EXPECT_EQ(byShort.name(), "rock.translateX");
  EXPECT_EQ(byShort.partialName(), "tx");
  EXPECT_TRUE(byShort.isChild());
  EXPECT_EQ(byShort.parent(), fn.findPlug("translate"));
}

TEST_F(PlugTest, CompoundPlugGivesItsChildrenInOrderAndANumericTriple)
{
  SetAttr("rock.translate", 1.0, 2.0, 3.0);
  const MPlug translate = Plug("rock.translate");
  ASSERT_EQ(translate.numChildren(), 3u);
  EXPECT_EQ(translate.child(2).name(), "rock.translateZ");
  MObject data;
  ASSERT_TRUE(translate.getValue(data));
  double x = 0, y = 0, z = 0;
  ASSERT_TRUE(MFnNumericData(data).getData(x, y, z));
  EXPECT_EQ(x, 1.0);
  EXPECT_EQ(y, 2.0);
  EXPECT_EQ(z, 3.0);
}

TEST_F(PlugTest, ArrayElementsExistOnceSetAndAreListedByLogicalIndex)
{
  const MObject skin = CreateNode("skinCluster", "skin");
  ASSERT_TRUE(SetAttr("skin.bindPreMatrix[5]", MMatrix()));
  ASSERT_TRUE(SetAttr("skin.bindPreMatrix[2]", MMatrix()));
  const MPlug array = MFnDependencyNode(skin).findPlug("bindPreMatrix");
  EXPECT_TRUE(array.isArray());
  ASSERT_EQ(array.numElements(), 2u);
  EXPECT_EQ(array[0].logicalIndex(), 2u);
  EXPECT_EQ(array[1].logicalIndex(), 5u);
  EXPECT_EQ(array.elementByLogicalIndex(5).name(), "skin.bindPreMatrix[5]");
}

TEST_F(PlugTest, ConnectionsAreSeenFromBothEndsAndDriveTheDestination)
{
  const MObject other = CreateNode("transform", "driver");
  SetAttr("driver.translateY", 7.5);
  ASSERT_TRUE(ConnectAttr("driver.translateY", "rock.translateX"));
  const MPlug dst = Plug("rock.translateX");
  EXPECT_TRUE(dst.isConnected());
  EXPECT_EQ(dst.asDouble(), 7.5);
  MPlugArray sources;
  EXPECT_TRUE(dst.connectedTo(sources, true, false));
  ASSERT_EQ(sources.length(), 1u);
  EXPECT_EQ(sources[0].name(), "driver.translateY");
  MPlugArray destinations;
  EXPECT_TRUE(MFnDependencyNode(other).findPlug("translateY").connectedTo(destinations, false, true));
  ASSERT_EQ(destinations.length(), 1u);
  EXPECT_EQ(destinations[0], dst);
}

TEST_F(PlugTest, NestedArrayPlugNamesCarryEveryIndex)
{
  const MObject engine = CreateShader("lambert", "mat");
  ASSERT_TRUE(Assign(engine, shape, 0, {0}));
  const MPlug groups = Plug("rockShape.instObjGroups[0].objectGroups");
  ASSERT_TRUE(groups.isArray());
  ASSERT_EQ(groups.numElements(), 1u);
  EXPECT_EQ(groups[0].name(), "rockShape.instObjGroups[0].objectGroups[0]");
  EXPECT_TRUE(groups[0].isConnected());
}

TEST_F(PlugTest, MalformedPlugNamesGiveANullPlug)
{
  EXPECT_TRUE(Plug("rock").isNull());
  EXPECT_TRUE(Plug("rock.noSuchAttr").isNull());
  EXPECT_TRUE(Plug("rock.translateX[").isNull());
  EXPECT_TRUE(Plug("nobody.translateX").isNull());
  EXPECT_TRUE(Plug("rock.translateX[1]").isNull());
}

TEST_F(PlugTest, AttributeObjectOfAnotherNodeOfTheTypeReachesTheSamePlugByName)
{
  const MObject other = CreateNode("transform", "other");
  SetAttr("rock.translateY", 3.0);
  const MObject attribute = MFnDependencyNode(other).attribute("translateY");
  const MPlug plug(transform, attribute);
  EXPECT_EQ(plug.name(), "rock.translateY");
  EXPECT_EQ(plug.asDouble(), 3.0);
}

TEST_F(PlugTest, OutOfRangeNumbersAreClampedWhenReadNarrower)
{
  SetAttr("rock.translateX", 1e300);
  EXPECT_EQ(Plug("rock.translateX").asInt(), 2147483647);
  EXPECT_EQ(Plug("rock.translateX").asShort(), 32767);
  EXPECT_EQ(Plug("rock.translateX").asFloat(), 3.4028234663852886e38f);
  SetAttr("rock.translateX", std::nan(""));
  EXPECT_EQ(Plug("rock.translateX").asInt(), 0);
}

TEST_F(PlugTest, RotateOrderOutsideItsFieldsIsReadAsXyz)
{
  SetAttr("rock.rotate", 0.5, 0.25, 0.0);
  const MMatrix xyz = PathTo("|rock").inclusiveMatrix();
  SetAttr("rock.rotateOrder", -7.0);
  EXPECT_TRUE(PathTo("|rock").inclusiveMatrix().isEquivalent(xyz));
  SetAttr("rock.rotateOrder", 99.0);
  EXPECT_TRUE(PathTo("|rock").inclusiveMatrix().isEquivalent(xyz));
}

}
