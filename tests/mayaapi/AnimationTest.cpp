#include <maya/MAnimControl.h>
#include <maya/MAnimUtil.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MGlobal.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

namespace {

using namespace standin;

class AnimationTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    NewScene();
    CreateNode("transform", "ball");
  }

  static double At(double frame)
  {
    MGlobal::viewFrame(frame);
    return Plug("ball.translateY").asDouble();
  }

  static MObject Keys(TangentType type)
  {
    return Animate("ball.translateY", {{MTime(0.0, MTime::kFilm), 0.0, type, type},
                                       {MTime(10.0, MTime::kFilm), 10.0, type, type},
                                       {MTime(20.0, MTime::kFilm), 0.0, type, type}});
  }
};

// Keys 0 at frame 0, 10 at 10, 0 at 20, all of one tangent type; the value at a frame.
TEST_F(AnimationTest, KeysInterpolateByTheirTangentTypeAndHoldOutsideTheRange)
{
  struct Case {
    TangentType type;
    double frame;
    double value;
  };
  // A flat Hermite segment from 0 to 10 reaches half of the way at its middle, 3s^2 - 2s^3 at s.
  const Case cases[] = {
      {TangentType::Linear, 0, 0.0},    {TangentType::Linear, 10, 10.0},  {TangentType::Linear, 5, 5.0},
      {TangentType::Linear, 15, 5.0},   {TangentType::Linear, -4, 0.0},   {TangentType::Linear, 30, 0.0},
      {TangentType::Step, 9.9, 0.0},    {TangentType::Step, 10, 10.0},    {TangentType::Step, 19, 10.0},
      {TangentType::StepNext, 0, 0.0},  {TangentType::StepNext, 1, 10.0}, {TangentType::StepNext, 15, 0.0},
      {TangentType::Flat, 5, 5.0},      {TangentType::Flat, 2, 10.0 * (3 * 0.04 - 2 * 0.008)},
  };
  for (const Case& c : cases) {
    NewScene();
    CreateNode("transform", "ball");
    Keys(c.type);
    EXPECT_NEAR(At(c.frame), c.value, 1e-9) << "type " << static_cast<int>(c.type) << " at " << c.frame;
  }
}

// ball.translate <- pairBlend (input 2 only on y, blended x) <- unitConversion <- driven key on driver.translateX
// A rise from 0 to 10 over frames 0 to 10, read 2 and 12 frames before and after it.
TEST_F(AnimationTest, InfinityTypesCarryTheCurveBeyondItsKeys)
{
  const MObject curve = Animate("ball.translateY", {{MTime(0.0, MTime::kFilm), 0.0, TangentType::Linear, TangentType::Linear},
                                                    {MTime(10.0, MTime::kFilm), 10.0, TangentType::Linear, TangentType::Linear}});
  const std::string name = MFnDependencyNode(curve).name().asChar();
  const struct {
    MFnAnimCurve::InfinityType Type;
    double Before[2]; // at -2 and -12
    double After[2];  // at 12 and 22
  } cases[] = {{MFnAnimCurve::kConstant, {0, 0}, {10, 10}},     {MFnAnimCurve::kLinear, {-2, -12}, {12, 22}},
               {MFnAnimCurve::kCycle, {8, 8}, {2, 2}},          {MFnAnimCurve::kCycleRelative, {-2, -12}, {12, 22}},
               {MFnAnimCurve::kOscillate, {2, 8}, {8, 2}}};
  for (const auto& c : cases) {
    SetAttr(name + ".preInfinity", c.Type);
    SetAttr(name + ".postInfinity", c.Type);
    const MFnAnimCurve fn(curve);
    EXPECT_EQ(fn.postInfinityType(), c.Type);
    EXPECT_NEAR(fn.evaluate(MTime(-2.0, MTime::kFilm)), c.Before[0], 1e-9) << c.Type;
    EXPECT_NEAR(fn.evaluate(MTime(-12.0, MTime::kFilm)), c.Before[1], 1e-9) << c.Type;
    EXPECT_NEAR(fn.evaluate(MTime(12.0, MTime::kFilm)), c.After[0], 1e-9) << c.Type;
    EXPECT_NEAR(fn.evaluate(MTime(22.0, MTime::kFilm)), c.After[1], 1e-9) << c.Type;
  }
}

TEST_F(AnimationTest, DrivenKeysFlowThroughUnitConversionAndPairBlend)
{
  CreateNode("transform", "driver");
  CreateNode("animCurveUL", "drivenKey");
  SetKeys(NodeByName("drivenKey"), {{MTime(0.0, MTime::kSeconds), 0.0, TangentType::Linear, TangentType::Linear},
                                    {MTime(10.0, MTime::kSeconds), 5.0, TangentType::Linear, TangentType::Linear}});
  CreateNode("unitConversion", "halve");
  CreateNode("pairBlend", "blend");
  ASSERT_TRUE(ConnectAttr("driver.translateX", "drivenKey.input"));
  ASSERT_TRUE(ConnectAttr("drivenKey.output", "halve.input"));
  ASSERT_TRUE(SetAttr("halve.conversionFactor", 0.5));
  ASSERT_TRUE(ConnectAttr("halve.output", "blend.inTranslateX2"));
  ASSERT_TRUE(ConnectAttr("halve.output", "blend.inTranslateY2"));
  ASSERT_TRUE(SetAttr("blend.inTranslateX1", 3.0));
  ASSERT_TRUE(SetAttr("blend.weight", 0.25));
  ASSERT_TRUE(SetAttr("blend.translateYMode", 2.0));
  ASSERT_TRUE(ConnectAttr("blend.outTranslate", "ball.translate"));
  ASSERT_TRUE(SetAttr("driver.translateX", 4.0));

  // The key gives 2 at 4, halved to 1; y takes input 2 only, x blends 3 and 1 by a quarter.
  EXPECT_DOUBLE_EQ(Plug("ball.translateY").asDouble(), 1.0);
  EXPECT_DOUBLE_EQ(Plug("ball.translateX").asDouble(), 2.5);
}

TEST_F(AnimationTest, SplineKeysTakeTheSlopeOfTheirNeighbours)
{
  Animate("ball.translateY", {{MTime(0.0, MTime::kFilm), 0.0, TangentType::Spline, TangentType::Spline},
                              {MTime(10.0, MTime::kFilm), 10.0, TangentType::Spline, TangentType::Spline},
                              {MTime(20.0, MTime::kFilm), 30.0, TangentType::Spline, TangentType::Spline}});
  // Middle slope (30-0)/20 frames; first key slope 10/10. h = 10 frames: m0 = 10, m1 = 15.
  const double s = 0.5;
  const double expected = (s * s * s - 2 * s * s + s) * 10 + (-2 * s * s * s + 3 * s * s) * 10 + (s * s * s - s * s) * 15;
  EXPECT_NEAR(At(5), expected, 1e-9);
  EXPECT_DOUBLE_EQ(At(10), 10.0);
}

TEST_F(AnimationTest, ClampedKeysGoFlatNextToAnEqualValue)
{
  Animate("ball.translateY", {{MTime(0.0, MTime::kFilm), 0.0}, {MTime(10.0, MTime::kFilm), 10.0},
                              {MTime(20.0, MTime::kFilm), 10.0}});
  // The middle key equals its right neighbour, so both of its tangents are flat: the second segment stays at 10.
  EXPECT_DOUBLE_EQ(At(15), 10.0);
  EXPECT_GT(At(5), 5.0);
}

TEST_F(AnimationTest, AngularCurveDrivesARotationInRadians)
{
  const MObject curve = Animate("ball.rotateZ", {{MTime(0.0, MTime::kFilm), 0.0, TangentType::Linear, TangentType::Linear},
                                                 {MTime(1.0, MTime::kSeconds), 1.0, TangentType::Linear, TangentType::Linear}});
  EXPECT_EQ(MFnAnimCurve(curve).animCurveType(), MFnAnimCurve::kAnimCurveTA);
  MGlobal::viewFrame(MTime(0.5, MTime::kSeconds));
  EXPECT_DOUBLE_EQ(Plug("ball.rotateZ").asDouble(), 0.5);
}

TEST_F(AnimationTest, CurveKeysReportTheirTimesInTheUiUnit)
{
  const MObject curve = Keys(TangentType::Linear);
  MFnAnimCurve fn(curve);
  ASSERT_EQ(fn.numKeys(), 3u);
  EXPECT_EQ(fn.time(1).unit(), MTime::kFilm);
  EXPECT_DOUBLE_EQ(fn.time(1).value(), 10.0);
  MTime::setUIUnit(MTime::kNTSCFrame);
  EXPECT_NEAR(fn.time(1).value(), 12.5, 1e-9);
  EXPECT_EQ(fn.outTangentType(0), MFnAnimCurve::kTangentLinear);
}

TEST_F(AnimationTest, AnimUtilFindsTheDrivenPlugsAndTheirCurves)
{
  Keys(TangentType::Linear);
  Animate("ball.translateX", {{MTime(3.0, MTime::kFilm), 1.0}});
  MPlugArray plugs;
  ASSERT_TRUE(MAnimUtil::findAnimatedPlugs(PathTo("|ball"), plugs));
  ASSERT_EQ(plugs.length(), 2u);
  EXPECT_EQ(plugs[0].name(), "ball.translateX");
  EXPECT_EQ(plugs[1].name(), "ball.translateY");
  MObjectArray curves;
  ASSERT_TRUE(MAnimUtil::findAnimation(plugs[0], curves));
  EXPECT_EQ(MFnAnimCurve(curves[0]).time(0).value(), 3.0);
  EXPECT_TRUE(MAnimUtil::isAnimated(NodeByName("ball")));
  EXPECT_FALSE(MAnimUtil::isAnimated(CreateNode("transform", "still")));
}

TEST_F(AnimationTest, ViewFrameMovesTheCurrentTimeInTheUiUnit)
{
  MGlobal::viewFrame(12.0);
  EXPECT_DOUBLE_EQ(MAnimControl::currentTime().value(), 12.0);
  EXPECT_DOUBLE_EQ(MAnimControl::currentTime().as(MTime::kSeconds), 0.5);
  SetPlaybackRange(MTime(1.0, MTime::kFilm), MTime(48.0, MTime::kFilm));
  EXPECT_DOUBLE_EQ(MAnimControl::maxTime().value(), 48.0);
}

}
