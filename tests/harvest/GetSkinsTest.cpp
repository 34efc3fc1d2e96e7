#include "HarvestTestScene.h"

#include "harvest/GetSkins.h"
#include "harvest/ModelMeshExporter.h"
#include "model/Validate.h"
#include "model/VMModel.h"
#include "report/VIssueKind.h"

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace harvesttest;
using namespace standin;

using Influences = std::vector<std::pair<std::string, float>>;

class GetSkinsTest : public HarvestTest {
protected:
    void SetUp() override
    {
        HarvestTest::SetUp();
        parameters.FormatKind = kFormatKindModel;
        parameters.Options.ExportBones = true;
    }

    MObject Mesh(const std::string& name, const MeshDescription& description)
    {
        const MObject shape = CreateMesh(name + "Shape", CreateNode("transform", name), description);
        Assign(NodeByName("greySG").isNull() ? CreateShader("lambert", "grey") : NodeByName("greySG"), shape);
        return shape;
    }

    void Harvest()
    {
        GetMeshes(State(), model, 3);
        GetSkins(State(), model);
    }

    Influences Of(int vertex) const
    {
        Influences influences;
        const VMSkinVertex& v = *model.Vertices[vertex];
        for (uint32_t k = 0; k < v.InfluenceCount; ++k)
            influences.emplace_back(v.InfluenceBones[k]->Name, v.InfluenceWeights[k]);
        return influences;
    }

    VMModel model;
};

struct SkinCase {
    const char* Name;
    int32_t ExportBlended;
    std::vector<Influences> Expected;
};

class SkinClustersTest : public GetSkinsTest, public ::testing::WithParamInterface<SkinCase> {};

// Joint clusters of a (vertex 0) and then b (vertices 0 and 5) over the smoothly skinned body: rigid
// weights come first, in the clusters' node order, then the skin cluster's in influence order.
TEST_P(SkinClustersTest, RigidThenSmoothWeightsInInfluenceOrder)
{
    parameters.Options.ExportBlended = GetParam().ExportBlended;
    const MObject root = CreateNode("joint", "root");
    const MObject a = CreateNode("joint", "a", root);
    const MObject b = CreateNode("joint", "b", root);
    const MObject body = Mesh("body", TwoQuads());
    ASSERT_FALSE(SkinMesh(body, {root, a, b},
                          {{1, 0, 0}, {0.5, 0.5, 0}, {0.001, 0.999, 0}, {0, 0.4, 0.6}, {0.2, 0.2, 0.6}, {0, 0, 1}})
                     .isNull());
    ASSERT_FALSE(BindRigid(a, body, {0}, {0.25}).isNull());
    ASSERT_FALSE(BindRigid(b, body, {0, 5}, {0.5, 0.001}).isNull());
    CreateNode("jointCluster", "orphanCluster");

    Harvest();

    ASSERT_EQ(model.Vertices.Count(), 6);
    for (int v = 0; v < 6; ++v)
        EXPECT_EQ(Of(v), GetParam().Expected[static_cast<size_t>(v)]) << "vertex " << v;
    EXPECT_EQ(report.Details(IssueRigidClusterWithoutJoint), (std::vector<std::string>{"orphanCluster"}));
    EXPECT_EQ(report.Count(IssueVertexWithoutSkin), 0);
    EXPECT_EQ(Validate(model), std::vector<std::string>{});
    const std::string log = DebugText();
    EXPECT_NE(log.find("JointCluster DepNode: jointCluster2\r\nTrying to get joint connection: [jointCluster2]\r\n"
                       "Got bone b\r\n"),
              std::string::npos);
    EXPECT_NE(log.find("DepNode: skinCluster1\r\nFound! Smooth skinning...\r\n"), std::string::npos);
    EXPECT_NE(log.find("Skin: bodyShape   NumVerts: 6   NumBones: 3\r\n"), std::string::npos);
    EXPECT_NE(log.find("|root \r\n|root|a \r\n|root|b \r\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    Blending, SkinClustersTest,
    ::testing::Values(
        // Weights of 0.001 and below are left out.
        SkinCase{"Blended", 1,
                 {{{"a", 0.25f}, {"b", 0.5f}, {"root", 1.0f}},
                  {{"root", 0.5f}, {"a", 0.5f}},
                  {{"a", 0.999f}},
                  {{"a", 0.4f}, {"b", 0.6f}},
                  {{"root", 0.2f}, {"a", 0.2f}, {"b", 0.6f}},
                  {{"b", 1.0f}}}},
        // The strongest influence at full weight; of equal ones the first.
        SkinCase{"Strongest", 0,
                 {{{"a", 0.25f}, {"b", 0.5f}, {"root", 1.0f}},
                  {{"root", 1.0f}},
                  {{"a", 1.0f}},
                  {{"b", 1.0f}},
                  {{"b", 1.0f}},
                  {{"b", 1.0f}}}}),
    [](const ::testing::TestParamInfo<SkinCase>& test) { return std::string(test.param.Name); });

// A hard-edged skinned cube splits its 8 vertices into 24; an unskinned mesh beside it has none.
TEST_F(GetSkinsTest, SplitCopiesTakeTheirSourcesWeightsAndUnweightedVerticesGoToTheRoot)
{
    const MObject root = CreateNode("joint", "root");
    const MObject arm = CreateNode("joint", "arm", root);
    const MObject cube = Mesh("box", Cube());
    SetHardEdges(cube, CubeEdges());
    ASSERT_FALSE(SkinMesh(cube, {root, arm}, std::vector<std::vector<double>>(8, {0.75, 0.25})).isNull());
    Mesh("cloth", TwoQuads());

    Harvest();

    ASSERT_EQ(model.Vertices.Count(), 24 + 6);
    for (int v = 0; v < 24; ++v) {
        EXPECT_EQ(Of(v), (Influences{{"root", 0.75f}, {"arm", 0.25f}})) << v;
        EXPECT_EQ(model.Vertices[v]->BoundToRoot, 0);
    }
    for (int v = 24; v < 30; ++v) {
        EXPECT_EQ(Of(v), (Influences{{"root", 1.0f}})) << v;
        EXPECT_EQ(model.Vertices[v]->BoundToRoot, 1);
    }
    EXPECT_EQ(report.Details(IssueVertexWithoutSkin),
              (std::vector<std::string>{"6 vertices were not assigned\r\nPlease check for non-skinned vertices"}));
    EXPECT_EQ(Validate(model), std::vector<std::string>{});
}

// The shape's second instance stands 10 units along x from the first, where the skin bound it.
TEST_F(GetSkinsTest, EachInstanceOfASkinnedShapeStandsWhereMayaShowsItAndFollowsTheSameWeights)
{
    const MObject root = CreateNode("joint", "root");
    const MObject arm = CreateNode("joint", "arm", root);
    const MObject body = Mesh("body", TwoQuads());
    ASSERT_FALSE(SkinMesh(body, {root, arm}, {{1, 0}, {0.5, 0.5}, {0, 1}, {1, 0}, {0.25, 0.75}, {0, 1}}).isNull());
    const MObject copy = CreateNode("transform", "copy");
    ASSERT_TRUE(SetAttr("copy.translate", 10, 0, 0));
    ASSERT_TRUE(AddInstance(body, copy));
    ASSERT_TRUE(Assign(NodeByName("greySG"), body, 1));

    Harvest();

    ASSERT_EQ(model.Vertices.Count(), 12);
    for (int v = 0; v < 6; ++v) {
        const VMSkinVertex& first = *model.Vertices[v];
        const VMSkinVertex& second = *model.Vertices[v + 6];
        EXPECT_EQ(Of(v + 6), Of(v)) << v;
        EXPECT_FLOAT_EQ(second.Position[0], first.Position[0] + 10.0f) << v;
        EXPECT_FLOAT_EQ(second.Position[1], first.Position[1]) << v;
        EXPECT_FLOAT_EQ(second.Position[2], first.Position[2]) << v;
    }
    EXPECT_EQ(report.Count(IssueVertexWithoutSkin), 0);
}

TEST_F(GetSkinsTest, AModelWithoutBonesRaisesTheIssueAndBindsNothing)
{
    Mesh("cloth", TwoQuads());
    Harvest();
    EXPECT_EQ(report.Details(IssueNoBonesInAnimation), (std::vector<std::string>{""}));
    EXPECT_EQ(model.Vertices[0]->InfluenceCount, 0u);
    EXPECT_NE(DebugText().find("GetSkins()\r\nScanning for MAYA rigid skinning...\r\nScanning for MAYA smooth "
                               "skinning...\r\nPrecalculating phase\r\nPost-check\r\n"),
              std::string::npos);
}

}
