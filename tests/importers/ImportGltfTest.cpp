#include "SceneFiles.h"

#include "importers/ImportScene.h"

#include "base/Path.h"

#include <standin/SceneBuilder.h>

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MDistance.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFloatArray.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MFnWeightGeometryFilter.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPointArray.h>
#include <maya/MTime.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// One triangle in metres with UVs, as glTF stores them (v down).
struct Triangle {
    GltfWriter Writer;
    int Positions = Writer.AddFloats({0, 0, 0, 1, 0, 0, 0, 1, 0}, "VEC3");
    int UVs = Writer.AddFloats({0.25f, 0.1f, 0.75f, 0.1f, 0.25f, 0.6f}, "VEC2");
    int Indices = Writer.AddIndices({0, 1, 2});

    std::string Mesh() const
    {
        return "\"meshes\":[{\"primitives\":[{\"attributes\":{\"POSITION\":" + std::to_string(Positions) +
               ",\"TEXCOORD_0\":" + std::to_string(UVs) + "},\"indices\":" + std::to_string(Indices) + "}]}]";
    }
};

ImportResult ImportGltf(const std::string& name, const std::string& json)
{
    const std::string folder = MakeTestFolder(name);
    return ImportScene(WriteTestFile(folder, name + ".gltf", json));
}

// Two nodes share the triangle, a third has its name: instancing, Maya's naming and extras in one scene.
TEST(ImportGltf, NodesBecomeMayaNodesInCentimetresWithBottomUpUVsSharedShapesAndExtras)
{
    Triangle triangle;
    const ImportResult result = ImportGltf(
        "nodes", triangle.Writer.Json(triangle.Mesh() +
                                      ",\"nodes\":[{\"name\":\"tri\",\"mesh\":0,\"translation\":[0,0,2],\"extras\":"
                                      "{\"ExportSkip\":1,\"CollisionFlags\":255,\"visarea\":\"hall\"}},"
                                      "{\"name\":\"tri\",\"mesh\":0},{\"name\":\"a b\"}],"
                                      "\"scenes\":[{\"nodes\":[0,1,2]}],\"scene\":0"));
    ASSERT_TRUE(result.Ok) << result.Error;
    EXPECT_EQ(MDistance::uiUnit(), MDistance::kMeters);
    MPoint point;
    MFnMesh(standin::PathTo("|tri|triShape")).getPoint(1, point, MSpace::kWorld);
    EXPECT_NEAR(point.x, 100.0, 1e-4);
    EXPECT_NEAR(point.z, 200.0, 1e-4);

    MFnMesh mesh(standin::PathTo("|tri|triShape"));
    int uvId = -1;
    float u = 0.0f;
    float v = 0.0f;
    ASSERT_TRUE(mesh.getPolygonUVid(0, 2, uvId));
    mesh.getUV(uvId, u, v);
    EXPECT_FLOAT_EQ(u, 0.25f);
    EXPECT_NEAR(v, 0.4f, 1e-6);

    int shapes = 0;
    for (MItDependencyNodes it(MFn::kMesh); !it.isDone(); it.next())
        ++shapes;
    EXPECT_EQ(shapes, 1);
    EXPECT_EQ(MFnDagNode(standin::NodeByName("triShape")).instanceCount(true), 2u);
    EXPECT_FALSE(standin::NodeByName("tri1").isNull());
    EXPECT_FALSE(standin::NodeByName("a_b").isNull());

    EXPECT_EQ(standin::Plug("tri.ExportSkip").asInt(), 1);
    EXPECT_EQ(standin::Plug("tri.CollisionFlags").asInt(), 255);
    EXPECT_EQ(std::string(standin::Plug("tri.visarea").asString().asChar()), "hall");
}

TEST(ImportGltf, PunctualLightsBecomeMayaLightsWithIntensityApartFromColour)
{
    const ImportResult result = ImportGltf(
        "lights", GltfWriter().Json(
                      "\"extensionsUsed\":[\"KHR_lights_punctual\"],\"extensions\":{\"KHR_lights_punctual\":{\"lights\":["
                      "{\"type\":\"spot\",\"color\":[1,0.5,0.25],\"intensity\":2,"
                      "\"spot\":{\"innerConeAngle\":0.2,\"outerConeAngle\":0.4}},{\"type\":\"directional\"}]}},"
                      "\"nodes\":[{\"name\":\"spot\",\"extensions\":{\"KHR_lights_punctual\":{\"light\":0}}},"
                      "{\"name\":\"sun\",\"extensions\":{\"KHR_lights_punctual\":{\"light\":1}}}],"
                      "\"scenes\":[{\"nodes\":[0,1]}],\"scene\":0"));
    ASSERT_TRUE(result.Ok) << result.Error;
    const MObject spot = standin::NodeByName("spotShape");
    ASSERT_FALSE(spot.isNull());
    EXPECT_EQ(std::string(MFnDependencyNode(spot).typeName().asChar()), "spotLight");
    EXPECT_NEAR(standin::Plug("spotShape.intensity").asDouble(), 2.0, 1e-6);
    EXPECT_NEAR(standin::Plug("spotShape.colorG").asDouble(), 0.5, 1e-6);
    EXPECT_NEAR(standin::Plug("spotShape.coneAngle").asDouble(), 0.8, 1e-6);
    EXPECT_NEAR(standin::Plug("spotShape.penumbraAngle").asDouble(), 0.2, 1e-6);
    EXPECT_EQ(std::string(MFnDependencyNode(standin::NodeByName("sunShape")).typeName().asChar()), "directionalLight");
}

std::string UpstreamNode(const std::string& plug)
{
    MPlugArray sources;
    standin::Plug(plug).connectedTo(sources, true, false);
    return sources.length() ? MFnDependencyNode(sources[0].node()).name().asChar() : std::string();
}

TEST(ImportGltfMaterials, TexturesBecomeFileNodesPlacedAsTheFileSaysWithBumpThroughBump2d)
{
    Triangle triangle;
    const std::string folder = MakeTestFolder("materials");
    const std::string path = WriteTestFile(
        folder, "painted.gltf",
        triangle.Writer.Json(
            "\"meshes\":[{\"primitives\":[{\"attributes\":{\"POSITION\":0,\"TEXCOORD_0\":1},\"indices\":2,"
            "\"material\":0}]}],\"nodes\":[{\"name\":\"tri\",\"mesh\":0}],\"scenes\":[{\"nodes\":[0]}],\"scene\":0,"
            "\"extensionsUsed\":[\"KHR_texture_transform\"],"
            "\"images\":[{\"uri\":\"maps/color.png\"},{\"uri\":\"maps/normal.png\"}],"
            "\"textures\":[{\"source\":0},{\"source\":1}],"
            "\"materials\":[{\"name\":\"painted\",\"pbrMetallicRoughness\":{\"baseColorFactor\":[0.5,0.25,1,1],"
            "\"baseColorTexture\":{\"index\":0,\"extensions\":{\"KHR_texture_transform\":{\"offset\":[0.5,0.25],"
            "\"scale\":[2,3]}}}},\"normalTexture\":{\"index\":1}}]"));
    const ImportResult result = ImportScene(path);
    ASSERT_TRUE(result.Ok) << result.Error;
    const std::string file = UpstreamNode("painted.color");
    ASSERT_FALSE(file.empty());
    EXPECT_EQ(std::string(standin::Plug(file + ".fileTextureName").asString().asChar()),
              DirectoryOf(path) + "\\maps\\color.png");
    const std::string place = UpstreamNode(file + ".uvCoord");
    EXPECT_NEAR(standin::Plug(place + ".repeatU").asDouble(), 2.0, 1e-6);
    EXPECT_NEAR(standin::Plug(place + ".repeatV").asDouble(), 3.0, 1e-6);
    EXPECT_NEAR(standin::Plug(place + ".offsetU").asDouble(), 0.5, 1e-6);
    // glTF's offset is measured from the top; in Maya's bottom-up space 3 repeats from 0.25 start at 1 - 0.25 - 3.
    EXPECT_NEAR(standin::Plug(place + ".offsetV").asDouble(), -2.25, 1e-6);
    // What the harvest reads: the file node's placement plugs, driven by the placement node.
    EXPECT_NEAR(standin::Plug(file + ".repeatV").asDouble(), 3.0, 1e-6);
    EXPECT_NEAR(standin::Plug(file + ".offsetV").asDouble(), -2.25, 1e-6);
    const std::string bump = UpstreamNode("painted.normalCamera");
    ASSERT_FALSE(bump.empty());
    EXPECT_EQ(std::string(MFnDependencyNode(standin::NodeByName(bump)).typeName().asChar()), "bump2d");
    const std::string bumpFile = UpstreamNode(bump + ".bumpValue");
    EXPECT_EQ(std::string(standin::Plug(bumpFile + ".fileTextureName").asString().asChar()),
              DirectoryOf(path) + "\\maps\\normal.png");
}

// Two clips on one node: "move" keys the translation at 0, 1 and 2 seconds, "turn" the rotation at 0 and 0.5.
std::string AnimatedTriangle()
{
    Triangle triangle;
    GltfWriter& w = triangle.Writer;
    const int moveTimes = w.AddFloats({0.0f, 1.0f, 2.0f}, "SCALAR");
    const int moveValues = w.AddFloats({0, 0, 0, 1, 0, 0, 1, 2, 0}, "VEC3");
    const int turnTimes = w.AddFloats({0.0f, 0.5f}, "SCALAR");
    const int turnValues = w.AddFloats({0, 0, 0, 1, 0, 0, 0.7071068f, 0.7071068f}, "VEC4");
    return w.Json(triangle.Mesh() +
                  ",\"nodes\":[{\"name\":\"tri\",\"mesh\":0}],\"scenes\":[{\"nodes\":[0]}],\"scene\":0,"
                  "\"animations\":[{\"name\":\"move\",\"samplers\":[{\"input\":" +
                  std::to_string(moveTimes) + ",\"output\":" + std::to_string(moveValues) +
                  "}],\"channels\":[{\"sampler\":0,\"target\":{\"node\":0,\"path\":\"translation\"}}]},"
                  "{\"name\":\"turn\",\"samplers\":[{\"input\":" +
                  std::to_string(turnTimes) + ",\"output\":" + std::to_string(turnValues) +
                  "}],\"channels\":[{\"sampler\":0,\"target\":{\"node\":0,\"path\":\"rotation\"}}]}]");
}

double CurveValue(const char* plug, double frame)
{
    return MFnAnimCurve(standin::Plug(plug)).evaluate(MTime(frame, MTime::kFilm));
}

TEST(ImportGltfAnimation, CurvesPassThroughTheFilesKeysOnFilmTimeAndClipsFollowOneAnother)
{
    const ImportResult result = ImportGltf("animation", AnimatedTriangle());
    ASSERT_TRUE(result.Ok) << result.Error;
    EXPECT_EQ(MTime::uiUnit(), MTime::kFilm);
    EXPECT_NEAR(CurveValue("tri.translateX", 0.0), 0.0, 1e-4);
    EXPECT_NEAR(CurveValue("tri.translateX", 24.0), 100.0, 1e-4);
    EXPECT_NEAR(CurveValue("tri.translateX", 48.0), 100.0, 1e-4);
    EXPECT_NEAR(CurveValue("tri.translateY", 24.0), 0.0, 1e-4);
    EXPECT_NEAR(CurveValue("tri.translateY", 48.0), 200.0, 1e-4);
    // The file's linear samplers stay linear between keys, beside a key of the same value too.
    EXPECT_NEAR(CurveValue("tri.translateX", 12.0), 50.0, 1e-4);
    EXPECT_NEAR(CurveValue("tri.translateY", 36.0), 100.0, 1e-4);
    ASSERT_EQ(result.Clips.size(), 2u);
    EXPECT_EQ(result.Clips[0].Name, "move");
    EXPECT_NEAR(result.Clips[0].StartFrame, 0.0, 1e-6);
    EXPECT_NEAR(result.Clips[0].EndFrame, 48.0, 1e-6);
    EXPECT_EQ(result.Clips[1].Name, "turn");
    EXPECT_NEAR(result.Clips[1].StartFrame, 49.0, 1e-6);
    EXPECT_NEAR(result.Clips[1].EndFrame, 61.0, 1e-6);
    EXPECT_NEAR(MAnimControl::minTime().as(MTime::kFilm), 0.0, 1e-9);
    EXPECT_NEAR(MAnimControl::maxTime().as(MTime::kFilm), 61.0, 1e-9);
    EXPECT_NEAR(CurveValue("tri.rotateZ", 61.0), 1.5707963, 1e-5);
    EXPECT_NEAR(CurveValue("tri.rotateZ", 48.0), 0.0, 1e-9);
    // The first clip's position is not carried into the second.
    EXPECT_NEAR(CurveValue("tri.translateX", 49.0), 0.0, 1e-9);
}

// A strip of two triangles bound to two joints; the file's rest pose bends the upper joint by 90 degrees away
// from the pose its inverse bind matrices describe.
//
//   3---2   bound to j1 (at y = 1 when bound)
//   |  /|
//   | / |
//   0---1   bound to j0 (at the origin)
// With a hat, j1 stands upright and carries a mesh of its own, without a skin.
std::string SkinnedStrip(float firstWeight = 1.0f, bool hat = false)
{
    GltfWriter w;
    const int positions = w.AddFloats({0, 0, 0, 1, 0, 0, 1, 2, 0, 0, 2, 0}, "VEC3");
    const int indices = w.AddIndices({0, 1, 2, 0, 2, 3});
    const int joints = w.AddJoints({0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0});
    const int weights = w.AddFloats({firstWeight, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}, "VEC4");
    const int inverseBinds =
        w.AddFloats({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, -1, 0, 1},
                    "MAT4");
    const std::string hatMesh =
        hat ? ",{\"primitives\":[{\"attributes\":{\"POSITION\":" +
                  std::to_string(w.AddFloats({0, 0, 0, 1, 0, 0, 0, 1, 0}, "VEC3")) + "}}]}"
            : "";
    return w.Json("\"meshes\":[{\"primitives\":[{\"attributes\":{\"POSITION\":" + std::to_string(positions) +
                  ",\"JOINTS_0\":" + std::to_string(joints) + ",\"WEIGHTS_0\":" + std::to_string(weights) +
                  "},\"indices\":" + std::to_string(indices) + "}]}" + hatMesh +
                  "],\"skins\":[{\"joints\":[1,2],\"inverseBindMatrices\":" + std::to_string(inverseBinds) +
                  "}],\"nodes\":[{\"name\":\"strip\",\"mesh\":0,\"skin\":0},{\"name\":\"j0\",\"children\":[2]},"
                  "{\"name\":\"j1\",\"translation\":[0,1,0]," +
                  (hat ? std::string("\"children\":[3]},{\"name\":\"hat\",\"mesh\":1}")
                       : std::string("\"rotation\":[0,0,0.7071068,0.7071068]}")) +
                  "],\"scenes\":[{\"nodes\":[0,1]}],\"scene\":0");
}

MPointArray WorldPoints(const char* shape)
{
    MPointArray points;
    MFnMesh(standin::PathTo(shape)).getPoints(points, MSpace::kWorld);
    return points;
}

// A morph target lifting the triangle's second corner by 1 m, its weight keyed from 0 to 1 over a second.
TEST(ImportGltfAnimation, MorphTargetsBlendTheMeshByTheirKeyedWeights)
{
    Triangle triangle;
    GltfWriter& w = triangle.Writer;
    const int lift = w.AddFloats({0, 0, 0, 0, 1, 0, 0, 0, 0}, "VEC3");
    const int times = w.AddFloats({0.0f, 1.0f}, "SCALAR");
    const int weights = w.AddFloats({0.0f, 1.0f}, "SCALAR");
    std::string mesh = triangle.Mesh();
    mesh.insert(mesh.rfind("}]}]"), ",\"targets\":[{\"POSITION\":" + std::to_string(lift) + "}]");
    const ImportResult result = ImportGltf(
        "morph", w.Json(mesh + ",\"nodes\":[{\"name\":\"tri\",\"mesh\":0}],\"scenes\":[{\"nodes\":[0]}],\"scene\":0,"
                               "\"animations\":[{\"name\":\"grow\",\"samplers\":[{\"input\":" +
                               std::to_string(times) + ",\"output\":" + std::to_string(weights) +
                               "}],\"channels\":[{\"sampler\":0,\"target\":{\"node\":0,\"path\":\"weights\"}}]}]"));
    ASSERT_TRUE(result.Ok) << result.Error;
    ASSERT_EQ(result.Clips.size(), 1u);
    EXPECT_NEAR(result.Clips[0].EndFrame, 24.0, 1e-6);
    for (const double frame : {0.0, 12.0, 24.0}) {
        MAnimControl::setCurrentTime(MTime(frame, MTime::kFilm));
        const MPointArray points = WorldPoints("triShape");
        ASSERT_EQ(points.length(), 3u);
        EXPECT_NEAR(points[1].y, 100.0 * frame / 24.0, 1e-3) << frame;
        EXPECT_NEAR(points[2].y, 100.0, 1e-3) << frame;
    }
}

TEST(ImportGltfSkin, BonesBecomeJointsOfASkinClusterBendingTheMeshToTheRestPoseAndBackToTheBindPose)
{
    const ImportResult result = ImportGltf("skin", SkinnedStrip());
    ASSERT_TRUE(result.Ok) << result.Error;
    EXPECT_EQ(std::string(MFnDependencyNode(standin::NodeByName("j0")).typeName().asChar()), "joint");
    EXPECT_EQ(std::string(MFnDependencyNode(standin::NodeByName("j1")).typeName().asChar()), "joint");
    EXPECT_TRUE(MFnDagNode(standin::NodeByName("stripShapeOrig")).isIntermediateObject());
    MFnSkinCluster skin(standin::NodeByName("skinCluster1"));
    MDagPathArray influences;
    EXPECT_EQ(skin.influenceObjects(influences), 2u);
    MDoubleArray weights;
    unsigned int influenceCount = 0;
    ASSERT_TRUE(skin.getWeights(standin::PathTo("stripShape"), MObject::kNullObj, weights, influenceCount));
    ASSERT_EQ(weights.length(), 8u);
    EXPECT_DOUBLE_EQ(weights[0], 1.0);
    EXPECT_DOUBLE_EQ(weights[1], 0.0);
    EXPECT_DOUBLE_EQ(weights[4], 0.0);
    EXPECT_DOUBLE_EQ(weights[5], 1.0);

    const MPointArray posed = WorldPoints("stripShape");
    ASSERT_EQ(posed.length(), 4u);
    // Vertex 2 sits 1 m right of and 1 m above j1; turned 90 degrees about z around j1 it lands at (-100, 200).
    EXPECT_NEAR(posed[2].x, -100.0, 1e-3);
    EXPECT_NEAR(posed[2].y, 200.0, 1e-3);

    // At the bind pose the skinned mesh equals the pre-skin mesh.
    ASSERT_TRUE(MGlobal::executeCommand("dagPose -r -g -bp j1"));
    const MPointArray skinned = WorldPoints("stripShape");
    const MPointArray original = WorldPoints("stripShapeOrig");
    ASSERT_EQ(skinned.length(), 4u);
    ASSERT_EQ(original.length(), 4u);
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_NEAR(skinned[i].x, original[i].x, 1e-3) << "vertex " << i;
        EXPECT_NEAR(skinned[i].y, original[i].y, 1e-3) << "vertex " << i;
        EXPECT_NEAR(skinned[i].z, original[i].z, 1e-3) << "vertex " << i;
    }
    EXPECT_NEAR(original[2].y, 200.0, 1e-3);
}

TEST(ImportGltfSkin, WeightsThatDoNotAddUpToOneAreNormalisedAndCounted)
{
    const ImportResult result = ImportGltf("skin_weights", SkinnedStrip(0.25f));
    ASSERT_TRUE(result.Ok) << result.Error;
    MDoubleArray weights;
    unsigned int influenceCount = 0;
    ASSERT_TRUE(MFnSkinCluster(standin::NodeByName("skinCluster1"))
                    .getWeights(standin::PathTo("stripShape"), MObject::kNullObj, weights, influenceCount));
    ASSERT_EQ(weights.length(), 8u);
    EXPECT_DOUBLE_EQ(weights[0], 1.0);
    ASSERT_EQ(result.Warnings.size(), 1u);
    EXPECT_EQ(result.Warnings[0].Text, "Skin weights that did not add up to one were normalised");
    EXPECT_EQ(result.Warnings[0].Count, 1);
}

TEST(ImportGltfSkin, AMeshBelowAJointIsBoundRigidlyToItWithEveryVertexAtFullWeight)
{
    const ImportResult result = ImportGltf("skin_rigid", SkinnedStrip(1.0f, true));
    ASSERT_TRUE(result.Ok) << result.Error;
    MItDependencyNodes clusters(MFn::kJointCluster);
    ASSERT_FALSE(clusters.isDone());
    const MFnWeightGeometryFilter cluster(clusters.thisNode());
    MPlugArray sources;
    ASSERT_TRUE(cluster.findPlug("matrix").connectedTo(sources, true, false));
    EXPECT_EQ(sources[0].node(), standin::NodeByName("j1"));
    MFloatArray weights;
    ASSERT_TRUE(cluster.getWeights(standin::PathTo("hatShape"), MObject::kNullObj, weights));
    ASSERT_EQ(weights.length(), 3u);
    for (unsigned int i = 0; i < 3; ++i)
        EXPECT_EQ(weights[i], 1.0f);
    clusters.next();
    EXPECT_TRUE(clusters.isDone());
    EXPECT_NEAR(WorldPoints("hatShape")[1].y, 100.0, 1e-9);
}

} // namespace
