#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace standin;

// A mesh as flat arrays, read back through MFnMesh as the exporter reads it.
struct Flat {
  std::vector<float> points;
  std::vector<int> counts;
  std::vector<int> vertices;
  std::vector<float> uvs;
  std::vector<int> uvIds;
};

Flat Read(const std::string& shape)
{
  MFnMesh fn(PathTo(shape));
  Flat flat;
  MPointArray points;
  fn.getPoints(points);
  for (unsigned int i = 0; i < points.length(); ++i)
    flat.points.insert(flat.points.end(), {static_cast<float>(points[i].x), static_cast<float>(points[i].y),
                                           static_cast<float>(points[i].z)});
  for (int f = 0; f < fn.numPolygons(); ++f) {
    MIntArray corners;
    fn.getPolygonVertices(f, corners);
    flat.counts.push_back(static_cast<int>(corners.length()));
    for (unsigned int k = 0; k < corners.length(); ++k) {
      flat.vertices.push_back(corners[k]);
      int id = -1;
      fn.getPolygonUVid(f, static_cast<int>(k), id);
      flat.uvIds.push_back(id);
    }
  }
  MFloatArray u;
  MFloatArray v;
  fn.getUVs(u, v);
  for (unsigned int i = 0; i < u.length(); ++i)
    flat.uvs.insert(flat.uvs.end(), {u[i], v[i]});
  return flat;
}

// A primitive node feeding a new mesh shape "shape", as Maya wires polyCube1.output into pCubeShape1.inMesh.
void MakePrimitive(const std::string& type, const std::vector<std::pair<std::string, double>>& attributes)
{
  NewScene();
  ASSERT_FALSE(CreateNode(type, "maker").isNull());
  for (const auto& [name, value] : attributes)
    ASSERT_TRUE(SetAttr("maker." + name, value)) << name;
  CreateNode("mesh", "shape");
  ASSERT_TRUE(ConnectAttr("maker.output", "shape.inMesh"));
}

void ExpectNear(const std::vector<float>& actual, const std::vector<float>& expected)
{
  ASSERT_EQ(actual.size(), expected.size());
  for (size_t i = 0; i < actual.size(); ++i)
    EXPECT_NEAR(actual[i], expected[i], 1e-5) << "at " << i;
}

struct PrimitiveCase {
  const char* name;
  const char* type;
  std::vector<std::pair<std::string, double>> attributes;
  Flat expected;
};

void PrintTo(const PrimitiveCase& c, std::ostream* os) { *os << c.name; }

class PrimitiveTest : public ::testing::TestWithParam<PrimitiveCase> {};

TEST_P(PrimitiveTest, BuildsMayasVerticesFacesAndUVs)
{
  const PrimitiveCase& c = GetParam();
  MakePrimitive(c.type, c.attributes);
  const Flat mesh = Read("shape");
  ExpectNear(mesh.points, c.expected.points);
  EXPECT_EQ(mesh.counts, c.expected.counts);
  EXPECT_EQ(mesh.vertices, c.expected.vertices);
  ExpectNear(mesh.uvs, c.expected.uvs);
  EXPECT_EQ(mesh.uvIds, c.expected.uvIds);
}

constexpr float k3 = 0.866025404f;
constexpr float kThird = 1.0f / 3.0f;

const PrimitiveCase kCases[] = {
    // As Maya saved the default cube's mesh (blendShapesExport.ma tgtShape, MultiMatOpacity.ma pCubeShape2).
    {"CubeAsMayaSavesIt",
     "polyCube",
     {{"createUVs", 4}},
     {{-.5f, -.5f, .5f, .5f, -.5f, .5f, -.5f, .5f, .5f, .5f, .5f, .5f, -.5f, .5f, -.5f, .5f, .5f, -.5f, -.5f, -.5f, -.5f,
       .5f, -.5f, -.5f},
      {4, 4, 4, 4, 4, 4},
      {0, 1, 3, 2, 2, 3, 5, 4, 4, 5, 7, 6, 6, 7, 1, 0, 1, 7, 5, 3, 6, 0, 2, 4},
      {.375f, 0, .625f, 0, .375f, .25f, .625f, .25f, .375f, .5f, .625f, .5f, .375f, .75f, .625f, .75f, .375f, 1,
       .625f, 1, .875f, 0, .875f, .25f, .125f, 0, .125f, .25f},
      {0, 1, 3, 2, 2, 3, 5, 4, 4, 5, 7, 6, 6, 7, 9, 8, 1, 10, 11, 3, 12, 0, 2, 13}}},
    // As Maya saved a cube made 5 high in 5 rows (ComplexAnim1.ma target1Shape): the UVs keep the unit cross.
    {"TallCubeAsMayaSavesIt",
     "polyCube",
     {{"height", 5}, {"subdivisionsHeight", 5}, {"createUVs", 4}},
     {{-.5f, -2.5f, .5f, .5f, -2.5f, .5f, -.5f, -1.5f, .5f, .5f, -1.5f, .5f, -.5f, -.5f, .5f, .5f, -.5f, .5f,
       -.5f, .5f, .5f, .5f, .5f, .5f, -.5f, 1.5f, .5f, .5f, 1.5f, .5f, -.5f, 2.5f, .5f, .5f, 2.5f, .5f,
       -.5f, 2.5f, -.5f, .5f, 2.5f, -.5f, -.5f, 1.5f, -.5f, .5f, 1.5f, -.5f, -.5f, .5f, -.5f, .5f, .5f, -.5f,
       -.5f, -.5f, -.5f, .5f, -.5f, -.5f, -.5f, -1.5f, -.5f, .5f, -1.5f, -.5f, -.5f, -2.5f, -.5f, .5f, -2.5f, -.5f},
      std::vector<int>(22, 4),
      {0,  1,  3,  2,  2,  3,  5,  4,  4,  5,  7,  6,  6,  7,  9,  8,  8,  9,  11, 10, 10, 11, 13, 12,
       12, 13, 15, 14, 14, 15, 17, 16, 16, 17, 19, 18, 18, 19, 21, 20, 20, 21, 23, 22, 22, 23, 1,  0,
       1,  23, 21, 3,  3,  21, 19, 5,  5,  19, 17, 7,  7,  17, 15, 9,  9,  15, 13, 11, 22, 0,  2,  20,
       20, 2,  4,  18, 18, 4,  6,  16, 16, 6,  8,  14, 14, 8,  10, 12},
      {.375f, 0,    .625f, 0,    .375f, .05f, .625f, .05f, .375f, .1f,  .625f, .1f,  .375f, .15f, .625f, .15f,
       .375f, .2f,  .625f, .2f,  .375f, .25f, .625f, .25f, .375f, .5f,  .625f, .5f,  .375f, .55f, .625f, .55f,
       .375f, .6f,  .625f, .6f,  .375f, .65f, .625f, .65f, .375f, .7f,  .625f, .7f,  .375f, .75f, .625f, .75f,
       .375f, 1,    .625f, 1,    .875f, 0,    .875f, .05f, .875f, .1f,  .875f, .15f, .875f, .2f,  .875f, .25f,
       .125f, 0,    .125f, .05f, .125f, .1f,  .125f, .15f, .125f, .2f,  .125f, .25f},
      {0,  1,  3,  2,  2,  3,  5,  4,  4,  5,  7,  6,  6,  7,  9,  8,  8,  9,  11, 10, 10, 11, 13, 12,
       12, 13, 15, 14, 14, 15, 17, 16, 16, 17, 19, 18, 18, 19, 21, 20, 20, 21, 23, 22, 22, 23, 25, 24,
       1,  26, 27, 3,  3,  27, 28, 5,  5,  28, 29, 7,  7,  29, 30, 9,  9,  30, 31, 11, 32, 0,  2,  33,
       33, 2,  4,  34, 34, 4,  6,  35, 35, 6,  8,  36, 36, 8,  10, 37}}},
    {"CubeWithoutUVs",
     "polyCube",
     {{"createUVs", 0}, {"width", 2}},
     {{-1, -.5f, .5f, 1, -.5f, .5f, -1, .5f, .5f, 1, .5f, .5f, -1, .5f, -.5f, 1, .5f, -.5f, -1, -.5f, -.5f, 1, -.5f, -.5f},
      {4, 4, 4, 4, 4, 4},
      {0, 1, 3, 2, 2, 3, 5, 4, 4, 5, 7, 6, 6, 7, 1, 0, 1, 7, 5, 3, 6, 0, 2, 4},
      {},
      std::vector<int>(24, -1)}},
    // As Maya saved a 3 x 3 plane (UsdExportUVSetMappingsTest.ma pPlaneShape1): rows from +z, UVs stretched.
    {"PlaneAsMayaSavesIt",
     "polyPlane",
     {{"subdivisionsWidth", 3}, {"subdivisionsHeight", 3}},
     {{-.5f, 0, .5f,     -kThird / 2, 0, .5f,     kThird / 2, 0, .5f,     .5f, 0, .5f,
       -.5f, 0, kThird / 2, -kThird / 2, 0, kThird / 2, kThird / 2, 0, kThird / 2, .5f, 0, kThird / 2,
       -.5f, 0, -kThird / 2, -kThird / 2, 0, -kThird / 2, kThird / 2, 0, -kThird / 2, .5f, 0, -kThird / 2,
       -.5f, 0, -.5f,    -kThird / 2, 0, -.5f,    kThird / 2, 0, -.5f,    .5f, 0, -.5f},
      std::vector<int>(9, 4),
      {0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6, 4, 5, 9, 8, 5, 6, 10, 9, 6, 7, 11, 10, 8, 9, 13, 12, 9, 10, 14, 13, 10, 11, 15, 14},
      {0, 0, kThird, 0, 2 * kThird, 0, 1, 0, 0, kThird, kThird, kThird, 2 * kThird, kThird, 1, kThird,
       0, 2 * kThird, kThird, 2 * kThird, 2 * kThird, 2 * kThird, 1, 2 * kThird, 0, 1, kThird, 1, 2 * kThird, 1, 1, 1},
      {0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6, 4, 5, 9, 8, 5, 6, 10, 9, 6, 7, 11, 10, 8, 9, 13, 12, 9, 10, 14, 13, 10, 11, 15, 14}}},
    // The wide plane of DoubleMeshSkinWeldTestAnim.ma: keeping the aspect, v spans a third of u.
    {"WidePlaneKeepsItsAspect",
     "polyPlane",
     {{"width", 3}, {"subdivisionsWidth", 1}, {"subdivisionsHeight", 1}, {"createUVs", 2}},
     {{-1.5f, 0, .5f, 1.5f, 0, .5f, -1.5f, 0, -.5f, 1.5f, 0, -.5f},
      {4},
      {0, 1, 3, 2},
      {0, 0, 1, 0, 0, kThird, 1, kThird},
      {0, 1, 3, 2}}},
    // The rule the default sphere's saved mesh pins (MultiMatOpacity.ma pSphereShape2), at 4 x 3.
    {"SphereRingsThenPoles",
     "polySphere",
     {{"subdivisionsAxis", 4}, {"subdivisionsHeight", 3}},
     {{0, -.5f, -k3, -k3, -.5f, 0, 0, -.5f, k3, k3, -.5f, 0, 0, .5f, -k3, -k3, .5f, 0, 0, .5f, k3, k3, .5f, 0, 0, -1, 0, 0, 1, 0},
      {4, 4, 4, 4, 3, 3, 3, 3, 3, 3, 3, 3},
      {0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6, 3, 0, 4, 7, 1, 0, 8, 2, 1, 8, 3, 2, 8, 0, 3, 8, 4, 5, 9, 5, 6, 9, 6, 7, 9, 7, 4, 9},
      {0,     kThird, .25f,  kThird, .5f,   kThird, .75f,  kThird, 1,     kThird, 0,     2 * kThird, .25f,  2 * kThird,
       .5f,   2 * kThird, .75f, 2 * kThird, 1, 2 * kThird, .125f, 0,     .375f, 0,     .625f, 0,     .875f, 0,
       .125f, 1,     .375f, 1,     .625f, 1,     .875f, 1},
      {0, 1, 6, 5, 1, 2, 7, 6, 2, 3, 8, 7, 3, 4, 9, 8, 1, 0, 10, 2, 1, 11, 3, 2, 12, 4, 3, 13, 5, 6, 14, 6, 7, 15, 7, 8, 16, 8, 9, 17}}},
};

INSTANTIATE_TEST_SUITE_P(Pinned, PrimitiveTest, ::testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

// Cylinder, cone and torus: no scene stores their meshes, so these pin the layout chosen here (rings as the
// sphere's, sides first, then caps), not Maya's.
struct TopologyCase {
  const char* name;
  const char* type;
  std::vector<std::pair<std::string, double>> attributes;
  std::vector<float> points;
  std::vector<int> counts;
  std::vector<int> vertices;
};

void PrintTo(const TopologyCase& c, std::ostream* os) { *os << c.name; }

class UnpinnedPrimitiveTest : public ::testing::TestWithParam<TopologyCase> {};

TEST_P(UnpinnedPrimitiveTest, KeepsItsVerticesAndFaces)
{
  const TopologyCase& c = GetParam();
  MakePrimitive(c.type, c.attributes);
  const Flat mesh = Read("shape");
  ExpectNear(mesh.points, c.points);
  EXPECT_EQ(mesh.counts, c.counts);
  EXPECT_EQ(mesh.vertices, c.vertices);
}

const TopologyCase kUnpinned[] = {
    {"CylinderWithCentredCaps",
     "polyCylinder",
     {{"subdivisionsAxis", 4}, {"subdivisionsCaps", 1}},
     {0, -1, -1, -1, -1, 0, 0, -1, 1, 1, -1, 0, 0, 1, -1, -1, 1, 0, 0, 1, 1, 1, 1, 0, 0, -1, 0, 0, 1, 0},
     {4, 4, 4, 4, 3, 3, 3, 3, 3, 3, 3, 3},
     {0, 1, 5, 4, 1, 2, 6, 5, 2, 3, 7, 6, 3, 0, 4, 7, 1, 0, 8, 2, 1, 8, 3, 2, 8, 0, 3, 8, 4, 5, 9, 5, 6, 9, 6, 7, 9, 7, 4, 9}},
    {"ConeWithOnePolygonBase",
     "polyCone",
     {{"subdivisionsAxis", 3}},
     {-.5f, -1, -k3, -.5f, -1, k3, 1, -1, 0, 0, 1, 0},
     {3, 3, 3, 3},
     {0, 1, 3, 1, 2, 3, 2, 0, 3, 2, 1, 0}},
    {"TorusRingsAroundTheSection",
     "polyTorus",
     {{"subdivisionsAxis", 3}, {"subdivisionsHeight", 3}},
     {-.75f, 0, -1.5f * k3, -.75f, 0, 1.5f * k3, 1.5f, 0, 0, -.375f, .5f * k3, -.75f * k3, -.375f, .5f * k3, .75f * k3,
      .75f, .5f * k3, 0, -.375f, -.5f * k3, -.75f * k3, -.375f, -.5f * k3, .75f * k3, .75f, -.5f * k3, 0},
     std::vector<int>(9, 4),
     {0, 1, 4, 3, 1, 2, 5, 4, 2, 0, 3, 5, 3, 4, 7, 6, 4, 5, 8, 7, 5, 3, 6, 8, 6, 7, 1, 0, 7, 8, 2, 1, 8, 6, 0, 2}},
};

INSTANTIATE_TEST_SUITE_P(Chosen, UnpinnedPrimitiveTest, ::testing::ValuesIn(kUnpinned),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(PrimitiveAttributes, SphereAsMayaSavesItAtItsSeamAndPoles)
{
  // Values of MultiMatOpacity.ma's default sphere (radius 1, 20 x 20, sawtooth UVs) at the ring seam and poles.
  MakePrimitive("polySphere", {});
  const Flat mesh = Read("shape");
  ASSERT_EQ(mesh.points.size(), 382u * 3);
  ASSERT_EQ(mesh.counts.size(), 400u);
  ASSERT_EQ(mesh.uvs.size(), 439u * 2);
  ExpectNear({mesh.points.begin(), mesh.points.begin() + 3}, {0.14877813f, -0.98768836f, -0.048340943f});
  ExpectNear({mesh.points.begin() + 19 * 3, mesh.points.begin() + 20 * 3}, {0.15643448f, -0.98768836f, 0});
  ExpectNear({mesh.points.end() - 6, mesh.points.end()}, {0, -1, 0, 0, 1, 0});
  const auto face = [&](int f, int n) { return std::vector<int>(mesh.vertices.begin() + f, mesh.vertices.begin() + f + n); };
  const auto uvs = [&](int f, int n) { return std::vector<int>(mesh.uvIds.begin() + f, mesh.uvIds.begin() + f + n); };
  EXPECT_EQ(face(19 * 4, 4), (std::vector<int>{19, 0, 20, 39}));
  EXPECT_EQ(uvs(19 * 4, 4), (std::vector<int>{19, 20, 41, 40}));
  EXPECT_EQ(face(360 * 4, 3), (std::vector<int>{1, 0, 380}));
  EXPECT_EQ(uvs(360 * 4 + 19 * 3, 3), (std::vector<int>{20, 19, 418}));
  EXPECT_EQ(face(360 * 4 + 39 * 3, 3), (std::vector<int>{379, 360, 381}));
  EXPECT_EQ(uvs(360 * 4 + 39 * 3, 3), (std::vector<int>{397, 398, 438}));
  ExpectNear({mesh.uvs.begin() + 399 * 2, mesh.uvs.begin() + 400 * 2}, {0.025f, 0});
}

TEST(PrimitiveAttributes, CubeEdgesAreHardSubdivisionEdgesSoftAndNormalsFollowTheAxis)
{
  MakePrimitive("polyCube", {{"subdivisionsWidth", 2}});
  MFnMesh fn(PathTo("shape"));
  MVector left;
  MVector right;
  // Faces 0 and 1 are the front's two halves: soft between them, hard against the top and sides.
  ASSERT_TRUE(fn.getFaceVertexNormal(0, 1, left));
  ASSERT_TRUE(fn.getFaceVertexNormal(1, 1, right));
  EXPECT_NEAR(left.z, 1.0, 1e-6);
  EXPECT_NEAR(right.z, 1.0, 1e-6);
  MVector corner;
  ASSERT_TRUE(fn.getFaceVertexNormal(0, 0, corner));
  EXPECT_NEAR(corner.z, 1.0, 1e-6);

  // The axis turns the primitive, and its normals follow.
  MakePrimitive("polyPlane", {{"subdivisionsWidth", 1}, {"subdivisionsHeight", 1}, {"axisX", 1}, {"axisY", 0}});
  MVector normal;
  ASSERT_TRUE(MFnMesh(PathTo("shape")).getPolygonNormal(0, normal));
  EXPECT_NEAR(normal.x, 1.0, 1e-6);
  EXPECT_NEAR(normal.y, 0.0, 1e-6);
}

TEST(PrimitiveAttributes, SubdivisionsBeyondMemoryLeaveTheMeshEmptyWithAReason)
{
  MakePrimitive("polyPlane", {{"subdivisionsWidth", 1e9}, {"subdivisionsHeight", 1e9}});
  EXPECT_EQ(Read("shape").counts.size(), 0u);
  const auto problems = HistoryProblems();
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].node, "maker");
  EXPECT_EQ(problems[0].reason, "it would make more faces than memory holds");
}

}
