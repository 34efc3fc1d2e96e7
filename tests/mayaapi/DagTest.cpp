#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDag.h>
#include <maya/MItSelectionList.h>
#include <maya/MSelectionList.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace standin;

MeshDescription Triangle()
{
  return MeshDescription{{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0)}, {3}, {0, 1, 2}};
}

std::vector<std::string> Walk(MItDag::TraversalType type)
{
  std::vector<std::string> names;
  for (MItDag it(type); !it.isDone(); it.next()) {
    MDagPath path;
    it.getPath(path);
    names.push_back(path.fullPathName().asChar());
  }
  return names;
}

//  group1 ---- a ---- aShape (shared with b)
//         \--- b ---- aShape
class DagTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    NewScene();
    group = CreateNode("transform", "group1");
    a = CreateNode("transform", "a", group);
    b = CreateNode("transform", "b", group);
    shape = CreateMesh("aShape", a, Triangle());
    AddInstance(shape, b);
    CreateNode("transform", "top2");
  }

  MObject group, a, b, shape;
};

TEST_F(DagTest, WalksStartAtTheWorldVisitOncePerInstanceAndSkipPrunedChildren)
{
  EXPECT_EQ(Walk(MItDag::kDepthFirst), (std::vector<std::string>{"", "|group1", "|group1|a", "|group1|a|aShape",
                                                                 "|group1|b", "|group1|b|aShape", "|top2"}));
  EXPECT_EQ(Walk(MItDag::kBreadthFirst), (std::vector<std::string>{"", "|group1", "|top2", "|group1|a", "|group1|b",
                                                                   "|group1|a|aShape", "|group1|b|aShape"}));
  std::vector<std::string> names;
  for (MItDag it; !it.isDone(); it.next()) {
    MDagPath path;
    it.getPath(path);
    names.push_back(path.partialPathName().asChar());
    if (names.back() == "group1")
      it.prune();
  }
  EXPECT_EQ(names, (std::vector<std::string>{"", "group1", "top2"}));
}

TEST_F(DagTest, InstancedShapeHasOnePathPerParentNamedByItsShortestUniqueTail)
{
  const MDagPath first = PathTo("|group1|a|aShape");
  const MDagPath second = PathTo("|group1|b|aShape");
  ASSERT_TRUE(first.isValid());
  ASSERT_TRUE(second.isValid());
  EXPECT_TRUE(first.isInstanced());
  EXPECT_EQ(first.instanceNumber(), 0u);
  EXPECT_EQ(second.instanceNumber(), 1u);
  EXPECT_FALSE(PathTo("|group1|a").isInstanced());
  EXPECT_EQ(PathTo("|group1|a").partialPathName(), "a");
  EXPECT_EQ(first.partialPathName(), "a|aShape");
  EXPECT_EQ(second.partialPathName(), "b|aShape");
  EXPECT_EQ(first.fullPathName(), "|group1|a|aShape");
}

TEST_F(DagTest, TransformPathAnswersForItsShape)
{
  const MDagPath transform = PathTo("|group1|a");
  EXPECT_TRUE(transform.hasFn(MFn::kTransform));
  EXPECT_TRUE(transform.hasFn(MFn::kMesh));
  EXPECT_FALSE(PathTo("|group1").hasFn(MFn::kMesh));
  const MDagPath shapePath = PathTo("|group1|a|aShape");
  EXPECT_TRUE(shapePath.hasFn(MFn::kMesh));
  EXPECT_FALSE(shapePath.hasFn(MFn::kTransform));
}

TEST_F(DagTest, PathsPopToTheWorldPushOnlyChildrenAndExtendToTheOnlyShape)
{
  MDagPath path = PathTo("|group1|a");
  EXPECT_TRUE(path.pop());
  EXPECT_EQ(path.fullPathName(), "|group1");
  EXPECT_EQ(path.childCount(), 2u);
  EXPECT_FALSE(path.extendToShape());
  EXPECT_FALSE(path.push(shape));
  EXPECT_TRUE(path.push(path.child(1)));
  EXPECT_EQ(path.fullPathName(), "|group1|b");
  EXPECT_TRUE(path.extendToShape());
  EXPECT_EQ(path.fullPathName(), "|group1|b|aShape");
  path = PathTo("|group1");
  EXPECT_TRUE(path.pop());
  EXPECT_EQ(path.length(), 0u);
  EXPECT_FALSE(path.pop());
}

// As in Maya, DAG nodes under different parents may share a name; siblings and dependency nodes may not.
TEST_F(DagTest, NamesStayUniqueAmongSiblingsByCountingUp)
{
  EXPECT_EQ(MFnDagNode(CreateNode("transform", "a", group)).name(), "a1");
  const MObject topA = CreateNode("transform", "a");
  EXPECT_EQ(MFnDagNode(topA).name(), "a");
  EXPECT_EQ(MFnDependencyNode(CreateNode("lambert", "a")).name(), "a2");
  CreateNode("transform", "pCube1");
  EXPECT_EQ(MFnDagNode(CreateNode("transform", "pCube1")).name(), "pCube2");

  EXPECT_EQ(PathTo("|a").partialPathName(), "|a");
  EXPECT_EQ(PathTo("group1|a").partialPathName(), "group1|a");
  EXPECT_EQ(PathTo("group1|a").node(), a);
  EXPECT_EQ(PathTo("|a").node(), topA);
  EXPECT_EQ(Plug("group1|a.translateX").node(), a);
}

TEST_F(DagTest, IntermediateObjectIsReadFromItsAttribute)
{
  MFnDagNode fn(shape);
  EXPECT_FALSE(fn.isIntermediateObject());
  SetAttr("aShape.intermediateObject", 1.0);
  EXPECT_TRUE(fn.isIntermediateObject());
}

TEST_F(DagTest, SelectionKeepsItsOrderAndHasNoDagPathForADependencyNode)
{
  Select({PathTo("|top2"), PathTo("|group1|b|aShape")});
  MSelectionList list;
  MGlobal::getActiveSelectionList(list);
  std::vector<std::string> names;
  for (MItSelectionList it(list); !it.isDone(); it.next()) {
    MDagPath path;
    ASSERT_TRUE(it.getDagPath(path));
    names.push_back(path.fullPathName().asChar());
  }
  EXPECT_EQ(names, (std::vector<std::string>{"|top2", "|group1|b|aShape"}));
  ASSERT_TRUE(list.add(CreateShader("lambert", "mat")));
  MDagPath path;
  EXPECT_FALSE(list.getDagPath(2, path));
  MObject node;
  EXPECT_TRUE(list.getDependNode(2, node));
  EXPECT_EQ(MFnDependencyNode(node).typeName(), "shadingEngine");
}

}
