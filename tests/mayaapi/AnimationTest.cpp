#include <maya/MAnimControl.h>
#include <maya/MAnimUtil.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MGlobal.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

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

// Keys 0, 0.25 and 3 at seconds 0, 1 and 2, all of one tangent type, read at 0.25 s and 1.75 s. Hermite at a
// quarter of a unit segment: 0.84375 a + 0.15625 b + 0.140625 m0 - 0.046875 m1; at three quarters the mirror.
// Slopes (first out, middle in and out, last in): linear 0.25, 0.25|2.75, 2.75; smooth 0.25, 1.5, 2.75; clamped
// limits the middle to three times its smaller neighbouring secant, 0.75; plateau and auto are flat at the ends;
// the fixed keys' handles give 1, 0.5 and 4.
TEST_F(AnimationTest, EachTangentTypeShapesTheSegmentsAsMayaDoes)
{
  const struct {
    TangentType Type;
    double AtQuarter;
    double AtSevenQuarters;
  } cases[] = {
      {TangentType::Linear, 0.0625, 2.3125},     {TangentType::Flat, 0.0390625, 2.5703125},
      {TangentType::Spline, 0.00390625, 2.25390625}, {TangentType::Clamped, 0.0390625, 2.21875},
      {TangentType::Plateau, 0.00390625, 2.60546875}, {TangentType::Auto, 0.00390625, 2.60546875},
      {TangentType::Fixed, 0.15625, 2.03125},     {TangentType::Step, 0.0, 0.25},
      {TangentType::StepNext, 0.25, 3.0},
  };
  for (const auto& c : cases) {
    const TangentType t = c.Type;
    const MObject curve = Animate("ball.translateY", {{MTime(0.0, MTime::kSeconds), 0.0, t, t, 0, 0, 1, 1},
                                                      {MTime(1.0, MTime::kSeconds), 0.25, t, t, 2, 1, 2, 1},
                                                      {MTime(2.0, MTime::kSeconds), 3.0, t, t, 1, 4, 0, 0}});
    const MFnAnimCurve fn(curve);
    EXPECT_NEAR(fn.evaluate(MTime(0.25, MTime::kSeconds)), c.AtQuarter, 1e-12) << static_cast<int>(t);
    EXPECT_NEAR(fn.evaluate(MTime(1.75, MTime::kSeconds)), c.AtSevenQuarters, 1e-12) << static_cast<int>(t);
  }
}

// Keys 0 at 0 s and 1 at 1 s with flat handles of 1.5 s and 0.75 s: Bezier points (0, 0), (0.5, 0), (0.75, 1),
// (1, 1). At parameter 1/2 the time is (0 + 1.5 + 2.25 + 1) / 8 = 0.59375 and the value 1/2; at 1/4 the time is
// 0.33203125 and the value 0.15625. Unweighted, the same keys pass 1/2 at 0.5 s.
TEST_F(AnimationTest, WeightedHandlesBendTheTiming)
{
  const MObject curve = Animate("ball.translateY", {{MTime(0.0, MTime::kSeconds), 0.0, TangentType::Fixed,
                                                     TangentType::Fixed, 0, 0, 1.5, 0},
                                                    {MTime(1.0, MTime::kSeconds), 1.0, TangentType::Fixed,
                                                     TangentType::Fixed, 0.75, 0, 0, 0}});
  const MFnAnimCurve fn(curve);
  EXPECT_NEAR(fn.evaluate(MTime(0.5, MTime::kSeconds)), 0.5, 1e-12);
  ASSERT_TRUE(SetAttr(fn.name().asChar() + std::string(".weightedTangents"), true));
  EXPECT_TRUE(fn.isWeighted());
  EXPECT_NEAR(fn.evaluate(MTime(0.59375, MTime::kSeconds)), 0.5, 1e-12);
  EXPECT_NEAR(fn.evaluate(MTime(0.33203125, MTime::kSeconds)), 0.15625, 1e-12);
}

// Plateau and auto keys never carry the curve past the values of the keys on either side of a segment, whatever
// the keys, on unweighted curves and on weighted ones with random handle weights.
TEST_F(AnimationTest, PlateauAndAutoCurvesNeverOvershootTheirKeys)
{
  std::mt19937 random(15);
  std::uniform_real_distribution<double> step(0.01, 2.0);
  std::uniform_real_distribution<double> rise(-5.0, 5.0);
  for (int trial = 0; trial < 200; ++trial) {
    const TangentType type = trial % 2 ? TangentType::Plateau : TangentType::Auto;
    const bool weighted = trial % 4 >= 2;
    // Every other curve is monotone, the rest wander up and down and sometimes repeat a value.
    const bool monotone = trial % 8 < 4;
    std::vector<KeySpec> keys;
    double seconds = 0.0;
    double value = 0.0;
    for (int k = 0; k < 6; ++k) {
      const double weight = weighted ? step(random) : 0.0;
      keys.push_back({MTime(seconds, MTime::kSeconds), value, type, type, weight, 0, weight, 0});
      seconds += step(random);
      value += monotone ? std::fabs(rise(random)) : (trial % 3 == 0 && k == 2 ? 0.0 : rise(random));
    }
    NewScene();
    CreateNode("transform", "ball");
    const MObject curve = Animate("ball.translateY", keys);
    if (weighted) {
      ASSERT_TRUE(SetAttr(MFnDependencyNode(curve).name().asChar() + std::string(".weightedTangents"), true));
    }
    const MFnAnimCurve fn(curve);
    for (size_t k = 0; k + 1 < keys.size(); ++k) {
      const double low = std::min(keys[k].value, keys[k + 1].value);
      const double high = std::max(keys[k].value, keys[k + 1].value);
      const double from = keys[k].time.as(MTime::kSeconds);
      const double to = keys[k + 1].time.as(MTime::kSeconds);
      for (int i = 1; i < 50; ++i) {
        const double v = fn.evaluate(MTime(from + (to - from) * i / 50.0, MTime::kSeconds));
        ASSERT_GE(v, low - 1e-9) << "trial " << trial << " segment " << k;
        ASSERT_LE(v, high + 1e-9) << "trial " << trial << " segment " << k;
      }
    }
  }
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
