#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnTransform.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <numbers>

namespace {

using namespace standin;

constexpr double kQuarter = std::numbers::pi / 2.0;

MPoint World(const std::string& path, const MPoint& local) { return local * PathTo(path).inclusiveMatrix(); }

void ExpectNear(const MPoint& actual, double x, double y, double z)
{
  EXPECT_NEAR(actual.x, x, 1e-12);
  EXPECT_NEAR(actual.y, y, 1e-12);
  EXPECT_NEAR(actual.z, z, 1e-12);
}

class TransformTest : public ::testing::Test {
protected:
  void SetUp() override { NewScene(); }
};

TEST_F(TransformTest, ScaleThenRotateThenTranslate)
{
  CreateNode("transform", "t");
  SetAttr("t.translate", 1.0, 2.0, 3.0);
  SetAttr("t.rotate", 0.0, kQuarter, 0.0);
  SetAttr("t.scale", 2.0, 1.0, 1.0);
  // (1,0,0) scaled to (2,0,0), turned +90 degrees about y to (0,0,-2), moved by (1,2,3).
  ExpectNear(World("|t", MPoint(1, 0, 0)), 1.0, 2.0, 1.0);
}

TEST_F(TransformTest, RotateOrderDecidesWhichAxisTurnsFirst)
{
  CreateNode("transform", "xyz");
  SetAttr("xyz.rotate", kQuarter, kQuarter, 0.0);
  CreateNode("transform", "zyx");
  SetAttr("zyx.rotate", kQuarter, kQuarter, 0.0);
  SetAttr("zyx.rotateOrder", 5.0);
  // xyz: x turns (0,1,0) to (0,0,1), then y turns it to (1,0,0). zyx: y leaves it, then x turns it to (0,0,1).
  ExpectNear(World("|xyz", MPoint(0, 1, 0)), 1.0, 0.0, 0.0);
  ExpectNear(World("|zyx", MPoint(0, 1, 0)), 0.0, 0.0, 1.0);
}

TEST_F(TransformTest, JointOrientAppliesAfterTheJointRotation)
{
  CreateNode("joint", "root");
  SetAttr("root.rotate", 0.0, kQuarter, 0.0);
  SetAttr("root.jointOrient", 0.0, 0.0, kQuarter);
  // rotate first: (1,0,0) -> (0,0,-1), which the orient about z leaves alone; the other order would give (0,1,0).
  ExpectNear(World("|root", MPoint(1, 0, 0)), 0.0, 0.0, -1.0);
}

TEST_F(TransformTest, ChildJointFollowsItsOrientedParent)
{
  const MObject root = CreateNode("joint", "root");
  CreateNode("joint", "tip", root);
  SetAttr("root.translate", 5.0, 0.0, 0.0);
  SetAttr("root.jointOrient", 0.0, 0.0, kQuarter);
  SetAttr("tip.translate", 1.0, 0.0, 0.0);
  ExpectNear(World("|root|tip", MPoint(0, 0, 0)), 5.0, 1.0, 0.0);
}

TEST_F(TransformTest, SegmentScaleCompensationUndoesTheParentScale)
{
  const MObject root = CreateNode("joint", "root");
  CreateNode("joint", "tip", root);
  SetAttr("root.scale", 2.0, 2.0, 2.0);
  ConnectAttr("root.scale", "tip.inverseScale");
  SetAttr("tip.translate", 1.0, 0.0, 0.0);
  // The tip's offset is scaled by its parent, but its own axes are not.
  ExpectNear(World("|root|tip", MPoint(0, 0, 0)), 2.0, 0.0, 0.0);
  ExpectNear(World("|root|tip", MPoint(1, 0, 0)), 3.0, 0.0, 0.0);
}

TEST_F(TransformTest, RotatePivotKeepsThePivotInPlace)
{
  CreateNode("transform", "door");
  SetAttr("door.rotatePivot", 1.0, 0.0, 0.0);
  SetAttr("door.rotate", 0.0, 0.0, kQuarter);
  ExpectNear(World("|door", MPoint(1, 0, 0)), 1.0, 0.0, 0.0);
  ExpectNear(World("|door", MPoint(2, 0, 0)), 1.0, 1.0, 0.0);
}

TEST_F(TransformTest, InverseMatricesUndoTheForwardOnes)
{
  const MObject parent = CreateNode("transform", "p");
  CreateNode("transform", "c", parent);
  SetAttr("p.translate", 1.0, 2.0, 3.0);
  SetAttr("c.rotate", 0.3, 0.2, 0.1);
  SetAttr("c.scale", 1.0, -2.0, 1.0);
  const MDagPath path = PathTo("|p|c");
  EXPECT_TRUE((path.inclusiveMatrix() * path.inclusiveMatrixInverse()).isEquivalent(MMatrix::identity, 1e-12));
  EXPECT_LT(path.inclusiveMatrix().det3x3(), 0.0);
  EXPECT_TRUE(path.exclusiveMatrix().isEquivalent(PathTo("|p").inclusiveMatrix()));
}

TEST_F(TransformTest, EachInstanceHasItsOwnWorldMatrixPlug)
{
  const MObject a = CreateNode("transform", "a");
  const MObject b = CreateNode("transform", "b");
  const MObject shape = CreateMesh("sharedShape", a, MeshDescription{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0)}, {3}, {0, 1, 2}});
  AddInstance(shape, b);
  SetAttr("b.translateX", 4.0);
  const MMatrix second = MFnMatrixData(Plug("sharedShape.worldMatrix[1]").asMObject()).matrix();
  EXPECT_EQ(second(3, 0), 4.0);
  EXPECT_EQ(MFnMatrixData(Plug("sharedShape.worldMatrix[0]").asMObject()).matrix()(3, 0), 0.0);
}

// World matrices are kept between reads; each change that moves a joint must still show in the next read.
TEST_F(TransformTest, WorldMatrixFollowsTimeEditsHeldValuesAndReparenting)
{
  const MObject hip = CreateNode("joint", "hip");
  const MObject knee = CreateNode("joint", "knee", hip);
  const MObject other = CreateNode("transform", "other");
  SetAttr("knee.translateX", 1.0);
  Animate("hip.rotateZ", {{MTime(0.0, MTime::kFilm), 0.0, TangentType::Linear, TangentType::Linear},
                          {MTime(10.0, MTime::kFilm), kQuarter, TangentType::Linear, TangentType::Linear}});
  MGlobal::viewFrame(0.0);
  ExpectNear(World("|hip|knee", MPoint(0, 0, 0)), 1.0, 0.0, 0.0);
  MAnimControl::setCurrentTime(MTime(10.0, MTime::kFilm));
  ExpectNear(World("|hip|knee", MPoint(0, 0, 0)), 0.0, 1.0, 0.0);
  SetAttr("hip.translateZ", 2.0);
  ExpectNear(World("|hip|knee", MPoint(0, 0, 0)), 0.0, 1.0, 2.0);
  // A value set on the driven rotation holds until the time is set again.
  ASSERT_TRUE(Plug("hip.rotateZ").setValue(0.0));
  ExpectNear(World("|hip|knee", MPoint(0, 0, 0)), 1.0, 0.0, 2.0);
  MGlobal::viewFrame(10.0);
  ExpectNear(World("|hip|knee", MPoint(0, 0, 0)), 0.0, 1.0, 2.0);
  SetAttr("other.translateY", 5.0);
  ASSERT_TRUE(Reparent(knee, other));
  ExpectNear(World("|other|knee", MPoint(0, 0, 0)), 1.0, 5.0, 0.0);
}

TEST_F(TransformTest, FunctionSetReadsRotationWithItsOrder)
{
  const MObject t = CreateNode("transform", "t");
  SetAttr("t.rotate", 0.1, 0.2, 0.3);
  SetAttr("t.rotateOrder", 2.0);
  MEulerRotation rotation;
  ASSERT_TRUE(MFnTransform(t).getRotation(rotation));
  EXPECT_EQ(rotation.order, MEulerRotation::kZXY);
  EXPECT_DOUBLE_EQ(rotation.y, 0.2);
}

TEST_F(TransformTest, UninheritedTransformIgnoresItsParents)
{
  const MObject parent = CreateNode("transform", "p");
  CreateNode("transform", "c", parent);
  SetAttr("p.translateX", 10.0);
  SetAttr("c.inheritsTransform", 0.0);
  ExpectNear(World("|p|c", MPoint(0, 0, 0)), 0.0, 0.0, 0.0);
}

TEST_F(TransformTest, VectorTurnsByEulerAnglesInTheirOrder)
{
  const double angles[3] = {kQuarter, kQuarter, 0.0};
  const MVector xyz = MVector::yAxis.rotateBy(angles, MTransformationMatrix::kXYZ);
  const MVector zyx = MVector::yAxis.rotateBy(angles, MTransformationMatrix::kZYX);
  EXPECT_TRUE(xyz.isEquivalent(MVector::xAxis, 1e-12));
  EXPECT_TRUE(zyx.isEquivalent(MVector::zAxis, 1e-12));
}

}
