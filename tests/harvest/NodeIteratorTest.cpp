#include "HarvestTestScene.h"

#include "harvest/ClassifyNode.h"
#include "harvest/NodeIterator.h"

#include <maya/MFnDagNode.h>

#include <string>
#include <vector>

namespace {

using namespace harvesttest;
using namespace standin;

class RecordingVisitor : public NodeIterator {
public:
    bool VisitNode(const MDagPath& path) override
    {
        visited.push_back(path.partialPathName().asChar());
        return visited.back() != stopAt;
    }
    std::vector<std::string> visited;
    std::string stopAt = "(none)";
};

// world
//   a
//     b
//       bShape
//     c
//   d
class NodeIteratorTest : public HarvestTest {
protected:
    void SetUp() override
    {
        HarvestTest::SetUp();
        a = CreateNode("transform", "a");
        b = CreateNode("transform", "b", a);
        CreateMesh("bShape", b, Cube());
        c = CreateNode("transform", "c", a);
        d = CreateNode("transform", "d");
    }

    MObject a, b, c, d;
};

std::vector<std::string> WithoutWorld(std::vector<std::string> names)
{
    std::erase_if(names, [](const std::string& name) { return name.empty() || name == "world"; });
    return names;
}

// A visit answering false keeps the walk out of that subtree; a walk may start at any valid path.
TEST_F(NodeIteratorTest, WholeSceneIsVisitedDepthFirstParentsBeforeChildrenInChildOrder)
{
    RecordingVisitor visitor;
    visitor.Iterate(MDagPath(), false, true);
    EXPECT_EQ(WithoutWorld(visitor.visited), (std::vector<std::string>{"a", "b", "bShape", "c", "d"}));
    EXPECT_EQ(visitor.recurse, 1);
    EXPECT_EQ(visitor.selectionOnly, 0);

    RecordingVisitor pruned;
    pruned.stopAt = "b";
    pruned.Iterate(MDagPath(), false, true);
    EXPECT_EQ(WithoutWorld(pruned.visited), (std::vector<std::string>{"a", "b", "c", "d"}));

    RecordingVisitor rooted;
    rooted.Iterate(PathTo("b"), false, true);
    EXPECT_EQ(rooted.visited, (std::vector<std::string>{"b", "bShape"}));
}

// Without recursion exactly the selected nodes; with it, a node selected with its ancestor comes twice.
TEST_F(NodeIteratorTest, SelectionIsVisitedInItsOrderWithOrWithoutTheSubtrees)
{
    Select({PathTo("d"), PathTo("b")});
    RecordingVisitor visitor;
    visitor.Iterate(MDagPath(), true, false);
    EXPECT_EQ(visitor.visited, (std::vector<std::string>{"d", "b"}));
    EXPECT_EQ(visitor.selectionOnly, 1);
    EXPECT_EQ(visitor.recurse, 0);

    Select({PathTo("a"), PathTo("b")});
    RecordingVisitor twice;
    twice.Iterate(MDagPath(), true, true);
    EXPECT_EQ(twice.visited, (std::vector<std::string>{"a", "b", "bShape", "c", "b", "bShape"}));

    Select({});
    RecordingVisitor none;
    none.Iterate(MDagPath(), true, true);
    EXPECT_TRUE(none.visited.empty());
}

TEST_F(NodeIteratorTest, ClassifyNodeTellsJointsMeshShapesAndIntermediateObjects)
{
    const MObject joint = CreateNode("joint", "joint1");
    const MObject orig = CreateMesh("origShape", CreateNode("transform", "orig"), Cube());
    MFnDagNode(orig).setIntermediateObject(true);
    CreateNode("nurbsSurface", "surfShape", CreateNode("transform", "surf"));

    EXPECT_EQ(ClassifyNode(PathTo("joint1")), NodeClassJoint);
    EXPECT_EQ(ClassifyNode(PathTo("bShape")), NodeClassMeshShape);
    EXPECT_EQ(ClassifyNode(PathTo("b")), NodeClassOther);
    EXPECT_EQ(ClassifyNode(PathTo("origShape")), NodeClassIntermediate);
    EXPECT_EQ(ClassifyNode(PathTo("surfShape")), NodeClassNurbsSurface);
    EXPECT_EQ(ClassifyNode(MDagPath()), NodeClassOther);
    (void)joint;
}

}
