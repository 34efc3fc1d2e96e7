#include <maya/MDagPathArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnGeometryFilter.h>
#include <maya/MFnMesh.h>
#include <maya/MItDag.h>
#include <maya/MItMeshVertex.h>
#include <maya/MObjectArray.h>
#include <maya/MSelectionList.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace standin;

MeshDescription Quad()
{
  return MeshDescription{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(1, 1, 0), MPoint(0, 1, 0)}, {4}, {0, 1, 2, 3}};
}

class SceneBuilderTest : public ::testing::Test {
protected:
  void SetUp() override { NewScene(); }
};

TEST_F(SceneBuilderTest, UnknownNodeTypesBadParentsCyclesAndDuplicateParentsAreRefused)
{
  EXPECT_TRUE(CreateNode("noSuchType", "x").isNull());
  const MObject material = CreateNode("lambert", "m");
  EXPECT_TRUE(CreateNode("transform", "t", material).isNull());
  EXPECT_FALSE(SetAttr("nothing.translateX", 1.0));
  EXPECT_FALSE(SetAttr("m.color", 1.0));
  EXPECT_FALSE(ConnectAttr("m.outColor", "missing.color"));
  const MObject a = CreateNode("transform", "a");
  const MObject b = CreateNode("transform", "b", a);
  EXPECT_FALSE(AddInstance(a, b)) << "a cycle";
  EXPECT_FALSE(AddInstance(b, a)) << "a duplicate";
  EXPECT_EQ(MFnDagNode(b).parentCount(), 1u);
}

TEST_F(SceneBuilderTest, ReparentingMovesTheNodeUnlessAskedToKeepItsParents)
{
  const MObject a = CreateNode("transform", "a");
  const MObject b = CreateNode("transform", "b");
  MObject child = CreateNode("transform", "c", a);
  MFnDagNode(b).addChild(child);
  EXPECT_EQ(MFnDagNode(child).fullPathName(), "|b|c");
  EXPECT_EQ(MFnDagNode(a).childCount(), 0u);
  MFnDagNode(a).addChild(child, MFnDagNode::kNextPos, true);
  EXPECT_EQ(MFnDagNode(child).instanceCount(true), 2u);
  MDagPathArray paths;
  MFnDagNode(child).getAllPaths(paths);
  ASSERT_EQ(paths.length(), 2u);
  EXPECT_EQ(paths[0].fullPathName(), "|b|c");
  EXPECT_EQ(paths[1].fullPathName(), "|a|c");
}

TEST_F(SceneBuilderTest, UVsMustMatchTheFaceVerticesAndTheirIdsTheUVs)
{
  const MObject shape = CreateMesh("quadShape", MObject(), Quad());
  EXPECT_FALSE(SetUVs(shape, UVSpec{"map1", {0.0f}, {0.0f}, {0, 0, 0}}));
  EXPECT_FALSE(SetUVs(shape, UVSpec{"map1", {0.0f}, {0.0f}, {0, 0, 0, 1}}));
  EXPECT_FALSE(SetUVs(shape, UVSpec{"map1", {0.0f, 1.0f}, {0.0f}, {0, 0, 0, 0}}));
  EXPECT_TRUE(SetUVs(shape, UVSpec{"map1", {0.0f}, {0.0f}, {0, 0, 0, -1}}));
  EXPECT_FALSE(SetCurrentUVSet(shape, "other"));
}

TEST_F(SceneBuilderTest, MeshFunctionSetBuildsUVsLikeTheApi)
{
  const MObject shape = CreateMesh("quadShape", MObject(), Quad());
  MFnMesh fn(shape);
  MFloatArray u;
  MFloatArray v;
  for (float value : {0.0f, 1.0f, 1.0f, 0.0f})
    u.append(value);
  for (float value : {0.0f, 0.0f, 1.0f, 1.0f})
    v.append(value);
  MString lightmap("lightmap");
  ASSERT_TRUE(fn.createUVSet(lightmap));
  EXPECT_FALSE(fn.createUVSet(lightmap));
  ASSERT_TRUE(fn.setUVs(u, v, &lightmap));
  MIntArray counts;
  counts.append(4);
  MIntArray ids;
  for (int id : {3, 2, 1, 0})
    ids.append(id);
  ASSERT_TRUE(fn.assignUVs(counts, ids, &lightmap));
  int uvId = -1;
  ASSERT_TRUE(fn.getPolygonUVid(0, 1, uvId, &lightmap));
  EXPECT_EQ(uvId, 2);
  ids[0] = 9;
  EXPECT_FALSE(fn.assignUVs(counts, ids, &lightmap));
  MStringArray names;
  fn.getUVSetNames(names);
  ASSERT_EQ(names.length(), 1u);
  EXPECT_EQ(names[0], "lightmap");
}

TEST_F(SceneBuilderTest, SkinningRefusesWeightsThatDoNotFitTheMeshOrTheJoints)
{
  const MObject shape = CreateMesh("quadShape", MObject(), Quad());
  const MObject joint = CreateNode("joint", "j");
  EXPECT_TRUE(SkinMesh(shape, {joint}, {{1.0}, {1.0}}).isNull());
  EXPECT_TRUE(SkinMesh(shape, {joint}, {{1.0, 0.0}, {1.0}, {1.0}, {1.0}}).isNull());
  EXPECT_TRUE(SkinMesh(shape, {CreateNode("transform", "notAJoint")}, {{1.0}, {1.0}, {1.0}, {1.0}}).isNull());
  SkinWeights pastTheJoints;
  for (unsigned int v = 0; v < 4; ++v) {
    pastTheJoints.Add(v == 3 ? 1 : 0, 1.0);
    pastTheJoints.EndVertex();
  }
  EXPECT_TRUE(SkinMesh(shape, {joint}, pastTheJoints).isNull());
  SkinWeights unclosed = pastTheJoints;
  unclosed.Add(0, 1.0);
  EXPECT_TRUE(SkinMesh(shape, {joint, joint}, unclosed).isNull());
  const MObject skin = SkinMesh(shape, {joint}, {{1.0}, {1.0}, {1.0}, {1.0}});
  ASSERT_FALSE(skin.isNull());
  MObjectArray inputs;
  ASSERT_TRUE(MFnGeometryFilter(skin).getInputGeometry(inputs));
  ASSERT_EQ(inputs.length(), 1u);
  EXPECT_EQ(MFnMesh(inputs[0]).numVertices(), 4);
}

TEST_F(SceneBuilderTest, EnvelopeScalesTheSkinsEffect)
{
  const MObject shape = CreateMesh("quadShape", MObject(), Quad());
  const MObject joint = CreateNode("joint", "j");
  ASSERT_FALSE(SkinMesh(shape, {joint}, {{1.0}, {1.0}, {1.0}, {1.0}}).isNull());
  SetAttr("j.translateX", 2.0);
  SetAttr("skinCluster1.envelope", 0.5);
  MItMeshVertex vertices(PathTo("|quad|quadShape"));
  EXPECT_DOUBLE_EQ(vertices.position().x, 1.0);
}

TEST_F(SceneBuilderTest, AssigningToAMissingInstanceFails)
{
  const MObject shape = CreateMesh("quadShape", MObject(), Quad());
  const MObject engine = CreateShader("lambert", "m");
  EXPECT_FALSE(Assign(engine, shape, 1));
  EXPECT_FALSE(Assign(CreateNode("lambert", "notASet"), shape, 0));
  EXPECT_TRUE(Assign(engine, shape, 0));
}

TEST_F(SceneBuilderTest, SelectionListAddsByNameOrFullPathWithoutDuplicates)
{
  const MObject group = CreateNode("transform", "group1");
  CreateNode("transform", "leaf", group);
  MSelectionList list;
  EXPECT_TRUE(list.add(MString("leaf")));
  EXPECT_TRUE(list.add(MString("|group1|leaf")));
  EXPECT_FALSE(list.add(MString("|leaf")));
  EXPECT_FALSE(list.add(MString("nobody")));
  ASSERT_EQ(list.length(), 1u);
  list.add(MString("group1"));
  MSelectionList other;
  other.add(MString("leaf"));
  list.merge(other, MSelectionList::kRemoveFromList);
  ASSERT_EQ(list.length(), 1u);
  MDagPath path;
  list.getDagPath(0, path);
  EXPECT_EQ(path.fullPathName(), "|group1");
}

TEST_F(SceneBuilderTest, DagWalkWithATypeFilterStillDescendsThroughOtherNodes)
{
  const MObject group = CreateNode("transform", "group1");
  CreateMesh("aShape", CreateNode("transform", "a", group), Quad());
  CreateMesh("bShape", MObject(), Quad());
  std::vector<std::string> meshes;
  for (MItDag it(MItDag::kDepthFirst, MFn::kMesh); !it.isDone(); it.next())
    meshes.push_back(it.fullPathName().asChar());
  EXPECT_EQ(meshes, (std::vector<std::string>{"|group1|a|aShape", "|b|bShape"}));
  MItDag sub;
  ASSERT_TRUE(sub.reset(PathTo("|group1"), MItDag::kBreadthFirst));
  std::vector<std::string> below;
  for (; !sub.isDone(); sub.next())
    below.push_back(sub.partialPathName().asChar());
  EXPECT_EQ(below, (std::vector<std::string>{"group1", "a", "aShape"}));
}

}
