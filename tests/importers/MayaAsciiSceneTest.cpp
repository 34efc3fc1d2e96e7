// Maya ASCII text in, the stand-in scene out: each test reads a small file and checks the scene through the Maya
// API, as the harvest sees it.

#include "SceneFiles.h"

#include "importers/ImportScene.h"
#include "importers/mayaascii/ImportMayaAscii.h"

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MDistance.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItDag.h>
#include <maya/MObjectArray.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

// The body starts on line 4.
const char* const kHeader = "//Maya ASCII 2018 scene\nrequires maya \"2018\";\ncurrentUnit -l centimeter -a degree -t film;\n";

ImportResult Load(const std::string& body, const std::string& header = kHeader)
{
    standin::NewScene();
    ImportResult result;
    result.Ok = ImportMayaAsciiText(header + body + "// End of test.ma\n", std::string(), result);
    return result;
}

std::vector<std::string> WarningsOf(const ImportResult& result)
{
    std::vector<std::string> texts;
    for (const ImportWarning& warning : result.Warnings)
        texts.push_back(warning.Describe());
    return texts;
}

MPoint WorldPoint(const std::string& path, const MPoint& local)
{
    return local * standin::PathTo(path).inclusiveMatrix();
}

void ExpectNear(const MPoint& actual, const MPoint& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
    EXPECT_NEAR(actual.z, expected.z, 1e-9);
}

TEST(MayaAsciiScene, DagHoldsSharedNamesInstancesAndDefaultNodes)
{
    const ImportResult result = Load(R"(createNode transform -n "group1";
createNode transform -n "pCube1" -p "group1";
createNode mesh -n "pCubeShape1" -p "pCube1";
createNode transform -n "pCube1";
createNode transform -n "pCube2";
parent -s -nc -r -add "|group1|pCube1|pCubeShape1" "pCube2";
connectAttr "|pCube2|pCubeShape1.iog" ":initialShadingGroup.dsm" -na;
)");
    EXPECT_TRUE(result.Ok);
    EXPECT_TRUE(result.Warnings.empty()) << WarningsOf(result).front();
    std::vector<std::string> paths;
    for (MItDag it; !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        paths.push_back(path.partialPathName().asChar());
    }
    EXPECT_EQ(paths, (std::vector<std::string>{"", "group1", "group1|pCube1", "pCube1|pCubeShape1", "|pCube1", "pCube2",
                                               "pCube2|pCubeShape1"}));
    // The connection names the second instance by its path; lambert1 is the default shader every scene has.
    MObjectArray sets;
    MObjectArray components;
    ASSERT_TRUE(MFnMesh(standin::PathTo("pCube2|pCubeShape1")).getConnectedSetsAndMembers(1, sets, components, true));
    ASSERT_EQ(sets.length(), 1u);
    EXPECT_EQ(MFnDependencyNode(sets[0]).name(), "initialShadingGroup");
    EXPECT_FALSE(MFnMesh(standin::PathTo("group1|pCube1|pCubeShape1")).getConnectedSetsAndMembers(0, sets, components, true) &&
                 sets.length() > 0);
}

TEST(MayaAsciiScene, TransformsTakeTheFileUnitsPivotsRotateOrderAndJointOrient)
{
    const ImportResult result = Load(R"(createNode transform -n "pivoted";
	setAttr ".t" -type "double3" 0.01 0 0 ;
	setAttr ".r" -type "double3" 0 0 90 ;
	setAttr ".rp" -type "double3" 0.01 0 0 ;
	setAttr ".ro" 2;
createNode joint -n "hip";
	setAttr ".jo" -type "double3" 0 0 90 ;
createNode joint -n "knee" -p "hip";
	setAttr ".t" -type "double3" 0.02 0 0 ;
)",
                                     "//Maya ASCII 2018 scene\ncurrentUnit -l meter -a degree -t pal;\n");
    EXPECT_TRUE(result.Warnings.empty()) << WarningsOf(result).front();
    EXPECT_EQ(MDistance::uiUnit(), MDistance::kMeters);
    EXPECT_EQ(MTime::uiUnit(), MTime::kPALFrame);
    // Translation 1 cm, then 90 degrees about z around the pivot at x = 1 cm.
    ExpectNear(WorldPoint("pivoted", MPoint(2, 0, 0)), MPoint(2, 1, 0));
    EXPECT_EQ(standin::Plug("pivoted.rotateOrder").asInt(), 2);
    // The knee sits 2 cm along the hip's x axis, which the orient turns onto y.
    ExpectNear(WorldPoint("knee", MPoint(0, 0, 0)), MPoint(0, 2, 0));
}

TEST(MayaAsciiScene, MeshTakesItsVerticesFacesUVSetsNormalsHardEdgesAndColours)
{
    // 3---2---5
    // |   |  /      a quad and a triangle sharing the hard edge 1-2; vertex 3 is tweaked up by 1
    // 0---1
    const ImportResult result = Load(R"(createNode transform -n "plane";
createNode mesh -n "planeShape" -p "plane";
	setAttr -s 2 ".uvst";
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr -s 5 ".uvst[0].uvsp[0:4]" -type "float2" 0 0 1 0 1 1 0 1 2 1;
	setAttr ".uvst[1].uvsn" -type "string" "lightmap";
	setAttr -s 1 ".uvst[1].uvsp[0]" -type "float2" 0.5 0.5;
	setAttr ".cuvs" -type "string" "lightmap";
	setAttr ".clst[0].clsn" -type "string" "tint";
	setAttr ".clst[0].rprt" 3;
	setAttr -s 2 ".clst[0].clsp[0:1]"  1 0 0 0 0 1;
	setAttr ".pt[3]" -type "float3" 0 1 0;
	setAttr -s 5 ".vt[0:4]"  0 0 0 1 0 0 1 1 0 0 1 0 2 1 0;
	setAttr -s 6 ".ed[0:5]"  0 1 1 1 2 0 2 3 1 3 0 1 1 4 1 4 2 1;
	setAttr -s 7 ".n[0:6]" -type "float3"  0 0 1 1e+20 1e+20 1e+20 0 0 1 0 0 1 0 1 0 0 1 0 0 1 0;
	setAttr -s 2 ".fc[0:1]" -type "polyFaces" 
		f 4 0 1 2 3
		mu 0 4 0 1 2 3
		mu 1 4 0 0 0 0
		mc 0 4 0 0 0 0
		f 3 4 5 -2
		mu 0 3 1 4 2
		mc 0 3 1 1 1;
)");
    EXPECT_TRUE(result.Warnings.empty()) << WarningsOf(result).front();
    MFnMesh mesh(standin::PathTo("planeShape"));
    ASSERT_EQ(mesh.numPolygons(), 2);
    MIntArray vertices;
    mesh.getPolygonVertices(1, vertices);
    EXPECT_EQ(std::vector<int>(&vertices[0], &vertices[0] + vertices.length()), (std::vector<int>{1, 4, 2}));
    MPoint tweaked;
    mesh.getPoint(3, tweaked);
    ExpectNear(tweaked, MPoint(0, 2, 0));
    MStringArray uvSets;
    mesh.getUVSetNames(uvSets);
    ASSERT_EQ(uvSets.length(), 2u);
    EXPECT_EQ(uvSets[1], "lightmap");
    EXPECT_EQ(mesh.currentUVSetName(), "lightmap");
    const MString map1("map1");
    int uvId = -1;
    mesh.getPolygonUVid(1, 1, uvId, &map1);
    EXPECT_EQ(uvId, 4);
    float u = 0.0f;
    float v = 0.0f;
    mesh.getUV(4, u, v, &map1);
    EXPECT_EQ(u, 2.0f);
    EXPECT_EQ(v, 1.0f);
    // The corner without a user normal keeps the computed one; the others take the file's.
    MVector normal;
    mesh.getFaceVertexNormal(0, 1, normal);
    EXPECT_NEAR(normal.z, 1.0, 1e-6);
    mesh.getFaceVertexNormal(1, 4, normal);
    EXPECT_NEAR(normal.y, 1.0, 1e-6);
    MStringArray colorSets;
    mesh.getColorSetNames(colorSets);
    ASSERT_EQ(colorSets.length(), 1u);
    EXPECT_EQ(colorSets[0], "tint");
}

TEST(MayaAsciiScene, ShadingGroupsTakeTheFacesOfTheirObjectGroups)
{
    const ImportResult result = Load(R"(createNode transform -n "box";
createNode mesh -n "boxShape" -p "box";
	setAttr -s 2 ".iog[0].og";
	setAttr ".iog[0].og[0].gcl" -type "componentList" 1 "f[0]";
	setAttr ".iog[0].og[1].gcl" -type "componentList" 1 "f[1]";
	setAttr -s 4 ".vt[0:3]"  0 0 0 1 0 0 1 1 0 0 1 0;
	setAttr -s 5 ".ed[0:4]"  0 1 0 1 2 0 2 0 0 2 3 0 3 0 0;
	setAttr -s 2 ".fc[0:1]" -type "polyFaces" f 3 0 1 2 f 3 -3 3 4;
createNode lambert -n "red";
	setAttr ".c" -type "float3" 1 0 0 ;
createNode shadingEngine -n "redSG";
createNode phong -n "shiny";
createNode shadingEngine -n "shinySG";
connectAttr "red.oc" "redSG.ss";
connectAttr "shiny.oc" "shinySG.ss";
connectAttr "box|boxShape.iog.og[0]" "redSG.dsm" -na;
connectAttr "boxShape.iog.og[1]" "shinySG.dsm" -na;
)");
    EXPECT_TRUE(result.Warnings.empty()) << WarningsOf(result).front();
    MObjectArray sets;
    MObjectArray components;
    ASSERT_TRUE(MFnMesh(standin::PathTo("boxShape")).getConnectedSetsAndMembers(0, sets, components, true));
    ASSERT_EQ(sets.length(), 2u);
    EXPECT_EQ(MFnDependencyNode(sets[0]).name(), "redSG");
    EXPECT_EQ(MFnDependencyNode(sets[1]).name(), "shinySG");
    EXPECT_EQ(MFnSingleIndexedComponent(components[1]).element(0), 1);
    EXPECT_FLOAT_EQ(standin::Plug("red.colorR").asFloat(), 1.0f);
}

// Two joints bound to a quad; the file keeps the points on the intermediate Orig shape and the weights sparsely.
const char* const kSkinnedQuad = R"(createNode joint -n "root";
createNode joint -n "tip" -p "root";
	setAttr ".t" -type "double3" 2 0 0 ;
createNode transform -n "quad";
createNode mesh -n "quadShape" -p "quad";
createNode mesh -n "quadShapeOrig" -p "quad";
	setAttr -k off ".v";
	setAttr ".io" yes;
	setAttr -s 4 ".vt[0:3]"  0 0 0 2 0 0 2 1 0 0 1 0;
	setAttr -s 4 ".ed[0:3]"  0 1 0 1 2 0 2 3 0 3 0 0;
	setAttr ".fc[0]" -type "polyFaces" f 4 0 1 2 3;
createNode skinCluster -n "skin";
	setAttr -s 4 ".wl";
	setAttr ".wl[0:3].w"
		1 0 1
		2 0 0.25 1 0.75
		1 1 1
		2 0 0.5 1 0.5;
	setAttr -s 2 ".pm";
	setAttr ".pm[0]" -type "matrix" 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1;
	setAttr ".pm[1]" -type "matrix" 1 0 0 0 0 1 0 0 0 0 1 0 -2 0 0 1;
	setAttr ".gm" -type "matrix" 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1;
createNode dagPose -n "bindPose1";
	setAttr -s 2 ".xm";
	setAttr ".xm[0]" -type "matrix" "xform" 1 1 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 0 0 0 1 1 1 1 yes;
	setAttr ".xm[1]" -type "matrix" "xform" 1 1 1 0 0 0 0 2 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 0 0 0.70710678 0.70710678 1 1 1 yes;
	setAttr ".bp" yes;
connectAttr "root.wm" "skin.ma[0]";
connectAttr "tip.wm" "skin.ma[1]";
connectAttr "quadShapeOrig.w" "skin.ip[0].ig";
connectAttr "skin.og[0]" "quadShape.i";
connectAttr "root.msg" "bindPose1.m[0]";
connectAttr "tip.msg" "bindPose1.m[1]";
)";

TEST(MayaAsciiScene, SkinClustersHoldTheFilesWeightsBindMatricesAndBindPose)
{
    const ImportResult result = Load(kSkinnedQuad);
    EXPECT_TRUE(result.Warnings.empty()) << WarningsOf(result).front();
    MObject skin;
    MSelectionList list;
    list.add("skin");
    list.getDependNode(0, skin);
    MFnSkinCluster fn(skin);
    MDagPathArray influences;
    ASSERT_EQ(fn.influenceObjects(influences), 2u);
    MDoubleArray weights;
    unsigned int count = 0;
    ASSERT_TRUE(fn.getWeights(standin::PathTo("quadShape"), MObject(), weights, count));
    EXPECT_EQ(std::vector<double>(&weights[0], &weights[0] + weights.length()),
              (std::vector<double>{1, 0, 0.25, 0.75, 0, 1, 0.5, 0.5}));
    const MMatrix bind = MFnMatrixData(standin::Plug("skin.bindPreMatrix[1]").asMObject()).matrix();
    EXPECT_EQ(bind(3, 0), -2.0);
    // The skinned shape shows the Orig geometry moved by the joints, here at their bind pose.
    MPoint point;
    MFnMesh(standin::PathTo("quadShape")).getPoint(2, point);
    ExpectNear(point, MPoint(2, 1, 0));

    // The file's bind pose is put back by dagPose; the orient is stored as a quaternion, 90 degrees about z.
    standin::SetAttr("tip.jointOrientZ", 0.0);
    standin::SetAttr("tip.translateX", 5.0);
    ASSERT_TRUE(MGlobal::executeCommand("dagPose -r -g -bp root"));
    EXPECT_NEAR(standin::Plug("tip.translateX").asDouble(), 2.0, 1e-12);
    EXPECT_NEAR(standin::Plug("tip.jointOrientZ").asDouble(), 90 * kDegree, 1e-6);
}

TEST(MayaAsciiScene, BlendShapeTargetsTakeTheirPointArraysAndComponentLists)
{
    // The target moves vertex 2 by (0, 1, 0) at full weight; the stand-in's blendShape evaluates it.
    const ImportResult result = Load(R"(createNode transform -n "tri";
createNode mesh -n "triShape" -p "tri";
createNode mesh -n "triShapeOrig" -p "tri";
	setAttr ".io" yes;
	setAttr -s 3 ".vt[0:2]"  0 0 0 1 0 0 0 1 0;
	setAttr -s 3 ".ed[0:2]"  0 1 0 1 2 0 2 0 0;
	setAttr ".fc[0]" -type "polyFaces" f 3 0 1 2;
createNode blendShape -n "blendShape1";
	setAttr ".w[0]"  1;
	setAttr ".it[0].itg[0].iti[6000].ipt" -type "pointArray" 1 0 1 0 1 ;
	setAttr ".it[0].itg[0].iti[6000].ict" -type "componentList" 1 "vtx[2]";
connectAttr "triShapeOrig.w" "blendShape1.ip[0].ig";
connectAttr "blendShape1.og[0]" "triShape.i";
)");
    EXPECT_TRUE(result.Warnings.empty()) << WarningsOf(result).front();
    MPoint point;
    MFnMesh(standin::PathTo("triShape")).getPoint(2, point);
    ExpectNear(point, MPoint(0, 2, 0));
}

TEST(MayaAsciiScene, CurvesKeepKeysTangentsWeightsAndInfinityInInternalUnits)
{
    const ImportResult result = Load(R"(createNode transform -n "ball";
createNode animCurveTA -n "ball_rotateZ";
	setAttr ".tan" 18;
	setAttr ".wgt" yes;
	setAttr -s 3 ".ktv[0:2]"  1 0 13 90 25 0;
	setAttr -s 3 ".kit[0:2]"  2 0 5;
	setAttr -s 3 ".kot[0:2]"  1 18 17;
	setAttr -s 3 ".kix[0:2]"  0.5 1 1;
	setAttr -s 3 ".kiy[0:2]"  0.25 0 0;
	setAttr ".pst" 3;
createNode animCurveTL -n "ball_translateY";
	setAttr -s 2 ".ktv[0:1]"  1 0 25 0.5;
connectAttr "ball_rotateZ.o" "ball.rz";
connectAttr "ball_translateY.o" "ball.ty";
)",
                                     "//Maya ASCII 2018 scene\ncurrentUnit -l meter -a degree -t film;\n");
    EXPECT_TRUE(result.Warnings.empty()) << WarningsOf(result).front();
    MFnAnimCurve curve(standin::Plug("ball.rotateZ"));
    ASSERT_EQ(curve.numKeys(), 3u);
    EXPECT_DOUBLE_EQ(curve.time(1).as(MTime::kSeconds), 13.0 / 24.0);
    EXPECT_DOUBLE_EQ(curve.value(1), 90 * kDegree);
    EXPECT_EQ(curve.inTangentType(0), MFnAnimCurve::kTangentLinear);
    EXPECT_EQ(curve.outTangentType(0), MFnAnimCurve::kTangentFixed);
    // A type of 0 (global) takes the curve's own, auto here.
    EXPECT_EQ(curve.inTangentType(1), MFnAnimCurve::kTangentAuto);
    EXPECT_EQ(curve.inTangentType(2), MFnAnimCurve::kTangentStep);
    EXPECT_EQ(curve.outTangentType(2), MFnAnimCurve::kTangentStepNext);
    EXPECT_TRUE(standin::Plug("ball_rotateZ.weightedTangents").asBool());
    EXPECT_EQ(standin::Plug("ball_rotateZ.postInfinity").asInt(), 3);
    MGlobal::viewFrame(13.0);
    EXPECT_NEAR(standin::Plug("ball.rotateZ").asDouble(), 90 * kDegree, 1e-9);
    MGlobal::viewFrame(25.0);
    EXPECT_NEAR(standin::Plug("ball.translateY").asDouble(), 50.0, 1e-9);
}

// The file's tangent codes name Maya's types; weighted handles are in seconds and bend the timing: with flat
// handles of 1.5 s and 0.75 s the curve from 0 to 1 over frames 0 to 24 passes 0.5 at 0.59375 s (14.25 frames).
TEST(MayaAsciiScene, TangentCodesAndWeightedHandlesShapeTheCurves)
{
    const ImportResult result = Load(R"(createNode transform -n "ball";
createNode animCurveTL -n "ball_translateX";
	setAttr ".wgt" yes;
	setAttr -s 2 ".ktv[0:1]"  0 0 24 1;
	setAttr -s 2 ".kit[0:1]"  1 1;
	setAttr -s 2 ".kot[0:1]"  1 1;
	setAttr -s 2 ".kix[0:1]"  0 0.75;
	setAttr -s 2 ".kiy[0:1]"  0 0;
	setAttr -s 2 ".kox[0:1]"  1.5 0;
	setAttr -s 2 ".koy[0:1]"  0 0;
createNode animCurveTU -n "ball_visibility";
	setAttr -s 6 ".ktv[0:5]"  0 0 1 0 2 0 3 0 4 0 5 0;
	setAttr -s 6 ".kit[0:5]"  9 10 16 17 18 8;
	setAttr -s 6 ".kot[0:5]"  3 2 6 7 5 1;
connectAttr "ball_translateX.o" "ball.tx";
connectAttr "ball_visibility.o" "ball.v";
)");
    EXPECT_EQ(WarningsOf(result), std::vector<std::string>{"line 14: the curve 'ball_visibility' has keys of unknown "
                                                           "tangent type 8, evaluated as clamped"});
    const MFnAnimCurve moved(standin::Plug("ball.translateX"));
    EXPECT_TRUE(moved.isWeighted());
    EXPECT_NEAR(moved.evaluate(MTime(0.59375, MTime::kSeconds)), 0.5, 1e-12);
    const MFnAnimCurve codes(standin::Plug("ball.visibility"));
    using T = MFnAnimCurve::TangentType;
    const T in[] = {T::kTangentSmooth, T::kTangentClamped, T::kTangentPlateau, T::kTangentStepNext, T::kTangentAuto,
                    T::kTangentClamped};
    const T out[] = {T::kTangentFlat, T::kTangentLinear, T::kTangentSlow, T::kTangentFast, T::kTangentStep,
                     T::kTangentFixed};
    for (unsigned int k = 0; k < 6; ++k) {
        EXPECT_EQ(codes.inTangentType(k), in[k]) << k;
        EXPECT_EQ(codes.outTangentType(k), out[k]) << k;
    }
}

TEST(MayaAsciiScene, AddedAttributesOfEveryKindHoldTheirValues)
{
    const ImportResult result = Load(R"(createNode transform -n "wall";
	addAttr -ci true -sn "ExportAs" -ln "ExportAs" -min 0 -max 2 -at "long";
	addAttr -ci true -sn "Bump_Texture_1" -ln "Bump_Texture_1" -dt "string";
	addAttr -ci true -sn "mode" -ln "mode" -min 0 -max 2 -en "off:on=4:auto" -at "enum";
	addAttr -ci true -sn "lift" -ln "lift" -at "doubleLinear";
	addAttr -ci true -sn "tint" -ln "tint" -at "float3" -nc 3;
	addAttr -ci true -sn "tintR" -ln "tintR" -at "float" -p "tint";
	addAttr -ci true -sn "tintG" -ln "tintG" -at "float" -p "tint";
	addAttr -ci true -sn "tintB" -ln "tintB" -at "float" -p "tint";
	addAttr -ci true -m -sn "levels" -ln "levels" -at "double";
	setAttr ".ExportAs" 2;
	setAttr ".Bump_Texture_1" -type "string" "bump.png";
	setAttr ".mode" 4;
	setAttr ".lift" 3;
	setAttr ".tint" -type "float3" 0.5 0.25 1;
	setAttr -s 3 ".levels[2:4]"  7 8 9;
)");
    EXPECT_TRUE(result.Warnings.empty()) << WarningsOf(result).front();
    EXPECT_EQ(standin::Plug("wall.ExportAs").asInt(), 2);
    EXPECT_EQ(standin::Plug("wall.Bump_Texture_1").asString(), "bump.png");
    EXPECT_EQ(standin::Plug("wall.mode").asInt(), 4);
    EXPECT_DOUBLE_EQ(standin::Plug("wall.lift").asDouble(), 3.0);
    EXPECT_FLOAT_EQ(standin::Plug("wall.tintG").asFloat(), 0.25f);
    EXPECT_DOUBLE_EQ(standin::Plug("wall.levels[4]").asDouble(), 9.0);
}

TEST(MayaAsciiScene, NodesWithoutATypeAreKeptAndTheMeshesTheyMakeAreNamed)
{
    // A plug-in shader, an unsupported deformer between a mesh and its original, and an unsupported creator: as in
    // Maya without the plug-ins, the nodes stay and compute nothing, so both meshes are empty and named.
    const ImportResult result = Load(R"(requires -nodeType "aiStandardSurface" "mtoa" "2.1.0.1";
createNode aiStandardSurface -n "metal";
	setAttr ".base" 0.5;
createNode transform -n "bent";
createNode mesh -n "bentShape" -p "bent";
createNode mesh -n "bentShapeOrig" -p "bent";
	setAttr ".io" yes;
	setAttr -s 3 ".vt[0:2]"  0 0 0 1 0 0 0 1 0;
	setAttr -s 3 ".ed[0:2]"  0 1 0 1 2 0 2 0 0;
	setAttr ".fc[0]" -type "polyFaces" f 3 0 1 2;
createNode nonLinear -n "bend1";
createNode transform -n "helix";
createNode mesh -n "helixShape" -p "helix";
createNode polyHelix -n "polyHelix1";
connectAttr "bentShapeOrig.w" "bend1.ip[0].ig";
connectAttr "bend1.og[0]" "bentShape.i";
connectAttr "polyHelix1.out" "helixShape.i";
connectAttr "metal.oc" ":initialShadingGroup.ss";
)");
    EXPECT_EQ(MFnMesh(standin::PathTo("bentShapeOrig")).numVertices(), 3);
    EXPECT_EQ(MFnMesh(standin::PathTo("bentShape")).numVertices(), 0);
    EXPECT_EQ(MFnDependencyNode(standin::NodeByName("metal")).typeName(), "aiStandardSurface");
    EXPECT_EQ(WarningsOf(result),
              (std::vector<std::string>{
                  "line 5: the node type 'aiStandardSurface' of the plug-in 'mtoa' is not available; its nodes are kept "
                  "but compute nothing",
                  "line 14: the node type 'nonLinear' is not supported; its nodes are kept but compute nothing",
                  "line 17: the node type 'polyHelix' is not supported; its nodes are kept but compute nothing",
                  "line 8: the mesh 'bentShape' is made by 'bend1' (nonLinear): its node type is not evaluated; the mesh "
                  "is empty",
                  "line 16: the mesh 'helixShape' is made by 'polyHelix1' (polyHelix): its node type is not evaluated; "
                  "the mesh is empty"}));
}

TEST(MayaAsciiScene, PlaybackRangeAndCurrentTimeComeFromTheScene)
{
    Load(R"(createNode script -n "sceneConfigurationScriptNode";
	setAttr ".b" -type "string" "playbackOptions -min 5 -max 30 -ast 1 -aet 40 ";
	setAttr ".st" 6;
select -ne :time1;
	setAttr ".o" 12;
)");
    EXPECT_DOUBLE_EQ(MAnimControl::minTime().as(MTime::kFilm), 5.0);
    EXPECT_DOUBLE_EQ(MAnimControl::maxTime().as(MTime::kFilm), 30.0);
    EXPECT_DOUBLE_EQ(MAnimControl::currentTime().as(MTime::kFilm), 12.0);
}

struct Refused {
    const char* Body;
    const char* Warning;
};

class MayaAsciiRefused : public ::testing::TestWithParam<Refused> {};

// What Maya refuses while opening a file is passed over with the line, and the rest of the scene loads.
TEST_P(MayaAsciiRefused, IsNamedWithItsLine)
{
    const ImportResult result = Load(std::string("createNode transform -n \"a\";\n") + GetParam().Body);
    EXPECT_TRUE(result.Ok);
    EXPECT_EQ(WarningsOf(result), std::vector<std::string>{GetParam().Warning});
    EXPECT_FALSE(standin::PathTo("a").node().isNull());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, MayaAsciiRefused,
    ::testing::Values(
        Refused{"setAttr \"b.tx\" 1;\n", "line 5: setAttr: no node is named 'b'"},
        Refused{"setAttr \".shininess\" 1;\n", "line 5: setAttr: the transform 'a' has no attribute 'shininess'"},
        Refused{"setAttr \".t\" -type \"double3\" 1 2;\n",
                "line 5: setAttr \".t\" on 'a': there are fewer values than the attribute takes"},
        Refused{"setAttr \".t\" -type \"double3\" 1 2 3 4;\n",
                "line 5: setAttr \".t\" on 'a': there are more values than the attribute takes"},
        Refused{"createNode fancyNode -n \"b\";\nsetAttr \".x\" 1;\n",
                "line 5: the node type 'fancyNode' is not supported; its nodes are kept but compute nothing"},
        Refused{"connectAttr \"a.tx\" \"a.nothing\";\n", "line 5: connectAttr: the transform 'a' has no attribute 'nothing'"},
        Refused{"file -r -ns \"set\" \"D:/projects/set.ma\";\n",
                "line 5: file: the referenced file 'D:/projects/set.ma' does not exist; its nodes are missing"},
        Refused{"createNode transform -n \"c\" -p \"nowhere\";\n",
                "line 5: createNode: the parent 'nowhere' does not exist; the node 'c' is passed over"}));

TEST(MayaAsciiScene, ReferencedFilesLoadIntoTheirNamespace)
{
    const std::string folder = MakeTestFolder("ma_reference");
    WriteTestFile(folder, "prop.ma", std::string(kHeader) + "createNode transform -n \"crate\";\n// End of prop.ma\n");
    const std::string scene = WriteTestFile(folder, "main.ma", std::string(kHeader) +
                                                                   "file -r -ns \"propA\" \"props/prop.ma\";\n"
                                                                   "setAttr \"propA:crate.tx\" 4;\n// End of main.ma\n");
    const ImportResult result = ImportScene(scene);
    EXPECT_TRUE(result.Ok) << result.Error;
    EXPECT_TRUE(result.Warnings.empty()) << WarningsOf(result).front();
    EXPECT_DOUBLE_EQ(standin::Plug("propA:crate.translateX").asDouble(), 4.0);
}

TEST(MayaAsciiScene, TexturesOfAnotherMachineAreFoundBesideTheScene)
{
    const std::string folder = MakeTestFolder("ma_textures");
    const std::string image = WriteTestFile(folder, "wood.jpg", "jpeg");
    const std::string scene = WriteTestFile(folder, "room.ma", std::string(kHeader) + R"(createNode file -n "woodFile";
	setAttr ".ftn" -type "string" "D:/work/textures/wood.jpg";
createNode file -n "lostFile";
	setAttr ".ftn" -type "string" "D:/work/textures/lost.jpg";
// End of room.ma
)");
    ASSERT_TRUE(ImportScene(scene).Ok);
    EXPECT_EQ(standin::Plug("woodFile.fileTextureName").asString(), image.c_str());
    EXPECT_EQ(standin::Plug("lostFile.fileTextureName").asString(), "D:/work/textures/lost.jpg");
}

TEST(MayaAsciiScene, FilesThatCannotBeReadAsAWholeAreRefusedWithTheReason)
{
    const std::string folder = MakeTestFolder("ma_refused");
    ImportResult result = ImportScene(WriteTestFile(folder, "cut.ma", std::string(kHeader) + "createNode mesh -n \"m\";\n\tsetAttr \".vt[0:1]\" 0 0"));
    EXPECT_FALSE(result.Ok);
    EXPECT_EQ(result.Error, "'cut.ma': line 5: the file ends inside a setAttr command; it is truncated");
    result = ImportScene(WriteTestFile(folder, "scene.mb", std::string("FOR4\0\0\0\x28Maya", 12)));
    EXPECT_FALSE(result.Ok);
    EXPECT_EQ(result.Error,
              "'scene.mb': this is a Maya Binary file; kestrel reads Maya ASCII: save the scene as Maya ASCII (.ma)");
    result = ImportScene(folder + "\\missing.ma");
    EXPECT_FALSE(result.Ok);
    EXPECT_EQ(result.Error, "'missing.ma': no such file");
}

} // namespace
