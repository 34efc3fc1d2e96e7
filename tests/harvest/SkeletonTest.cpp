#include "HarvestTestScene.h"

#include "harvest/BoneMatrix.h"
#include "harvest/EnterBindPose.h"
#include "harvest/ExportBone.h"
#include "harvest/ModelMeshExporter.h"
#include "model/VMModel.h"
#include "report/VIssueKind.h"

#include <maya/MAnimControl.h>

#include <numbers>
#include <string>
#include <vector>

namespace {

using namespace harvesttest;
using namespace standin;

class SkeletonTest : public HarvestTest {
protected:
    void SetUp() override
    {
        HarvestTest::SetUp();
        parameters.FormatKind = kFormatKindModel;
        parameters.Options.ExportBones = true;
    }

    const VMBone& Bone(int index) { return *model.Skeleton->Bones[index]; }

    std::vector<std::string> BoneNames()
    {
        std::vector<std::string> names;
        for (const VMBone* bone : model.Skeleton->Bones)
            names.push_back(bone->Name);
        return names;
    }

    VMModel model;
};

MMatrix Rows(std::vector<std::vector<double>> rows)
{
    MMatrix m;
    for (unsigned int r = 0; r < 4; ++r)
        for (unsigned int c = 0; c < 4; ++c)
            m[r][c] = rows[r][c];
    return m;
}

// hip -> grp (a transform) -> knee -> ankle, and a second top-level joint
TEST_F(SkeletonTest, BonesHangUnderTheNearestAncestorJointAcrossGroupTransforms)
{
    const MObject hip = CreateNode("joint", "hip");
    const MObject knee = CreateNode("joint", "knee", CreateNode("transform", "grp", hip));
    CreateNode("joint", "ankle", knee);
    CreateNode("joint", "prop");

    GetMeshes(State(), model, 3);

    ASSERT_NE(model.Skeleton, nullptr);
    EXPECT_EQ(BoneNames(), (std::vector<std::string>{"hip", "knee", "ankle", "prop"}));
    EXPECT_EQ(model.Skeleton->Root, &Bone(0));
    EXPECT_EQ(Bone(0).Parent, nullptr);
    EXPECT_EQ(Bone(1).Parent, &Bone(0));
    EXPECT_EQ(Bone(2).Parent, &Bone(1));
    EXPECT_EQ(Bone(3).Parent, nullptr);
    EXPECT_EQ(Bone(0).Children.Count(), 1);
    EXPECT_EQ(Bone(2).FullName, "|hip|grp|knee|ankle");
    const std::string log = DebugText();
    EXPECT_NE(log.find("ExportBone: '|hip|grp|knee' 'knee'\r\nParent: |hip\r\n"), std::string::npos);
    EXPECT_NE(log.find("ExportBone: '|prop' 'prop'\r\nParent: \r\nUsing worlspace matrix\r\n"
                       "Unable to find parent bone ''\r\n"),
              std::string::npos);
    EXPECT_EQ(report.Issues().size(), 0u);
}

// root -> left -> arm, root -> right -> arm -> hand
TEST_F(SkeletonTest, ASecondBoneOfANameIsMadeWithAnIssueAndChildrenOfEitherFollowTheFirst)
{
    const MObject root = CreateNode("joint", "root");
    CreateNode("joint", "arm", CreateNode("joint", "left", root));
    CreateNode("joint", "hand", CreateNode("joint", "arm", CreateNode("joint", "right", root)));

    GetMeshes(State(), model, 3);

    EXPECT_EQ(BoneNames(), (std::vector<std::string>{"root", "left", "arm", "right", "arm", "hand"}));
    EXPECT_EQ(Bone(4).Parent, &Bone(3));
    EXPECT_EQ(Bone(5).Parent, &Bone(2));
    EXPECT_EQ(report.Details(IssueDuplicateBoneNames), (std::vector<std::string>{"'arm' and '|root|right|arm''"}));
}

TEST_F(SkeletonTest, AnythingButAJointIsRefused)
{
    CreateNode("transform", "grp");
    EXPECT_EQ(ExportBone(State(), PathTo("grp"), model, 3), -1);
    EXPECT_EQ(model.Skeleton, nullptr);
    EXPECT_EQ(DebugText(), "Invalid joint!\r\n");
}

// Two joints bound by one skin cluster, then posed: each bone's matrix is the inverse of its own
// "bindPreMatrix" entry, not the pose and not the pose the skin was bound in.
TEST_F(SkeletonTest, BoneMatrixComesFromTheSkinClustersBindPreMatrixNotFromThePose)
{
    const MObject hip = CreateNode("joint", "hip");
    const MObject knee = CreateNode("joint", "knee", hip);
    const MObject shape = CreateMesh("bodyShape", CreateNode("transform", "body"), TwoQuads());
    ASSERT_FALSE(SkinMesh(shape, {hip, knee}, std::vector<std::vector<double>>(6, {0.5, 0.5})).isNull());
    SetAttr("skinCluster1.bindPreMatrix[1]", Rows({{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {-7, -8, -9, 1}}));
    SetAttr("hip.rotateZ", std::numbers::pi / 2);
    SetAttr("hip.translate", 1.0, 2.0, 3.0);
    CreateNode("joint", "loose");

    GetMeshes(State(), model, 3);

    ASSERT_EQ(model.Skeleton->Bones.Count(), 3);
    // A joint at rest in Maya: its y axis is the engine's up (z), its z axis the engine's -y.
    const float atRest[12] = {1, 0, 0, 0, 0, 1, 0, -1, 0, 0, 0, 0};
    // Moved to Maya (7, 8, 9), the engine's (7, -9, 8).
    const float moved[12] = {1, 0, 0, 0, 0, 1, 0, -1, 0, 7, -9, 8};
    for (int i = 0; i < 12; ++i) {
        EXPECT_FLOAT_EQ(Bone(0).GlobalTransform.M[i], atRest[i]) << i;
        EXPECT_FLOAT_EQ(Bone(1).GlobalTransform.M[i], moved[i]) << i;
        EXPECT_FLOAT_EQ(Bone(2).GlobalTransform.M[i], atRest[i]) << i;
    }
    const std::string log = DebugText();
    EXPECT_NE(log.find("'knee'\r\nParent: |hip\r\nUsing SkinCluster: skinCluster1\r\n"), std::string::npos);
    EXPECT_NE(log.find("'loose'\r\nParent: \r\nUsing worlspace matrix\r\n"), std::string::npos);
}

struct BoneMatrixCase {
    const char* Name;
    MMatrix BindWorld;
    float Expected[12];
};

class BoneMatrixTest : public SkeletonTest, public ::testing::WithParamInterface<BoneMatrixCase> {};

TEST_P(BoneMatrixTest, BindWorldMatrixBecomesAnOrthonormalRightHandedFrameInEngineAxes)
{
    const MObject joint = CreateNode("joint", "j");
    const MObject shape = CreateMesh("bodyShape", CreateNode("transform", "body"), TwoQuads());
    ASSERT_FALSE(SkinMesh(shape, {joint}, std::vector<std::vector<double>>(6, {1.0})).isNull());
    SetAttr("skinCluster1.bindPreMatrix[0]", GetParam().BindWorld.inverse());

    const VMTransform bone = BoneMatrix(PathTo("j"), true);

    for (int i = 0; i < 12; ++i)
        EXPECT_NEAR(bone.M[i], GetParam().Expected[i], 1e-6) << i;
}

INSTANTIATE_TEST_SUITE_P(
    Frames, BoneMatrixTest,
    ::testing::Values(
        // Rows are Maya's local x, y, z axes and the position; columns of the result are the
        // same axes in engine coordinates (x, -z, y).
        BoneMatrixCase{"TurnedAndMoved", Rows({{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {1, 2, 3, 1}}),
                       {0, 0, 1, -1, 0, 0, 0, -1, 0, 1, -3, 2}},
        // Scaled axes are normalised; y leans on x and keeps only its part across it.
        BoneMatrixCase{"Sheared", Rows({{2, 0, 0, 0}, {1, 1, 0, 0}, {0, 0, 3, 0}, {0, 0, 0, 1}}),
                       {1, 0, 0, 0, 0, 1, 0, -1, 0, 0, 0, 0}},
        // Mirrored along x: the third axis flips to make the frame right-handed.
        BoneMatrixCase{"Mirrored", Rows({{-1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}),
                       {-1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0}}),
    [](const ::testing::TestParamInfo<BoneMatrixCase>& test) { return std::string(test.param.Name); });

class EnterBindPoseTest : public SkeletonTest, public ::testing::WithParamInterface<bool> {};

TEST_P(EnterBindPoseTest, GoesToFrameZeroAndRestoresTheBindPoseOnlyWhenAsked)
{
    parameters.Options.GotoBindPose = GetParam();
    const MObject root = CreateNode("joint", "root");
    SaveBindPose({root, CreateNode("joint", "tip", root)});
    SetAttr("root.rotateY", 1.0);
    MAnimControl::setCurrentTime(MTime(12.0));
    State().Stats.FirstJoint = PathTo("root");

    EXPECT_EQ(EnterBindPose(State()), MTime(12.0));

    EXPECT_EQ(MAnimControl::currentTime(), MTime(0.0));
    EXPECT_EQ(Plug("root.rotateY").asDouble(), GetParam() ? 0.0 : 1.0);
    EXPECT_EQ(CommandsRun(), GetParam() ? std::vector<std::string>{"dagPose -r -g -bp root"} : std::vector<std::string>{});
    EXPECT_EQ(DebugText(), GetParam() ? "Entering Bind Pose for skeleton with root root\r\n" : "");
}

INSTANTIATE_TEST_SUITE_P(Option, EnterBindPoseTest, ::testing::Bool());

}
