#include "SceneFiles.h"

#include "importers/ImportScene.h"

#include "base/Path.h"

#include <standin/SceneBuilder.h>

#include <maya/MDistance.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSet.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MIntArray.h>
#include <maya/MItDag.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// A quad and a triangle sharing the edge 2-3, each with its own material:
//
//   4
//   |  `.
//   3----2
//   |    |
//   0----1
const char* const kTwoFaceObj = "mtllib two.mtl\n"
                                "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 2 0\n"
                                "vt 0.25 0.1\nvt 0.75 0.1\nvt 0.75 0.9\nvt 0.25 0.9\nvt 0.25 1.0\n"
                                "o board\n"
                                "usemtl red\nf 1/1 2/2 3/3 4/4\n"
                                "usemtl blue\nf 4/4 3/3 5/5\n";

const char* const kTwoFaceMtl = "newmtl red\nKd 1 0 0\nmap_Kd textures/red.png\n"
                                "newmtl blue\nKd 0 0 1\nillum 2\nNs 30\n";

std::vector<int> ToVector(const MIntArray& array)
{
    std::vector<int> values;
    for (unsigned int i = 0; i < array.length(); ++i)
        values.push_back(array[i]);
    return values;
}

std::vector<int> PolygonVertices(const MFnMesh& mesh, int polygon)
{
    MIntArray vertices;
    mesh.getPolygonVertices(polygon, vertices);
    return ToVector(vertices);
}

std::string ShaderOf(const std::string& shadingEngine)
{
    MPlugArray sources;
    MFnDependencyNode(standin::NodeByName(shadingEngine)).findPlug("surfaceShader").connectedTo(sources, true, false);
    return sources.length() ? MFnDependencyNode(sources[0].node()).name().asChar() : std::string();
}

std::vector<int> FacesIn(const std::string& shadingEngine)
{
    MSelectionList members;
    MFnSet(standin::NodeByName(shadingEngine)).getMembers(members, false);
    if (members.length() != 1)
        return {};
    MDagPath path;
    MObject component;
    members.getDagPath(0, path, component);
    MIntArray faces;
    MFnSingleIndexedComponent(component).getElements(faces);
    return ToVector(faces);
}

class ImportObj : public testing::Test {
protected:
    void SetUp() override
    {
        m_folder = MakeTestFolder("obj");
        WriteTestFile(m_folder, "two.mtl", kTwoFaceMtl);
        m_path = WriteTestFile(m_folder, "two.obj", kTwoFaceObj);
        m_result = ImportScene(m_path);
        ASSERT_TRUE(m_result.Ok) << m_result.Error;
    }

    std::string m_folder;
    std::string m_path;
    ImportResult m_result;
};

TEST_F(ImportObj, CornersOfOnePositionBecomeOneVertexAndPolygonsKeepTheirCornersInCentimetres)
{
    MFnMesh mesh(standin::PathTo("boardShape"));
    EXPECT_EQ(mesh.numVertices(), 5);
    ASSERT_EQ(mesh.numPolygons(), 2);
    EXPECT_EQ(mesh.polygonVertexCount(0), 4);
    EXPECT_EQ(mesh.polygonVertexCount(1), 3);
    // The polygons keep the file's corner order, its numbers taken as centimetres.
    EXPECT_EQ(MDistance::uiUnit(), MDistance::kCentimeters);
    MPointArray points;
    mesh.getPoints(points, MSpace::kWorld);
    const std::vector<int> quad = PolygonVertices(mesh, 0);
    const std::vector<int> triangle = PolygonVertices(mesh, 1);
    ASSERT_EQ(quad.size(), 4u);
    ASSERT_EQ(triangle.size(), 3u);
    const double expectedQuad[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for (int c = 0; c < 4; ++c) {
        EXPECT_DOUBLE_EQ(points[quad[c]].x, expectedQuad[c][0]);
        EXPECT_DOUBLE_EQ(points[quad[c]].y, expectedQuad[c][1]);
    }
    EXPECT_EQ(triangle[0], quad[3]);
    EXPECT_EQ(triangle[1], quad[2]);
    EXPECT_DOUBLE_EQ(points[triangle[2]].y, 2.0);
}

TEST_F(ImportObj, UVsAreMayasOwnWithTheVFlipLeftToTheHarvest)
{
    MFnMesh mesh(standin::PathTo("boardShape"));
    EXPECT_EQ(std::string(mesh.currentUVSetName().asChar()), "map1");
    int uvId = -1;
    ASSERT_TRUE(mesh.getPolygonUVid(0, 0, uvId));
    float u = 0.0f;
    float v = 0.0f;
    mesh.getUV(uvId, u, v);
    EXPECT_FLOAT_EQ(u, 0.25f);
    EXPECT_FLOAT_EQ(v, 0.1f);
    ASSERT_TRUE(mesh.getPolygonUVid(1, 2, uvId));
    mesh.getUV(uvId, u, v);
    EXPECT_FLOAT_EQ(v, 1.0f);
    EXPECT_EQ(mesh.numUVs(), 5);
}

TEST_F(ImportObj, EachMaterialGetsAShaderOfItsModelAndColourInAShadingSetHoldingItsFaces)
{
    EXPECT_EQ(ShaderOf("redSG"), "red");
    EXPECT_EQ(ShaderOf("blueSG"), "blue");
    EXPECT_EQ(FacesIn("redSG"), std::vector<int>({0}));
    EXPECT_EQ(FacesIn("blueSG"), std::vector<int>({1}));
    EXPECT_EQ(std::string(MFnDependencyNode(standin::NodeByName("red")).typeName().asChar()), "lambert");
    EXPECT_EQ(std::string(MFnDependencyNode(standin::NodeByName("blue")).typeName().asChar()), "phong");
    EXPECT_DOUBLE_EQ(standin::Plug("blue.colorB").asDouble(), 1.0);
    EXPECT_DOUBLE_EQ(standin::Plug("blue.colorR").asDouble(), 0.0);
    EXPECT_DOUBLE_EQ(standin::Plug("blue.cosinePower").asDouble(), 30.0);
    // The colour map becomes a file texture beside the scene.
    MPlugArray sources;
    MFnDependencyNode(standin::NodeByName("red")).findPlug("color").connectedTo(sources, true, false);
    ASSERT_EQ(sources.length(), 1u);
    const std::string file = MFnDependencyNode(sources[0].node()).findPlug("fileTextureName").asString().asChar();
    EXPECT_EQ(file, DirectoryOf(m_path) + "\\textures\\red.png");
}

TEST(ImportObjPolygons, StrayNulByteAtTheEndIsReadLikeTheRestOfTheFile)
{
    const std::string folder = MakeTestFolder("obj_nul");
    const std::string file =
        WriteTestFile(folder, "sculpt.obj", std::string("v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n\0", 33));
    const ImportResult result = ImportScene(file);
    ASSERT_TRUE(result.Ok) << result.Error;
    MDagPath path;
    MItDag(MItDag::kDepthFirst, MFn::kMesh).getPath(path);
    EXPECT_EQ(MFnMesh(path).numPolygons(), 1);
}

TEST(ImportObjPolygons, APolygonPassingTwiceThroughOnePointKeepsTwoVerticesAndIsCounted)
{
    const std::string folder = MakeTestFolder("obj_pinched");
    const std::string file = WriteTestFile(folder, "pinched.obj",
                                           "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 1 0 0\n"
                                           "f 1 2 3 4 5\n");
    const ImportResult result = ImportScene(file);
    ASSERT_TRUE(result.Ok) << result.Error;
    MDagPath path;
    MItDag(MItDag::kDepthFirst, MFn::kMesh).getPath(path);
    MFnMesh mesh(path);
    EXPECT_EQ(mesh.numVertices(), 5);
    EXPECT_EQ(mesh.polygonVertexCount(0), 5);
    EXPECT_EQ(result.WarningCount(), 1);
}

} // namespace
