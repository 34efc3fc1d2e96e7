#include <maya/MFnDependencyNode.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlug.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace standin;

std::vector<std::string> Names(MItDependencyGraph& it)
{
  std::vector<std::string> names;
  for (; !it.isDone(); it.next())
    names.push_back(MFnDependencyNode(it.thisNode()).name().asChar());
  return names;
}

//   far (layer) -> mid.drawOverride ; mid.translateX -> node.translateX ; near (layer) -> node.drawOverride
class DependencyGraphTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    NewScene();
    node = CreateNode("transform", "node");
    mid = CreateNode("transform", "mid");
    CreateDisplayLayer("far", {mid});
    ConnectAttr("mid.translateX", "node.translateX");
    CreateDisplayLayer("near", {node});
  }

  MObject node, mid;
};

TEST_F(DependencyGraphTest, WalksStartAtTheRootAndPruneOnTheFilterOnlyWhenAsked)
{
  const struct {
    MFn::Type filter;
    MItDependencyGraph::Traversal order;
    bool pruning;
    std::vector<std::string> names;
  } walks[] = {
      {MFn::kInvalid, MItDependencyGraph::kBreadthFirst, false, {"node", "mid", "near", "far"}},
      {MFn::kInvalid, MItDependencyGraph::kDepthFirst, false, {"node", "mid", "far", "near"}},
      {MFn::kDisplayLayer, MItDependencyGraph::kBreadthFirst, true, {"near"}},
      {MFn::kDisplayLayer, MItDependencyGraph::kBreadthFirst, false, {"near", "far"}},
  };
  for (const auto& walk : walks) {
    MItDependencyGraph it(node, walk.filter, MItDependencyGraph::kUpstream, walk.order);
    if (walk.pruning)
      it.enablePruningOnFilter();
    else
      it.disablePruningOnFilter();
    EXPECT_EQ(Names(it), walk.names);
  }
}

TEST_F(DependencyGraphTest, PruneKeepsTheCurrentNodesInputsOut)
{
  MItDependencyGraph it(node, MFn::kInvalid, MItDependencyGraph::kUpstream, MItDependencyGraph::kDepthFirst);
  std::vector<std::string> names;
  for (; !it.isDone(); it.next()) {
    names.push_back(MFnDependencyNode(it.thisNode()).name().asChar());
    if (names.back() == "mid")
      it.prune();
  }
  EXPECT_EQ(names, (std::vector<std::string>{"node", "mid", "near"}));
}

TEST_F(DependencyGraphTest, HiddenLayerIsSeenThroughItsDrawInfoVisibility)
{
  SetAttr("near.visibility", 0.0);
  MItDependencyGraph it(node, MFn::kDisplayLayer, MItDependencyGraph::kUpstream, MItDependencyGraph::kBreadthFirst);
  ASSERT_FALSE(it.isDone());
  const MPlug drawInfo = MFnDependencyNode(it.thisNode()).findPlug("drawInfo");
  bool sawHidden = false;
  for (unsigned int i = 0; i < drawInfo.numChildren(); ++i) {
    const MPlug child = drawInfo.child(i);
    if (std::string(child.name().asChar()).find(".visibility") != std::string::npos)
      sawHidden = !child.asBool();
  }
  EXPECT_TRUE(sawHidden);
}

TEST_F(DependencyGraphTest, PlugLevelWalkFromAPlugFollowsOnlyThatPlugAndReportsTheEntryPlug)
{
  MPlug root = Plug("mid.translateX");
  MItDependencyGraph it(root, MFn::kInvalid, MItDependencyGraph::kDownstream, MItDependencyGraph::kDepthFirst,
                        MItDependencyGraph::kPlugLevel);
  EXPECT_EQ(MFnDependencyNode(it.thisNode()).name(), "mid");
  ASSERT_TRUE(it.next());
  EXPECT_EQ(MFnDependencyNode(it.thisNode()).name(), "node");
  EXPECT_EQ(it.thisPlug().name(), "node.translateX");
  EXPECT_EQ(it.previousPlug().name(), "mid.translateX");
  it.next();
  EXPECT_TRUE(it.isDone());
}

TEST_F(DependencyGraphTest, DependencyNodesComeInCreationOrderAndFilterByType)
{
  std::vector<std::string> layers;
  for (MItDependencyNodes it(MFn::kDisplayLayer); !it.isDone(); it.next())
    layers.push_back(MFnDependencyNode(it.thisNode()).name().asChar());
  EXPECT_EQ(layers, (std::vector<std::string>{"far", "near"}));
  MItDependencyNodes all;
  EXPECT_EQ(MFnDependencyNode(all.thisNode()).name(), "node");
}

TEST_F(DependencyGraphTest, CyclicConnectionsEndTheWalk)
{
  ConnectAttr("node.translateY", "mid.translateY");
  MItDependencyGraph it(node, MFn::kInvalid, MItDependencyGraph::kUpstream, MItDependencyGraph::kBreadthFirst);
  EXPECT_EQ(Names(it).size(), 4u);
  EXPECT_EQ(Plug("node.translateY").asDouble(), 0.0);
}

}
