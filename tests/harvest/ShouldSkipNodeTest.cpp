#include "HarvestTestScene.h"

#include "harvest/IsNodeVisible.h"
#include "harvest/NodeAttributes.h"
#include "harvest/ShouldSkipNode.h"

#include <maya/MFnDagNode.h>

namespace {

using namespace harvesttest;
using namespace standin;

// group
//   box
//     boxShape
class ShouldSkipNodeTest : public HarvestTest {
protected:
    void SetUp() override
    {
        HarvestTest::SetUp();
        group = CreateNode("transform", "group");
        box = CreateNode("transform", "box", group);
        shape = CreateMesh("boxShape", box, Cube());
    }

    MObject group, box, shape;
};

TEST_F(ShouldSkipNodeTest, PlainNodeIsKeptAndTracedWithItsFunctionSets)
{
    EXPECT_FALSE(ShouldSkipNode(PathTo("boxShape")));
    EXPECT_EQ(DebugText(), "<Node: boxShape=kMesh\r\nhasFn( kMesh )\r\n>\r\n");
}

TEST_F(ShouldSkipNodeTest, ExportSkipOnTheTransformSkipsTheTransformAndItsShape)
{
    AddAttr(box, "ExportSkip", AttrType::Int, 1);
    EXPECT_TRUE(ShouldSkipNode(PathTo("box")));
    EXPECT_TRUE(ShouldSkipNode(PathTo("boxShape")));
    const std::string text = DebugText();
    EXPECT_NE(text.find("hasFn( kTransform kMesh )\r\nSkipping ignored object>\r\n"), std::string::npos) << text;
    // A shape whose own ExportSkip is zero is kept under the skipped transform.
    AddAttr(shape, "ExportSkip", AttrType::Int, 0);
    EXPECT_FALSE(ShouldSkipNode(PathTo("boxShape")));
}

TEST_F(ShouldSkipNodeTest, TransformDoesNotInheritExportSkipFromItsParent)
{
    AddAttr(group, "ExportSkip", AttrType::Int, 1);
    EXPECT_FALSE(ShouldSkipNode(PathTo("box")));
    EXPECT_TRUE(ShouldSkipNode(PathTo("group")));
}

TEST_F(ShouldSkipNodeTest, IntermediateObjectIsSkipped)
{
    MFnDagNode(shape).setIntermediateObject(true);
    EXPECT_TRUE(ShouldSkipNode(PathTo("boxShape")));
    EXPECT_NE(DebugText().find("Skipping intermediate object>\r\n"), std::string::npos);
}

TEST_F(ShouldSkipNodeTest, NodeWithItsOwnVisibilityOffIsSkippedAsInvisible)
{
    SetAttr("boxShape.visibility", 0.0);
    EXPECT_TRUE(ShouldSkipNode(PathTo("boxShape")));
    EXPECT_NE(DebugText().find("Skipping invisible object>\r\n"), std::string::npos);
}

TEST_F(ShouldSkipNodeTest, NodeBelowAHiddenAncestorIsInvisible)
{
    EXPECT_TRUE(IsNodeVisible(PathTo("boxShape")));
    EXPECT_TRUE(IsNodeVisible(PathTo("group")));
    SetAttr("group.visibility", 0.0);
    EXPECT_FALSE(IsNodeVisible(PathTo("boxShape")));
    EXPECT_FALSE(IsNodeVisible(PathTo("box")));
    EXPECT_TRUE(ShouldSkipNode(PathTo("boxShape")));
}

TEST_F(ShouldSkipNodeTest, NodeInAHiddenDisplayLayerIsInvisible)
{
    CreateDisplayLayer("hiddenLayer", {box});
    EXPECT_TRUE(IsNodeVisible(PathTo("boxShape")));
    SetAttr("hiddenLayer.visibility", 0.0);
    EXPECT_FALSE(IsNodeVisible(PathTo("box")));
    EXPECT_FALSE(IsNodeVisible(PathTo("boxShape")));
    EXPECT_TRUE(IsNodeVisible(PathTo("group")));
}

TEST_F(ShouldSkipNodeTest, ShapeAttributeFallsBackToItsTransformButNotToItsGrandparent)
{
    AddAttr(box, "CollisionFlags", AttrType::Int, 0x12345);
    int32_t value = 7;
    EXPECT_TRUE(GetNodeIntAttribute(MString("CollisionFlags"), PathTo("boxShape"), value));
    EXPECT_EQ(value, 0x12345);
    uint16_t shortValue = 0;
    EXPECT_TRUE(GetNodeShortAttribute(MString("CollisionFlags"), PathTo("boxShape"), shortValue));
    EXPECT_EQ(shortValue, 0x2345);
    int32_t own = 7;
    EXPECT_FALSE(GetOwnIntAttribute(MString("CollisionFlags"), PathTo("boxShape"), own));
    EXPECT_EQ(own, 7);

    // Never two levels up.
    AddAttr(group, "Visible", AttrType::Int, 0);
    int32_t visible = 5;
    EXPECT_FALSE(GetNodeIntAttribute(MString("Visible"), PathTo("boxShape"), visible));
    EXPECT_EQ(visible, 5);

    AddAttr(box, "zephra_ExportTo", AttrType::String);
    SetAttr("box.zephra_ExportTo", std::string("meshes\\crate.qmesh"));
    std::string target;
    EXPECT_TRUE(GetNodeStringAttribute(MString("zephra_ExportTo"), PathTo("boxShape"), target));
    EXPECT_EQ(target, "meshes\\crate.qmesh");
}

TEST_F(ShouldSkipNodeTest, NameHelpersAnswerTheirFixedTextsForMissingNodes)
{
    EXPECT_EQ(GetNodeName(MObject()), "(NULL)");
    EXPECT_EQ(GetNodeTypeName(MObject()), "(NULL)");
    EXPECT_EQ(GetNodeName(shape), "boxShape");
    EXPECT_EQ(GetNodeTypeName(shape), "mesh");
}

}
