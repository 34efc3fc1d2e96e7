#include <maya/MDagPath.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace standin;

//      2-------3        faces: 0 front (+z) 0 1 3 2, 1 top 2 3 5 4, 2 back 4 5 7 6,
//     /|      /|               3 bottom 6 7 1 0, 4 right 1 7 5 3, 5 left 6 0 2 4
//    4-------5 |
//    | 0-----|-1
//    |/      |/
//    6-------7
MeshDescription Cube()
{
  return MeshDescription{{MPoint(-.5, -.5, .5), MPoint(.5, -.5, .5), MPoint(-.5, .5, .5), MPoint(.5, .5, .5),
                   MPoint(-.5, .5, -.5), MPoint(.5, .5, -.5), MPoint(-.5, -.5, -.5), MPoint(.5, -.5, -.5)},
                  {4, 4, 4, 4, 4, 4},
                  {0, 1, 3, 2, 2, 3, 5, 4, 4, 5, 7, 6, 6, 7, 1, 0, 1, 7, 5, 3, 6, 0, 2, 4}};
}

// 0---1---2   two quads side by side; the right one's UVs are mirrored in u.
// |   |   |
// 3---4---5
MeshDescription TwoQuads()
{
  return MeshDescription{{MPoint(0, 1, 0), MPoint(1, 1, 0), MPoint(2, 1, 0), MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(2, 0, 0)},
                  {4, 4},
                  {3, 4, 1, 0, 4, 5, 2, 1}};
}

void ExpectVector(const MVector& v, double x, double y, double z, double tolerance = 1e-6)
{
  EXPECT_NEAR(v.x, x, tolerance);
  EXPECT_NEAR(v.y, y, tolerance);
  EXPECT_NEAR(v.z, z, tolerance);
}

class MeshTest : public ::testing::Test {
protected:
  void SetUp() override
  {
    NewScene();
    transform = CreateNode("transform", "box");
    shape = CreateMesh("boxShape", transform, Cube());
  }

  MObject transform, shape;
};

TEST_F(MeshTest, PolygonIteratorGivesCornersInTheirStoredOrder)
{
  MItMeshPolygon it(PathTo("|box|boxShape"));
  ASSERT_EQ(it.count(), 6u);
  int prev = 0;
  ASSERT_TRUE(it.setIndex(4, prev));
  ASSERT_EQ(it.polygonVertexCount(), 4u);
  EXPECT_EQ(it.vertexIndex(0), 1);
  EXPECT_EQ(it.vertexIndex(1), 7);
  EXPECT_EQ(it.vertexIndex(3), 3);
  MStatus status;
  it.vertexIndex(4, &status);
  EXPECT_FALSE(status);
}

TEST_F(MeshTest, SoftEdgesAverageTheFacesAroundAVertexAndHardEdgesGiveEachCornerItsFaceNormal)
{
  MItMeshPolygon it(PathTo("|box|boxShape"));
  MVector n;
  ASSERT_TRUE(it.getNormal(2u, n));
  const double c = 1.0 / std::sqrt(3.0);
  ExpectVector(n, c, c, c);
  SetHardEdges(shape, {{0, 1}, {1, 3}, {3, 2}, {2, 0}, {3, 5}, {5, 4}, {4, 2}, {5, 7}, {7, 6}, {6, 4}, {7, 1}, {6, 0}});
  MItMeshPolygon hard(PathTo("|box|boxShape"));
  int prev = 0;
  hard.setIndex(4, prev);
  for (unsigned int k = 0; k < 4; ++k) {
    ASSERT_TRUE(hard.getNormal(k, n));
    ExpectVector(n, 1, 0, 0);
  }
}

TEST_F(MeshTest, HardEdgesSplitAVertexOnlyWhereTheyCutItsFanApart)
{
  // At vertex 1 the hard edges 1-3 and 1-7 cut the right face off from front and bottom, which stay smooth.
  SetHardEdges(shape, {{1, 3}, {1, 7}});
  MFnMesh fn(PathTo("|box|boxShape"));
  MVector atFront;
  MVector atRight;
  fn.getFaceVertexNormal(0, 1, atFront);
  fn.getFaceVertexNormal(4, 1, atRight);
  ExpectVector(atRight, 1, 0, 0);
  ExpectVector(atFront, 0, -std::sqrt(0.5), std::sqrt(0.5));
  MVector frontAt0;
  MVector bottomAt0;
  fn.getFaceVertexNormal(0, 0, frontAt0);
  fn.getFaceVertexNormal(3, 0, bottomAt0);
  ExpectVector(frontAt0 - bottomAt0, 0, 0, 0);
}

TEST_F(MeshTest, GivenNormalsWinOverComputedOnes)
{
  std::vector<MVector> normals(24, MVector(0, 0, 2));
  ASSERT_TRUE(SetFaceVertexNormals(shape, normals));
  MItMeshPolygon it(PathTo("|box|boxShape"));
  MVector n;
  it.getNormal(1u, n);
  ExpectVector(n, 0, 0, 1);
}

TEST_F(MeshTest, WorldSpaceFollowsTheTransform)
{
  SetAttr("box.translate", 10.0, 0.0, 0.0);
  SetAttr("box.scale", 1.0, 1.0, -1.0);
  const MDagPath path = PathTo("|box|boxShape");
  MItMeshVertex vertices(path);
  ASSERT_EQ(vertices.count(), 8);
  int prev = 0;
  vertices.setIndex(1, prev);
  const MPoint p = vertices.position(MSpace::kWorld);
  EXPECT_DOUBLE_EQ(p.x, 10.5);
  EXPECT_DOUBLE_EQ(p.z, -0.5);
  EXPECT_DOUBLE_EQ(vertices.position().z, 0.5);
  MItMeshPolygon polygons(path);
  MVector n;
  SetHardEdges(shape, {{0, 1}, {1, 3}, {3, 2}, {2, 0}});
  MItMeshPolygon front(path);
  front.getNormal(0u, n, MSpace::kWorld);
  EXPECT_NEAR(n.z, -1.0, 1e-6);
}

TEST_F(MeshTest, CurrentAndNamedUVSetsAreReadSeparately)
{
  UVSpec base{"map1", {0.0f, 1.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 1.0f, 1.0f}, std::vector<int>(24, 0)};
  for (int k = 0; k < 4; ++k)
    base.ids[static_cast<size_t>(k)] = k;
  ASSERT_TRUE(SetUVs(shape, base));
  UVSpec light{"lightmap", {0.25f, 0.75f}, {0.5f, 0.5f}, std::vector<int>(24, 1)};
  ASSERT_TRUE(SetUVs(shape, light));
  MFnMesh fn(PathTo("|box"));
  EXPECT_EQ(fn.currentUVSetName(), "map1");
  EXPECT_EQ(fn.numUVs(), 4);
  EXPECT_EQ(fn.numUVs("lightmap"), 2);
  MStatus status;
  fn.numUVs("nothing", &status);
  EXPECT_FALSE(status);
  MItMeshPolygon it(PathTo("|box|boxShape"));
  int id = -1;
  ASSERT_TRUE(it.getUVIndex(2, id));
  EXPECT_EQ(id, 2);
  const MString lightmap("lightmap");
  float u = 0;
  float v = 0;
  ASSERT_TRUE(it.getUVIndex(2, id, u, v, &lightmap));
  EXPECT_EQ(id, 1);
  EXPECT_EQ(u, 0.75f);
}

TEST_F(MeshTest, CornerWithoutUVFailsTheUVAndTangentQueries)
{
  UVSpec uvs{"map1", {0.0f, 1.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 1.0f, 1.0f}, std::vector<int>(24, -1)};
  for (int k = 0; k < 4; ++k)
    uvs.ids[static_cast<size_t>(k)] = k;
  uvs.ids[4] = 0;
  ASSERT_TRUE(SetUVs(shape, uvs));
  MItMeshPolygon it(PathTo("|box|boxShape"));
  int id = 0;
  EXPECT_TRUE(it.getUVIndex(0, id));
  EXPECT_TRUE(it.hasUVs());
  it.next();
  EXPECT_TRUE(it.getUVIndex(0, id));
  EXPECT_FALSE(it.getUVIndex(1, id));
  EXPECT_FALSE(it.hasUVs());
  MFnMesh fn(shape);
  MFloatVectorArray tangents;
  EXPECT_TRUE(fn.getFaceVertexTangents(0, tangents));
  EXPECT_FALSE(fn.getFaceVertexTangents(1, tangents));
  EXPECT_FALSE(fn.getFaceVertexBinormals(1, tangents));
}

TEST_F(MeshTest, TangentsFollowUAndBinormalsFollowVAndFlipWithMirroredUVs)
{
  NewScene();
  const MObject quads = CreateMesh("quadsShape", MObject(), TwoQuads());
  //  uv ids: left quad 0 1 2 3 ordinary; right quad reuses ids mirrored in u.
  UVSpec uvs{"map1", {0, 1, 1, 0, 0, 0}, {0, 0, 1, 1, 0, 1}, {0, 1, 2, 3, 1, 4, 5, 2}};
  ASSERT_TRUE(SetUVs(quads, uvs));
  MFnMesh fn(quads);
  MFloatVectorArray tangents;
  MFloatVectorArray binormals;
  ASSERT_TRUE(fn.getFaceVertexTangents(0, tangents));
  ASSERT_TRUE(fn.getFaceVertexBinormals(0, binormals));
  ExpectVector(MVector(tangents[0]), 1, 0, 0);
  ExpectVector(MVector(binormals[0]), 0, 1, 0);
  ASSERT_TRUE(fn.getFaceVertexTangents(1, tangents));
  ASSERT_TRUE(fn.getFaceVertexBinormals(1, binormals));
  ExpectVector(MVector(tangents[1]), -1, 0, 0);
  MFloatVectorArray normals;
  fn.getFaceVertexNormals(1, normals);
  const MVector handedness = (MVector(normals[1]) ^ MVector(tangents[1]));
  EXPECT_LT(handedness * MVector(binormals[1]), 0.0);
}

TEST_F(MeshTest, WholeMeshArraysAtTheCornersIdsMatchThePerFaceQueries)
{
  NewScene();
  const MObject quads = CreateMesh("quadsShape", MObject(), TwoQuads());
  ASSERT_TRUE(SetUVs(quads, UVSpec{"map1", {0, 1, 1, 0, 0, 0}, {0, 0, 1, 1, 0, 1}, {0, 1, 2, 3, 1, 4, 5, 2}}));
  SetAttr("quads.rotate", 0.3, 0.5, 0.7);
  SetAttr("quads.scale", 2.0, 1.0, 3.0);
  const MDagPath path = PathTo("quadsShape");
  MFnMesh fn(path);
  MFloatVectorArray normals, tangents, binormals, faceNormals, faceTangents, faceBinormals;
  ASSERT_TRUE(fn.getNormals(normals, MSpace::kWorld));
  ASSERT_TRUE(fn.getTangents(tangents, MSpace::kWorld));
  ASSERT_TRUE(fn.getBinormals(binormals, MSpace::kWorld));
  for (MItMeshPolygon it(path); !it.isDone(); it.next()) {
    const int face = static_cast<int>(it.index());
    fn.getFaceVertexNormals(face, faceNormals, MSpace::kWorld);
    fn.getFaceVertexTangents(face, faceTangents, MSpace::kWorld);
    fn.getFaceVertexBinormals(face, faceBinormals, MSpace::kWorld);
    for (int k = 0; k < 4; ++k) {
      const unsigned int corner = static_cast<unsigned int>(k);
      EXPECT_EQ(normals[static_cast<unsigned int>(it.normalIndex(k))], faceNormals[corner]);
      EXPECT_EQ(tangents[static_cast<unsigned int>(it.tangentIndex(k))], faceTangents[corner]);
      EXPECT_EQ(binormals[static_cast<unsigned int>(it.tangentIndex(k))], faceBinormals[corner]);
    }
  }
  MStatus status;
  MItMeshPolygon(path).normalIndex(4, &status);
  EXPECT_FALSE(status);
  const MString missing("missing");
  EXPECT_FALSE(fn.getTangents(tangents, MSpace::kObject, &missing));
}

TEST_F(MeshTest, ComponentIteratorVisitsOnlyItsFacesAndCountsThem)
{
  MFnSingleIndexedComponent faces;
  const MObject component = faces.create(MFn::kMeshPolygonComponent);
  faces.addElement(5);
  faces.addElement(2);
  MItMeshPolygon it(PathTo("|box|boxShape"), component);
  EXPECT_EQ(it.count(), 2u);
  std::vector<unsigned int> visited;
  for (; !it.isDone(); it.next())
    visited.push_back(it.index());
  EXPECT_EQ(visited, (std::vector<unsigned int>{5, 2}));
}

TEST_F(MeshTest, ComponentNamingMissingFacesIsRefused)
{
  MFnSingleIndexedComponent faces;
  const MObject component = faces.create(MFn::kMeshPolygonComponent);
  faces.addElement(6);
  MStatus status;
  MItMeshPolygon it(PathTo("|box|boxShape"), component, &status);
  EXPECT_FALSE(status);
  EXPECT_TRUE(it.isDone());
}

TEST_F(MeshTest, CreatedMeshWithoutParentComesWithATransformAndInconsistentArraysAreRefused)
{
  MFnMesh fn;
  MFloatPointArray points;
  for (const MFloatPoint& point : {MFloatPoint(0, 0, 0), MFloatPoint(1, 0, 0), MFloatPoint(0, 1, 0)})
    points.append(point);
  MIntArray counts;
  counts.append(3);
  MIntArray connects;
  for (int v : {0, 1, 2})
    connects.append(v);
  MStatus status;
  const MObject created = fn.create(3, 1, points, counts, connects, MObject(), &status);
  ASSERT_TRUE(status);
  EXPECT_TRUE(created.hasFn(MFn::kTransform));
  EXPECT_EQ(fn.numPolygons(), 1);
  EXPECT_EQ(fn.fullPathName(), "|polySurface1|polySurfaceShape1");
  connects[2] = 3;
  EXPECT_TRUE(fn.create(3, 1, points, counts, connects, MObject(), &status).isNull());
  EXPECT_FALSE(status);
  EXPECT_TRUE(CreateMesh("bad", MObject(), MeshDescription{{MPoint()}, {3}, {0, 0}}).isNull());
}

TEST_F(MeshTest, MeshWithoutFacesGivesFinishedIteratorsAndFailedQueries)
{
  const MObject empty = CreateMesh("emptyShape", MObject(), MeshDescription{});
  ASSERT_FALSE(empty.isNull());
  MItMeshPolygon polygons(PathTo("|empty|emptyShape"));
  EXPECT_TRUE(polygons.isDone());
  EXPECT_EQ(polygons.polygonVertexCount(), 0u);
  MStatus status;
  polygons.vertexIndex(0, &status);
  EXPECT_FALSE(status);
  MVector n;
  EXPECT_FALSE(polygons.getNormal(0u, n));
  int uv = 0;
  EXPECT_FALSE(polygons.getUVIndex(0, uv));
  MItMeshVertex vertices(PathTo("|empty|emptyShape"));
  EXPECT_TRUE(vertices.isDone());
  vertices.position(MSpace::kWorld, &status);
  EXPECT_FALSE(status);
}

}
