#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSet.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MFnWeightGeometryFilter.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MItGeometry.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <numbers>

namespace {

using namespace standin;

MeshDescription Triangle()
{
  return MeshDescription{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0)}, {3}, {0, 1, 2}};
}

//  j1 at the origin, j2 at (1,0,0); vertex 0 follows j1, vertex 2 follows j2, vertex 1 both by half.
class SkinTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    NewScene();
    j1 = CreateNode("joint", "j1");
    j2 = CreateNode("joint", "j2");
    SetAttr("j2.translateX", 1.0);
    shape = CreateMesh("bodyShape", CreateNode("transform", "body"), Triangle());
    skin = SkinMesh(shape, {j1, j2}, {{1.0, 0.0}, {0.5, 0.5}, {0.0, 1.0}});
    ASSERT_FALSE(skin.isNull());
  }

  MObject j1, j2, shape, skin;
};

TEST_F(SkinTest, OutputIsTheWeightedBlendOfTheInfluencesMovedFromTheirBindPose)
{
  MFnMesh fn(PathTo("|body|bodyShape"));
  MPoint p;
  fn.getPoint(1, p);
  EXPECT_NEAR(p.x, 1.0, 1e-9) << "the bind pose leaves the points where they were";
  EXPECT_NEAR(p.y, 0.0, 1e-9);
  SetAttr("j1.rotateZ", std::numbers::pi / 2.0);
  SetAttr("j2.translate", 1.0, 2.0, 0.0);
  fn.getPoint(0, p);
  EXPECT_NEAR(p.x, 0.0, 1e-6);
  EXPECT_NEAR(p.y, 0.0, 1e-6);
  // vertex 1: half of (1,0,0) turned to (0,1,0), half of (1,0,0) moved by j2 to (1,2,0).
  fn.getPoint(1, p);
  EXPECT_NEAR(p.x, 0.5, 1e-6);
  EXPECT_NEAR(p.y, 1.5, 1e-6);
  fn.getPoint(2, p);
  EXPECT_NEAR(p.x, 0.0, 1e-6);
  EXPECT_NEAR(p.y, 3.0, 1e-6);
}

TEST_F(SkinTest, PreSkinMeshIsFoundUpstreamOfTheShapesInput)
{
  SetAttr("j2.translate", 1.0, 2.0, 0.0);
  MPlug inMesh = Plug("bodyShape.inMesh");
  ASSERT_TRUE(inMesh.isConnected());
  MItDependencyGraph it(inMesh, MFn::kInvalid, MItDependencyGraph::kUpstream, MItDependencyGraph::kDepthFirst,
                        MItDependencyGraph::kPlugLevel);
  it.disablePruningOnFilter();
  MObject input;
  for (; !it.isDone(); it.next())
    if (it.thisNode().apiType() == MFn::kSkinClusterFilter) {
      MFnDependencyNode fn(it.thisNode());
      ASSERT_TRUE(fn.findPlug("input").elementByLogicalIndex(0).child(0).getValue(input));
      break;
    }
  ASSERT_FALSE(input.isNull());
  MFnMesh original(input);
  MPoint p;
  original.getPoint(2, p);
  EXPECT_EQ(p.y, 1.0);
  MFnMesh deformed(PathTo("|body|bodyShape"));
  deformed.getPoint(2, p);
  EXPECT_NEAR(p.y, 3.0, 1e-6);
  EXPECT_TRUE(MFnMesh(PathTo("|body|bodyShapeOrig")).isIntermediateObject());
}

TEST_F(SkinTest, InfluencesAndWeightsComeInMatrixIndexOrder)
{
  MFnSkinCluster fn(skin);
  MDagPathArray influences;
  ASSERT_EQ(fn.influenceObjects(influences), 2u);
  EXPECT_EQ(influences[0].fullPathName(), "|j1");
  EXPECT_EQ(influences[1].fullPathName(), "|j2");
  ASSERT_EQ(fn.numOutputConnections(), 1u);
  MDagPath geometry;
  ASSERT_TRUE(fn.getPathAtIndex(fn.indexForOutputConnection(0), geometry));
  EXPECT_EQ(geometry.fullPathName(), "|body|bodyShape");
  MFnSingleIndexedComponent vertices;
  const MObject component = vertices.create(MFn::kMeshVertComponent);
  vertices.addElement(2);
  vertices.addElement(1);
  MDoubleArray weights;
  unsigned int count = 0;
  ASSERT_TRUE(fn.getWeights(geometry, component, weights, count));
  EXPECT_EQ(count, 2u);
  EXPECT_EQ(weights.items(), (std::vector<double>{0.0, 1.0, 0.5, 0.5}));
}

TEST_F(SkinTest, BindPreMatrixIsReachedFromTheJointsWorldMatrixThroughTheEntryPlug)
{
  MPlug worldMatrix = Plug("j2.worldMatrix").elementByLogicalIndex(0);
  MItDependencyGraph it(worldMatrix, MFn::kInvalid, MItDependencyGraph::kDownstream, MItDependencyGraph::kDepthFirst,
                        MItDependencyGraph::kPlugLevel);
  it.disablePruningOnFilter();
  for (; !it.isDone(); it.next())
    if (it.thisNode().apiType() == MFn::kSkinClusterFilter)
      break;
  ASSERT_FALSE(it.isDone());
  const unsigned int index = it.thisPlug().logicalIndex();
  EXPECT_EQ(index, 1u);
  const MPlug bind = MFnDependencyNode(it.thisNode()).findPlug("bindPreMatrix").elementByLogicalIndex(index);
  const MMatrix inverse = MFnMatrixData(bind.asMObject()).matrix().inverse();
  EXPECT_DOUBLE_EQ(inverse(3, 0), 1.0);
}

TEST_F(SkinTest, RigidJointClusterGivesWeightsOfItsSetMembers)
{
  const MObject cluster = BindRigid(j1, shape, {0, 2}, {1.0, 0.25});
  MItDependencyNodes clusters(MFn::kJointCluster);
  ASSERT_FALSE(clusters.isDone());
  EXPECT_EQ(clusters.thisNode(), cluster);
  MPlugArray sources;
  MFnDependencyNode(cluster).findPlug("matrix").connectedTo(sources, true, false);
  ASSERT_EQ(sources.length(), 1u);
  EXPECT_EQ(MFnDependencyNode(sources[0].node()).name(), "j1");
  MFnWeightGeometryFilter fn(cluster);
  MSelectionList members;
  ASSERT_TRUE(MFnSet(fn.deformerSet()).getMembers(members, true));
  ASSERT_EQ(members.length(), 1u);
  MDagPath path;
  MObject component;
  ASSERT_TRUE(members.getDagPath(0, path, component));
  MFloatArray weights;
  ASSERT_TRUE(fn.getWeights(path, component, weights));
  EXPECT_EQ(weights.items(), (std::vector<float>{1.0f, 0.25f}));
  std::vector<int> visited;
  for (MItGeometry it(path, component); !it.isDone(); it.next())
    visited.push_back(it.index());
  EXPECT_EQ(visited, (std::vector<int>{0, 2}));
}

//  a|shared and b|shared are one shape; instance 0 takes one shader whole, instance 1 two shaders by face.
class ShadingTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    NewScene();
    const MObject a = CreateNode("transform", "a");
    const MObject b = CreateNode("transform", "b");
    shape = CreateMesh("sharedShape", a,
                       MeshDescription{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(1, 1, 0), MPoint(0, 1, 0)}, {3, 3}, {0, 1, 2, 0, 2, 3}});
    AddInstance(shape, b);
    red = CreateShader("lambert", "red");
    green = CreateShader("blinn", "green");
    blue = CreateShader("phong", "blue");
    Assign(red, shape, 0);
    Assign(green, shape, 1, {1});
    Assign(blue, shape, 1, {0});
  }

  static std::vector<std::string> SetNames(const MObjectArray& sets)
  {
    std::vector<std::string> names;
    for (unsigned int i = 0; i < sets.length(); ++i)
      names.push_back(MFnDependencyNode(sets[i]).name().asChar());
    return names;
  }

  MObject shape, red, green, blue;
};

TEST_F(ShadingTest, EachInstanceHasItsOwnSetsAndComponents)
{
  MFnMesh fn(PathTo("|a|sharedShape"));
  MObjectArray sets;
  MObjectArray comps;
  ASSERT_TRUE(fn.getConnectedSetsAndMembers(0, sets, comps, true));
  EXPECT_EQ(SetNames(sets), (std::vector<std::string>{"redSG"}));
  EXPECT_TRUE(comps[0].isNull());
  ASSERT_TRUE(fn.getConnectedSetsAndMembers(1, sets, comps, true));
  EXPECT_EQ(SetNames(sets), (std::vector<std::string>{"greenSG", "blueSG"}));
  MIntArray faces;
  MFnSingleIndexedComponent(comps[0]).getElements(faces);
  EXPECT_EQ(faces.items(), (std::vector<int>{1}));
}

TEST_F(ShadingTest, ReassigningFacesTakesThemFromTheirOldShader)
{
  Assign(green, shape, 1, {0});
  MObjectArray sets;
  MObjectArray comps;
  MFnMesh(PathTo("|b|sharedShape")).getConnectedSetsAndMembers(1, sets, comps, true);
  EXPECT_EQ(SetNames(sets), (std::vector<std::string>{"greenSG", "greenSG"}));
  MObjectArray shaders;
  MIntArray indices;
  MFnMesh(shape).getConnectedShaders(1, shaders, indices);
  ASSERT_EQ(shaders.length(), 1u);
  EXPECT_EQ(indices.items(), (std::vector<int>{0, 0}));
}

TEST_F(ShadingTest, PolygonIteratorOverASetComponentVisitsItsFaces)
{
  MObjectArray sets;
  MObjectArray comps;
  const MDagPath path = PathTo("|b|sharedShape");
  MFnMesh(path).getConnectedSetsAndMembers(path.instanceNumber(), sets, comps, true);
  MItMeshPolygon it(path, comps[1]);
  ASSERT_EQ(it.count(), 1u);
  EXPECT_EQ(it.index(), 0u);
}

TEST_F(ShadingTest, ShadingEngineLeadsToItsSurfaceShaderAndTextures)
{
  CreateFileTexture("stone", "textures/stone.tga", "green.color");
  SetAttr("place2dTexture1.repeatU", 4.0);
  MPlugArray sources;
  ASSERT_TRUE(MFnDependencyNode(green).findPlug("surfaceShader").connectedTo(sources, true, false));
  const MObject shader = sources[0].node();
  EXPECT_TRUE(shader.hasFn(MFn::kBlinn));
  EXPECT_TRUE(shader.hasFn(MFn::kLambert));
  EXPECT_FALSE(shader.hasFn(MFn::kPhong));
  MPlug color = MFnDependencyNode(shader).findPlug("color");
  MItDependencyGraph it(color, MFn::kFileTexture, MItDependencyGraph::kUpstream, MItDependencyGraph::kBreadthFirst);
  it.disablePruningOnFilter();
  ASSERT_FALSE(it.isDone());
  MFnDependencyNode file(it.thisNode());
  EXPECT_EQ(file.findPlug("fileTextureName").asString(), "textures/stone.tga");
  MItDependencyGraph place(color, MFn::kPlace2dTexture, MItDependencyGraph::kUpstream, MItDependencyGraph::kBreadthFirst);
  place.disablePruningOnFilter();
  ASSERT_FALSE(place.isDone());
  EXPECT_EQ(MFnDependencyNode(place.thisNode()).findPlug("repeatU").asDouble(), 4.0);
  // The file node's own placement plugs follow the placement node.
  EXPECT_EQ(file.findPlug("repeatU").asDouble(), 4.0);
  EXPECT_EQ(file.findPlug("repeatV").asDouble(), 1.0);
  EXPECT_EQ(file.findPlug("offsetU").asDouble(), 0.0);
}

TEST_F(ShadingTest, MembershipWiredWithConnectAttrCountsLikeAnAssignment)
{
  NewScene();
  const MObject quad = CreateMesh("quadShape", MObject(),
                                  MeshDescription{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(1, 1, 0)}, {3}, {0, 1, 2}});
  CreateShader("lambert", "initial");
  ASSERT_TRUE(ConnectAttr("quadShape.instObjGroups[0]", "initialSG.dagSetMembers[0]"));
  MSelectionList members;
  ASSERT_TRUE(MFnSet(NodeByName("initialSG")).getMembers(members, true));
  ASSERT_EQ(members.length(), 1u);
  MDagPath path;
  members.getDagPath(0, path);
  EXPECT_EQ(path.fullPathName(), "|quad|quadShape");
  MObjectArray sets;
  MObjectArray comps;
  MFnMesh(quad).getConnectedSetsAndMembers(0, sets, comps, true);
  EXPECT_EQ(SetNames(sets), (std::vector<std::string>{"initialSG"}));
}

}
