#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MObjectArray.h>
#include <maya/MPointArray.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace standin;

std::vector<std::vector<int>> Faces(const std::string& shape)
{
  MFnMesh fn(PathTo(shape));
  std::vector<std::vector<int>> faces;
  for (int f = 0; f < fn.numPolygons(); ++f) {
    MIntArray corners;
    fn.getPolygonVertices(f, corners);
    faces.emplace_back(corners.items());
  }
  return faces;
}

std::vector<MPoint> Points(const std::string& shape)
{
  MPointArray points;
  MFnMesh(PathTo(shape)).getPoints(points);
  return points.items();
}

void ExpectPoint(const MPoint& p, double x, double y, double z)
{
  EXPECT_NEAR(p.x, x, 1e-5);
  EXPECT_NEAR(p.y, y, 1e-5);
  EXPECT_NEAR(p.z, z, 1e-5);
}

// The shape "out" fed by `plug`.
void Feed(const std::string& plug)
{
  CreateNode("mesh", "out");
  ASSERT_TRUE(ConnectAttr(plug, "out.inMesh"));
}

// A 1 x 1 plane (vertices 0 -x+z, 1 +x+z, 2 -x-z, 3 +x-z; face 0 1 3 2) or a 2 x 1 one, made by "plane".
void Plane(int width)
{
  NewScene();
  CreateNode("polyPlane", "plane");
  SetAttr("plane.width", width);
  SetAttr("plane.subdivisionsWidth", width);
  SetAttr("plane.subdivisionsHeight", 1);
}

// An intermediate shape "orig" holding the mesh, as the original of a deformed mesh is held.
void Original(const MeshDescription& mesh)
{
  NewScene();
  CreateMesh("orig", CreateNode("transform", "base"), mesh);
  SetAttr("orig.intermediateObject", 1);
}

TEST(ComponentGroups, GroupPartsGiveTheShapesObjectGroupsTheirFaces)
{
  // As MultiMatOpacity.ma assigns a cube's faces: one groupParts per shading group, the shape's objectGroups naming
  // the group ids; the first group once held face 4 and gave it up.
  NewScene();
  CreateNode("polyCube", "cube");
  for (const char* name : {"partsA", "partsB"})
    CreateNode("groupParts", name);
  for (const char* name : {"idA", "idB"})
    CreateNode("groupId", name);
  ASSERT_TRUE(SetComponents("partsA.inputComponents", {"f[0:3]", "f[5]"}));
  ASSERT_TRUE(SetComponents("partsA.inputRemoveComponent", {"f[4]"}));
  ASSERT_TRUE(SetComponents("partsB.inputComponents", {"f[4]"}));
  ConnectAttr("cube.output", "partsA.inputGeometry");
  ConnectAttr("idA.groupId", "partsA.groupId");
  ConnectAttr("partsA.outputGeometry", "partsB.inputGeometry");
  ConnectAttr("idB.groupId", "partsB.groupId");
  Feed("partsB.outputGeometry");
  const MObject green = CreateShader("lambert", "green");
  const MObject red = CreateShader("lambert", "red");
  ConnectAttr("idA.groupId", "out.instObjGroups[0].objectGroups[0].objectGroupId");
  ConnectAttr("idB.groupId", "out.instObjGroups[0].objectGroups[1].objectGroupId");
  ASSERT_TRUE(ConnectAttr("out.instObjGroups[0].objectGroups[0]", "greenSG.dagSetMembers[0]"));
  ASSERT_TRUE(ConnectAttr("out.instObjGroups[0].objectGroups[1]", "redSG.dagSetMembers[0]"));
  MObjectArray shaders;
  MIntArray perFace;
  ASSERT_TRUE(MFnMesh(PathTo("out")).getConnectedShaders(0, shaders, perFace));
  ASSERT_EQ(shaders.length(), 2u);
  EXPECT_EQ(shaders[0], green);
  EXPECT_EQ(shaders[1], red);
  EXPECT_EQ(perFace.items(), (std::vector<int>{0, 0, 0, 0, 1, 0}));
}

TEST(ComponentGroups, MalformedComponentListsAreRefused)
{
  NewScene();
  CreateNode("groupParts", "parts");
  EXPECT_FALSE(SetComponents("parts.inputComponents", {"f[3:1]"}));
  EXPECT_FALSE(SetComponents("parts.inputComponents", {"f[0]", "vtx[1]"}));
  EXPECT_FALSE(SetComponents("parts.inputComponents", {"f[0:99999999999]"}));
  EXPECT_FALSE(SetComponents("parts.inputComponents", {"map[2]"}));
  EXPECT_FALSE(SetComponents("parts.inputGeometry", {"f[0]"}));
}

TEST(Modifiers, TweakMovesTheListedVerticesByItsOffsetsTimesTheEnvelope)
{
  // DoubleMeshSkinWeldTestAnim.ma's triangles: the tweak takes each vertex half a unit back.
  Original({{MPoint(0, -1, .5), MPoint(-.5, 1, .5), MPoint(.5, 1, .5)}, {3}, {0, 1, 2}});
  CreateNode("tweak", "tweak1");
  for (int v = 0; v < 2; ++v)
    ASSERT_TRUE(SetAttr("tweak1.vlist[0].vertex[" + std::to_string(v) + "]", 0.0, 0.0, -0.5));
  SetAttr("tweak1.envelope", 0.5);
  ConnectAttr("orig.worldMesh[0]", "tweak1.input[0].inputGeometry");
  Feed("tweak1.outputGeometry[0]");
  const auto points = Points("out");
  ExpectPoint(points[0], 0, -1, .25);
  ExpectPoint(points[1], -.5, 1, .25);
  ExpectPoint(points[2], .5, 1, .5);
}

TEST(Modifiers, TransformGeometryAppliesItsMatrixOrItsInverse)
{
  Plane(1);
  CreateNode("transformGeometry", "move");
  MMatrix m;
  m(1, 1) = 2.0;
  m(3, 0) = 10.0;
  ASSERT_TRUE(SetAttr("move.transform", m));
  ConnectAttr("plane.output", "move.inputGeometry");
  Feed("move.outputGeometry");
  ExpectPoint(Points("out")[0], 9.5, 0, .5);
  SetAttr("move.invertTransform", 1);
  ExpectPoint(Points("out")[0], -10.5, 0, .5);
}

TEST(Modifiers, TriangulateFansConvexFacesAndCutsConcaveOnesByEars)
{
  //  5-------4          face 0: quad 0 1 2 3, split as a fan about its first corner
  //   \     /|          face 1: pentagon 3 2 4 5 6, concave at 6: a fan about 3 would cover the notch
  //    \ 6 / |
  //     / \  |
  //  3-/---\-2
  //  |       |
  //  0-------1
  Original({{MPoint(0, 0, 0), MPoint(2, 0, 0), MPoint(2, 1, 0), MPoint(0, 1, 0), MPoint(2, 3, 0), MPoint(0, 3, 0),
             MPoint(1, 2, 0)},
            {4, 5},
            {0, 1, 2, 3, 3, 2, 4, 5, 6}});
  CreateNode("polyTriangulate", "tri");
  ConnectAttr("orig.outMesh", "tri.inputPolymesh");
  Feed("tri.output");
  const auto faces = Faces("out");
  ASSERT_EQ(faces.size(), 5u);
  EXPECT_EQ(faces[0], (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(faces[1], (std::vector<int>{0, 2, 3}));
  // The pentagon's three triangles keep its turn and cover exactly its area (3), so none reaches into the notch.
  const auto points = Points("out");
  double area = 0.0;
  for (size_t f = 2; f < faces.size(); ++f) {
    const MPoint& a = points[static_cast<size_t>(faces[f][0])];
    const MPoint& b = points[static_cast<size_t>(faces[f][1])];
    const MPoint& c = points[static_cast<size_t>(faces[f][2])];
    const double twice = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    EXPECT_GT(twice, 0.0);
    area += twice / 2;
  }
  EXPECT_NEAR(area, 3.0, 1e-9);
}

TEST(Modifiers, DeleteComponentDropsFacesAndWhatOnlyTheyUsed)
{
  // 0---1---2   deleting face 0 leaves face 1, renumbered 0 1 3 2 over the four vertices left.
  // | 0 | 1 |
  // 3---4---5
  Plane(2);
  CreateNode("deleteComponent", "cut");
  ASSERT_TRUE(SetComponents("cut.deleteComponents", {"f[0]"}));
  ConnectAttr("plane.output", "cut.inputGeometry");
  Feed("cut.outputGeometry");
  EXPECT_EQ(Faces("out"), (std::vector<std::vector<int>>{{0, 1, 3, 2}}));
  const auto points = Points("out");
  ASSERT_EQ(points.size(), 4u);
  ExpectPoint(points[0], 0, 0, .5);
  MFloatArray u;
  MFloatArray v;
  MFnMesh(PathTo("out")).getUVs(u, v);
  EXPECT_EQ(u.items(), (std::vector<float>{.5f, 1, .5f, 1}));

  ASSERT_TRUE(SetComponents("cut.deleteComponents", {"vtx[0]"}));
  EXPECT_TRUE(Faces("out").empty());
  const auto problems = HistoryProblems();
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].reason, "it deletes edges or vertices, which is not evaluated");
}

TEST(Modifiers, SubdFaceSplitsAQuadAsMayaDoes)
{
  // Centre 4, then the midpoints of 0-1, 1-3, 3-2, 2-0 as the face reaches them; each quad starts where a grid over
  // the face would (the order a scene's twice-split cube shows).
  Plane(1);
  CreateNode("polySubdFace", "split");
  ConnectAttr("plane.output", "split.inputPolymesh");
  Feed("split.output");
  EXPECT_EQ(Faces("out"), (std::vector<std::vector<int>>{{0, 5, 4, 8}, {5, 1, 6, 4}, {4, 6, 3, 7}, {8, 4, 7, 2}}));
  const auto points = Points("out");
  ASSERT_EQ(points.size(), 9u);
  ExpectPoint(points[4], 0, 0, 0);
  ExpectPoint(points[5], 0, 0, .5);
  ExpectPoint(points[6], .5, 0, 0);
  SetAttr("split.divisions", 2);
  EXPECT_EQ(Faces("out").size(), 16u);
  SetAttr("split.divisions", 1);
  SetAttr("split.mode", 1);
  EXPECT_EQ(Faces("out"), (std::vector<std::vector<int>>{{0, 1, 4}, {1, 3, 4}, {3, 2, 4}, {2, 0, 4}}));
}

TEST(Modifiers, SubdFaceSplitsUVsAsItSplitsVerticesAndKeepsColourSets)
{
  Original({{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(1, 1, 0), MPoint(0, 1, 0)}, {4}, {0, 1, 2, 3}});
  const MObject orig = NodeByName("orig");
  ASSERT_TRUE(SetUVs(orig, UVSpec{"map1", {0, 1, 1, 0}, {0, 0, 1, 1}, {0, 1, 2, 3}}));
  ASSERT_TRUE(SetColors(orig, ColorSpec{"colorSet1", 4, std::vector<float>(16, 1.0f), {0, 1, 2, 3}}));
  CreateNode("polySubdFace", "split");
  ConnectAttr("orig.outMesh", "split.inputPolymesh");
  Feed("split.output");
  MFnMesh fn(PathTo("out"));
  MFloatArray u;
  MFloatArray v;
  fn.getUVs(u, v);
  // The corners' four, the centre, then the midpoints of 0-1, 1-2, 2-3, 3-0.
  EXPECT_EQ(u.items(), (std::vector<float>{0, 1, 1, 0, .5f, .5f, 1, .5f, 0}));
  EXPECT_EQ(v.items(), (std::vector<float>{0, 0, 1, 1, .5f, 0, .5f, 1, .5f}));
  int centre = -1;
  fn.getPolygonUVid(0, 2, centre);
  EXPECT_EQ(centre, 4);
  EXPECT_EQ(fn.numColorSets(), 1);
}

TEST(Modifiers, SubdFaceGivesABorderingFaceTheSplitEdgesMidpoint)
{
  Plane(2);
  CreateNode("polySubdFace", "split");
  ASSERT_TRUE(SetComponents("split.inputComponents", {"f[0]"}));
  ConnectAttr("plane.output", "split.inputPolymesh");
  Feed("split.output");
  const auto faces = Faces("out");
  ASSERT_EQ(faces.size(), 5u);
  EXPECT_EQ(faces[4], (std::vector<int>{1, 2, 5, 4, 8}));
}

// A unit cube as the base of a blend shape, its target a copy with vertex 0 moved one unit along x.
class BlendShapeTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    const MeshDescription cube{{MPoint(-.5, -.5, .5), MPoint(.5, -.5, .5), MPoint(-.5, .5, .5), MPoint(.5, .5, .5),
                                MPoint(-.5, .5, -.5), MPoint(.5, .5, -.5), MPoint(-.5, -.5, -.5), MPoint(.5, -.5, -.5)},
                               {4, 4, 4, 4, 4, 4},
                               {0, 1, 3, 2, 2, 3, 5, 4, 4, 5, 7, 6, 6, 7, 1, 0, 1, 7, 5, 3, 6, 0, 2, 4}};
    Original(cube);
    MeshDescription moved = cube;
    moved.points[0].x += 1.0;
    CreateMesh("targetShape", CreateNode("transform", "target"), moved);
    SetAttr("target.translateZ", -3.0);
    CreateNode("blendShape", "blend");
    ConnectAttr("orig.worldMesh[0]", "blend.input[0].inputGeometry");
    Feed("blend.outputGeometry[0]");
  }

  double X(int vertex) { return Points("out")[static_cast<size_t>(vertex)].x; }

  static constexpr const char* kFullTarget =
      "blend.inputTarget[0].inputTargetGroup[0].inputTargetItem[6000].inputGeomTarget";
};

TEST_F(BlendShapeTest, WeightFollowsTimeThroughItsCurve)
{
  ConnectAttr("targetShape.worldMesh[0]", kFullTarget);
  Animate("blend.weight[0]", {{MTime(0.0, MTime::kSeconds), 0.0, TangentType::Linear, TangentType::Linear},
                              {MTime(1.0, MTime::kSeconds), 1.0, TangentType::Linear, TangentType::Linear}});
  MAnimControl::setCurrentTime(MTime(0.25, MTime::kSeconds));
  EXPECT_NEAR(X(0), -.25, 1e-6);
  MAnimControl::setCurrentTime(MTime(1.0, MTime::kSeconds));
  EXPECT_NEAR(X(0), .5, 1e-6);
  EXPECT_NEAR(X(1), .5, 1e-6);
}

TEST_F(BlendShapeTest, InBetweensBlendPieceByPieceAndWeightsScale)
{
  // Stored offsets at weight 0.5 (+2 along x for vertex 0) and the live target at 1 (+1): the offset climbs to 2 at
  // half weight, then comes back down to 1.
  ConnectAttr("targetShape.worldMesh[0]", kFullTarget);
  ASSERT_TRUE(SetPoints("blend.inputTarget[0].inputTargetGroup[0].inputTargetItem[5500].inputPointsTarget",
                        {MPoint(2, 0, 0, 1)}));
  ASSERT_TRUE(SetComponents("blend.inputTarget[0].inputTargetGroup[0].inputTargetItem[5500].inputComponentsTarget",
                            {"vtx[0]"}));
  SetAttr("blend.weight[0]", 0.25);
  EXPECT_NEAR(X(0), .5, 1e-6);
  SetAttr("blend.weight[0]", 0.75);
  EXPECT_NEAR(X(0), 1.0, 1e-6);
  SetAttr("blend.inputTarget[0].inputTargetGroup[0].targetWeights[0]", 0.5);
  SetAttr("blend.envelope", 0.5);
  EXPECT_NEAR(X(0), -.125, 1e-6);
  SetAttr("blend.targetDirectory[0].directoryWeight", 0.0);
  EXPECT_NEAR(X(0), -.5, 1e-6);
}

TEST_F(BlendShapeTest, StoredOffsetsMoveTheVerticesTheirComponentsList)
{
  // As blendShapesExport.ma keeps a baked target: offsets for vtx[0] and vtx[6:7].
  ASSERT_TRUE(SetPoints("blend.it[0].itg[0].iti[6000].ipt",
                        {MPoint(-1, 0, 0, 1), MPoint(-2, 0, 0, 1), MPoint(-3, 0, 0, 1)}));
  ASSERT_TRUE(SetComponents("blend.it[0].itg[0].iti[6000].ict", {"vtx[0]", "vtx[6:7]"}));
  SetAttr("blend.w[0]", 1.0);
  EXPECT_NEAR(X(0), -1.5, 1e-6);
  EXPECT_NEAR(X(1), .5, 1e-6);
  EXPECT_NEAR(X(6), -2.5, 1e-6);
  EXPECT_NEAR(X(7), -2.5, 1e-6);
}

TEST(Evaluation, ShapeTweaksMoveTheEvaluatedPoints)
{
  Plane(1);
  Feed("plane.output");
  ASSERT_TRUE(SetAttr("out.pnts[3].pntx", 1.0));
  ExpectPoint(Points("out")[3], 1.5, 0, -.5);
}

TEST(Evaluation, AnUnknownNodeInTheHistoryLeavesTheMeshEmptyAndIsReported)
{
  // blendShapesExport.ma's squash deformer (nonLinear) stands in the history of a cube.
  NewScene();
  CreateNode("polyCube", "cube");
  ASSERT_FALSE(CreateUnknownNode("nonLinear", "squash1").isNull());
  ASSERT_TRUE(SetAttr("squash1.factor", 0.5));
  ASSERT_TRUE(ConnectAttr("cube.output", "squash1.input[0].inputGeometry"));
  Feed("squash1.outputGeometry[0]");
  EXPECT_TRUE(Faces("out").empty());
  const auto problems = HistoryProblems();
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].mesh, "out");
  EXPECT_EQ(problems[0].node, "squash1");
  EXPECT_EQ(problems[0].nodeType, "nonLinear");
  EXPECT_EQ(problems[0].reason, "its node type is not evaluated");
  EXPECT_TRUE(problems[0].empty);

  // A mesh with stored geometry shows it when its history fails.
  CreateMesh("stored", CreateNode("transform", "holder"), {{MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0)}, {3}, {0, 1, 2}});
  ConnectAttr("squash1.outputGeometry[0]", "stored.inMesh");
  EXPECT_EQ(Faces("stored").size(), 1u);
  ASSERT_EQ(HistoryProblems().size(), 2u);
  EXPECT_FALSE(HistoryProblems()[1].empty);
}

TEST(Evaluation, NodeStateHasNoEffectPassesTheInputOnAndBlockingStops)
{
  Plane(1);
  CreateNode("polyTriangulate", "tri");
  ConnectAttr("plane.output", "tri.inputPolymesh");
  Feed("tri.output");
  ASSERT_EQ(Faces("out").size(), 2u);
  SetAttr("tri.nodeState", 1);
  EXPECT_EQ(Faces("out"), (std::vector<std::vector<int>>{{0, 1, 3, 2}}));
  SetAttr("tri.nodeState", 2);
  EXPECT_TRUE(Faces("out").empty());
  const auto problems = HistoryProblems();
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].reason, "its nodeState blocks it");
}

TEST(Evaluation, ALongHistoryEvaluatesWithoutNesting)
{
  Plane(1);
  std::string from = "plane.output";
  MMatrix step;
  step(3, 0) = 1.0;
  for (int i = 0; i < 300; ++i) {
    const std::string name = "move" + std::to_string(i);
    CreateNode("transformGeometry", name);
    SetAttr(name + ".transform", step);
    ConnectAttr(from, name + ".inputGeometry");
    from = name + ".outputGeometry";
  }
  Feed(from);
  ExpectPoint(Points("out")[0], 299.5, 0, .5);
}

TEST(Evaluation, ACycleInTheHistoryEndsInAnEmptyMesh)
{
  NewScene();
  CreateNode("groupParts", "a");
  CreateNode("groupParts", "b");
  ConnectAttr("a.outputGeometry", "b.inputGeometry");
  ConnectAttr("b.outputGeometry", "a.inputGeometry");
  Feed("b.outputGeometry");
  EXPECT_TRUE(Faces("out").empty());
  EXPECT_EQ(HistoryProblems().size(), 1u);
}

}
