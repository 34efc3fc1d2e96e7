#include <maya/MDistance.h>
#include <maya/MGlobal.h>
#include <maya/MTime.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace standin;

class UnitsAndCommandsTest : public ::testing::Test {
protected:
  void SetUp() override { NewScene(); }
};

TEST_F(UnitsAndCommandsTest, OneFrameOfEachNamedUnitLastsItsTicks)
{
  const struct {
    MTime::Unit unit;
    double ticks;
  } table[] = {{MTime::kHours, 86400000}, {MTime::kMinutes, 1440000}, {MTime::kSeconds, 24000},
               {MTime::kMilliseconds, 24},  {MTime::kGames, 1600},      {MTime::kFilm, 1000},
               {MTime::kPALFrame, 960},     {MTime::kNTSCFrame, 800},   {MTime::kShowScan, 500},
               {MTime::kPALField, 480},     {MTime::kNTSCField, 400}};
  for (const auto& row : table)
    EXPECT_NEAR(MTime(1.0, row.unit).as(MTime::kSeconds) * 24000.0, row.ticks, 1e-6) << row.unit;
}

TEST_F(UnitsAndCommandsTest, FrameRatesBeyondTheNamedUnitsFollowTheirNumber)
{
  EXPECT_NEAR(MTime(1.0, MTime::k2FPS).as(MTime::kSeconds), 0.5, 1e-12);
  EXPECT_NEAR(MTime(1.0, MTime::k6000FPS).as(MTime::kSeconds), 1.0 / 6000.0, 1e-15);
  EXPECT_NEAR(MTime(1.0, MTime::k375FPS).as(MTime::kSeconds), 1.0 / 375.0, 1e-15);
  EXPECT_EQ(MTime::k6000FPS, 42);
  EXPECT_EQ(MTime::kUserDef, 43);
  EXPECT_EQ(MTime::kLast, 44);
  EXPECT_NEAR(MTime(24.0, MTime::kFilm).as(MTime::kNTSCFrame), 30.0, 1e-9);
  MTime t(2.0, MTime::kSeconds);
  t.setUnit(MTime::kPALFrame);
  EXPECT_NEAR(t.value(), 50.0, 1e-9);
  EXPECT_EQ(MTime::uiUnit(), MTime::kFilm);
}

TEST_F(UnitsAndCommandsTest, DistanceUiUnitGivesTheUnitFactor)
{
  EXPECT_EQ(MDistance(1.0, MDistance::uiUnit()).asCentimeters(), 1.0);
  ASSERT_TRUE(MDistance::setUIUnit(MDistance::kMeters));
  EXPECT_EQ(MDistance(1.0, MDistance::uiUnit()).asCentimeters(), 100.0);
  EXPECT_NEAR(MDistance(1.0, MDistance::kInches).asCentimeters(), 2.54, 1e-12);
}

TEST_F(UnitsAndCommandsTest, CommandsAnswerPromptQueriesRecordWindowCommandsAndRefuseUnknownOnes)
{
  int prompt = 1;
  ASSERT_TRUE(MGlobal::executeCommand("file -q -prompt", prompt));
  EXPECT_EQ(prompt, 0) << "batch";
  EXPECT_TRUE(MGlobal::executeCommand("minimizeApp;"));
  EXPECT_TRUE(MGlobal::executeCommand("showWindow MayaWindow;"));
  EXPECT_EQ(CommandsRun(), (std::vector<std::string>{"file -q -prompt", "minimizeApp;", "showWindow MayaWindow;"}));
  const MStatus status = MGlobal::executeCommand("polyCube -w 2");
  EXPECT_EQ(status, MS::kNotImplemented);
  EXPECT_EQ(status.errorString(), "Cannot find procedure \"polyCube\".");
  SetInteractive(true);
  ASSERT_TRUE(MGlobal::executeCommand("file -q -prompt", prompt));
  EXPECT_EQ(prompt, 1);
}

TEST_F(UnitsAndCommandsTest, CreateAndAssignShaderGivesTheMeshANewBlinn)
{
  CreateMesh("importedShape", MObject(), MeshDescription{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0)}, {3}, {0, 1, 2}});
  ASSERT_TRUE(MGlobal::executeCommand("createAndAssignShader blinn \"imported\""));
  EXPECT_FALSE(NodeByName("blinn1").isNull());
  EXPECT_TRUE(Plug("blinn1SG.dagSetMembers[0]").isConnected());
  EXPECT_FALSE(MGlobal::executeCommand("createAndAssignShader blinn \"nothing\""));
}

TEST_F(UnitsAndCommandsTest, BindPoseCommandRestoresTheSavedJointValues)
{
  const MObject root = CreateNode("joint", "root");
  const MObject tip = CreateNode("joint", "tip", root);
  SetAttr("tip.translateX", 3.0);
  SaveBindPose({root, tip});
  SetAttr("tip.translateX", 8.0);
  SetAttr("root.rotateZ", 1.0);
  ASSERT_TRUE(MGlobal::executeCommand("dagPose -r -g -bp root"));
  EXPECT_EQ(Plug("tip.translateX").asDouble(), 3.0);
  EXPECT_EQ(Plug("root.rotateZ").asDouble(), 0.0);
  EXPECT_FALSE(MGlobal::executeCommand("dagPose -r -g -bp nobody"));
}

TEST_F(UnitsAndCommandsTest, VersionIsTheTargetedApi)
{
  EXPECT_EQ(MGlobal::mayaVersion(), "8.5");
  EXPECT_EQ(MGlobal::apiVersion(), 850);
  EXPECT_EQ(MGlobal::mayaState(), MGlobal::kBatch);
}

TEST_F(UnitsAndCommandsTest, BindPoseWinsOverAnimationUntilTheTimeIsNextSet)
{
  const MObject root = CreateNode("joint", "root");
  SaveBindPose({root});
  Animate("root.rotateZ", {{MTime(0.0, MTime::kFilm), 1.0}, {MTime(10.0, MTime::kFilm), 2.0}});
  MGlobal::viewFrame(0.0);
  EXPECT_EQ(Plug("root.rotateZ").asDouble(), 1.0);
  ASSERT_TRUE(MGlobal::executeCommand("dagPose -r -g -bp root"));
  EXPECT_EQ(Plug("root.rotateZ").asDouble(), 0.0);
  MGlobal::viewFrame(10.0);
  EXPECT_EQ(Plug("root.rotateZ").asDouble(), 2.0);
}

}
