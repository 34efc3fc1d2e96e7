// The Maya ASCII scenes of the shared set, as other people's Maya versions saved them. Some keep a mesh Maya made
// from construction history beside a copy Maya stored as plain data, or a blend shape whose weight runs over its
// target: evaluating the history must give what Maya stored.

#include "importers/ImportScene.h"

#include "base/Path.h"

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFloatArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMesh.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MIntArray.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MMatrix.h>
#include <maya/MPointArray.h>
#include <maya/MTime.h>
#include <standin/SceneBuilder.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace {

std::string SharedScene(const std::string& relative)
{
    return FromNativePath((std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / "maya_ascii" / relative).string());
}

bool HaveSharedScenes() { return std::filesystem::exists(KESTREL_SHARED_SCENES_DIR); }

unsigned int Count(MFn::Type type)
{
    unsigned int count = 0;
    for (MItDependencyNodes it(type); !it.isDone(); it.next())
        ++count;
    return count;
}

unsigned int MeshesWithFaces()
{
    unsigned int count = 0;
    for (MItDependencyNodes it(MFn::kMesh); !it.isDone(); it.next())
        count += MFnMesh(it.thisNode()).numPolygons() > 0 ? 1 : 0;
    return count;
}

struct SceneFacts {
    const char* File;
    unsigned int Meshes;          // mesh shapes, intermediate ones included
    unsigned int MeshesWithFaces; // those with geometry of their own or from their history (one of
                                  // blendShapesExport's is deformed by a nonLinear node, which is not evaluated)
    unsigned int Joints;
    unsigned int Skins;
    unsigned int Curves;
    size_t Clips;
};

void PrintTo(const SceneFacts& facts, std::ostream* out) { *out << facts.File; }

class MayaAsciiSharedScene : public ::testing::TestWithParam<SceneFacts> {};

TEST_P(MayaAsciiSharedScene, LoadsWithItsNodesAndGeometry)
{
    if (!HaveSharedScenes())
        GTEST_SKIP() << "the shared scenes are not on this machine";
    const SceneFacts& facts = GetParam();
    const ImportResult result = ImportScene(SharedScene(facts.File));
    ASSERT_TRUE(result.Ok) << result.Error;
    EXPECT_EQ(Count(MFn::kMesh), facts.Meshes);
    EXPECT_EQ(MeshesWithFaces(), facts.MeshesWithFaces);
    EXPECT_EQ(Count(MFn::kJoint), facts.Joints);
    EXPECT_EQ(Count(MFn::kSkinClusterFilter), facts.Skins);
    EXPECT_EQ(Count(MFn::kAnimCurve), facts.Curves);
    EXPECT_EQ(result.Clips.size(), facts.Clips);
}

INSTANTIATE_TEST_SUITE_P(
    Files, MayaAsciiSharedScene,
    ::testing::Values(SceneFacts{"maya2gltf/CubeGrid1.ma", 1, 1, 0, 0, 0, 0},
                      SceneFacts{"maya2gltf/FlatTetrahedron.ma", 1, 1, 0, 0, 0, 0},
                      SceneFacts{"maya2gltf/ExtremeNormalBakingTest.ma", 2, 2, 0, 0, 2, 0},
                      SceneFacts{"maya2gltf/CubeToSphereAnim.ma", 3, 3, 0, 0, 1, 0},
                      SceneFacts{"maya2gltf/SimpleQuadAnim1.ma", 3, 3, 0, 0, 11, 0},
                      SceneFacts{"maya2gltf/CubeNormalBakingRigTest.ma", 2, 2, 1, 1, 0, 0},
                      SceneFacts{"maya2gltf/ComplexAnim1.ma", 5, 5, 5, 1, 34, 6},
                      SceneFacts{"maya2gltf/DoubleMeshSkinWeldTestAnim.ma", 5, 5, 5, 2, 9, 0},
                      SceneFacts{"maya2gltf/InstancedCube1.ma", 1, 1, 0, 0, 0, 0},
                      SceneFacts{"maya-usd/UsdExportColorSetsTest.ma", 6, 6, 0, 0, 0, 0},
                      SceneFacts{"maya-usd/UsdExportDisplayColorTest.ma", 8, 8, 0, 0, 0, 0},
                      SceneFacts{"maya-usd/UsdExportTypeTest.ma", 2, 2, 0, 0, 0, 0},
                      SceneFacts{"maya-usd/UsdExportLightTest.ma", 0, 0, 0, 0, 14, 0},
                      SceneFacts{"maya-usd/bindTransformsExport.ma", 4, 4, 5, 2, 0, 0},
                      SceneFacts{"maya-usd/blendShapesExport.ma", 51, 50, 3, 3, 32, 0},
                      SceneFacts{"maya-usd/UsdExportUVSetMappingsTest/UsdExportUVSetMappingsTest.ma", 11, 11, 0, 0, 0,
                                 0},
                      SceneFacts{"maya-usd/UsdExportUVSetMappingsTest/multi_uv_simple.ma", 1, 1, 0, 0, 0, 0},
                      SceneFacts{"maya-usd/cube.ma", 1, 1, 0, 0, 0, 0},
                      SceneFacts{"babylonjs/SimpleTriangle.ma", 1, 1, 0, 0, 3, 0},
                      SceneFacts{"babylonjs/Std_Textures/Std_Textures.ma", 7, 7, 0, 0, 0, 0},
                      SceneFacts{"babylonjs/MultiMatOpacity.ma", 4, 4, 0, 0, 0, 0},
                      SceneFacts{"pymel/skel.ma", 0, 0, 67, 0, 0, 0}));

MMatrix BindPreMatrix(const char* skin, unsigned int index)
{
    return MFnMatrixData(MFnDependencyNode(standin::NodeByName(skin)).findPlug("bindPreMatrix").elementByLogicalIndex(index).asMObject())
        .matrix();
}

std::vector<double> Weights(const char* skin, const char* shape)
{
    MDoubleArray weights;
    unsigned int influences = 0;
    MFnSkinCluster(standin::NodeByName(skin)).getWeights(standin::PathTo(shape), MObject(), weights, influences);
    return std::vector<double>(&weights[0], &weights[0] + weights.length());
}

// The values below are read off the files themselves.
TEST(MayaAsciiSharedScenes, SkinsKeepTheBindMatricesAndWeightsTheFilesState)
{
    if (!HaveSharedScenes())
        GTEST_SKIP() << "the shared scenes are not on this machine";
    ASSERT_TRUE(ImportScene(SharedScene("maya-usd/bindTransformsExport.ma")).Ok);
    const MMatrix eye = BindPreMatrix("R_eye_skinCluster", 0);
    EXPECT_DOUBLE_EQ(eye(0, 2), -0.9998745177423547);
    EXPECT_DOUBLE_EQ(eye(3, 0), -5.3198075962727103);
    EXPECT_DOUBLE_EQ(eye(3, 2), -4.8657342992421899);
    EXPECT_DOUBLE_EQ(BindPreMatrix("L_eye_skinCluster", 0)(3, 2), 4.7066219248178127);
    const std::vector<double> eyeWeights = Weights("R_eye_skinCluster", "rtShape");
    EXPECT_EQ(eyeWeights, std::vector<double>(422, 1.0));

    ASSERT_TRUE(ImportScene(SharedScene("maya2gltf/DoubleMeshSkinWeldTestAnim.ma")).Ok);
    EXPECT_DOUBLE_EQ(BindPreMatrix("skinCluster2", 0)(0, 1), -1.0);
    const std::vector<double> weights = Weights("skinCluster2", "triShape2");
    ASSERT_EQ(weights.size(), 15u);
    EXPECT_EQ(std::vector<double>(weights.begin(), weights.begin() + 5),
              (std::vector<double>{0.019230769230769221, 0.48076923076923084, 0.48076923076923073, 0.019230769230769221, 0}));
    EXPECT_EQ(std::vector<double>(weights.begin() + 10, weights.end()), (std::vector<double>{0, 0, 0, 0.5, 0.5}));
}

// Maya saved the tangents its auto keys had: the curve evaluated from the key types follows the one those stored
// handles draw as fixed tangents.
TEST(MayaAsciiSharedScenes, AutoTangentsFollowTheHandlesMayaStored)
{
    if (!HaveSharedScenes())
        GTEST_SKIP() << "the shared scenes are not on this machine";
    ASSERT_TRUE(ImportScene(SharedScene("maya2gltf/ComplexAnim1.ma")).Ok);
    const MFnAnimCurve imported(standin::NodeByName("character_set_blendShape1_target5"));
    ASSERT_EQ(imported.outTangentType(2), MFnAnimCurve::kTangentAuto);
    const double frames[] = {1, 10, 20, 30, 40};
    const double values[] = {0, 1, 0, -1, 0};
    std::vector<standin::KeySpec> stored;
    for (size_t k = 0; k < 5; ++k) {
        const double x = k == 2 ? 0.38461538461538458 : 1.0;
        const double y = k == 2 ? -0.92307692307692313 : 0.0;
        stored.push_back({MTime(frames[k], MTime::kFilm), values[k], standin::TangentType::Fixed,
                          standin::TangentType::Fixed, x, y, x, y});
    }
    const MObject copy = standin::CreateNode("animCurveTU", "storedHandles");
    ASSERT_TRUE(standin::SetKeys(copy, stored));
    const MFnAnimCurve fixed(copy);
    for (double frame = 1.0; frame <= 40.0; frame += 0.5)
        EXPECT_NEAR(imported.evaluate(MTime(frame, MTime::kFilm)), fixed.evaluate(MTime(frame, MTime::kFilm)), 1e-12)
            << "frame " << frame;
}

void ExpectSamePoints(const std::string& actual, const std::string& expected)
{
    MPointArray a;
    MPointArray b;
    MFnMesh(standin::PathTo(actual)).getPoints(a);
    MFnMesh(standin::PathTo(expected)).getPoints(b);
    ASSERT_EQ(a.length(), b.length());
    for (unsigned int i = 0; i < a.length(); ++i)
        EXPECT_LT((a[i] - b[i]).length(), 1e-5) << actual << " vertex " << i;
}

struct StoredCopy {
    const char* File;
    const char* Evaluated; // made by history
    const char* Stored;    // the same primitive, saved as data
};

void PrintTo(const StoredCopy& pair, std::ostream* out) { *out << pair.File << " " << pair.Evaluated; }

class HistoryAgainstStoredMesh : public ::testing::TestWithParam<StoredCopy> {};

TEST_P(HistoryAgainstStoredMesh, GivesTheVerticesFacesAndUVsMayaStored)
{
    if (!HaveSharedScenes())
        GTEST_SKIP() << "the shared scenes are not on this machine";
    const StoredCopy& pair = GetParam();
    const ImportResult result = ImportScene(SharedScene(pair.File));
    ASSERT_TRUE(result.Ok) << result.Error;
    ExpectSamePoints(pair.Evaluated, pair.Stored);
    MFnMesh evaluated(standin::PathTo(pair.Evaluated));
    MFnMesh stored(standin::PathTo(pair.Stored));
    ASSERT_EQ(evaluated.numPolygons(), stored.numPolygons());
    for (int f = 0; f < stored.numPolygons(); ++f) {
        MIntArray a;
        MIntArray b;
        evaluated.getPolygonVertices(f, a);
        stored.getPolygonVertices(f, b);
        EXPECT_EQ(a.items(), b.items()) << "face " << f;
        for (unsigned int k = 0; k < b.length(); ++k) {
            int idA = -1;
            int idB = -1;
            evaluated.getPolygonUVid(f, static_cast<int>(k), idA);
            stored.getPolygonUVid(f, static_cast<int>(k), idB);
            EXPECT_EQ(idA, idB) << "face " << f << " corner " << k;
        }
    }
    MFloatArray uA;
    MFloatArray vA;
    MFloatArray uB;
    MFloatArray vB;
    evaluated.getUVs(uA, vA);
    stored.getUVs(uB, vB);
    ASSERT_EQ(uA.length(), uB.length());
    for (unsigned int i = 0; i < uB.length(); ++i) {
        EXPECT_NEAR(uA[i], uB[i], 1e-6) << "UV " << i;
        EXPECT_NEAR(vA[i], vB[i], 1e-6) << "UV " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(SharedScenes, HistoryAgainstStoredMesh,
                         ::testing::Values(StoredCopy{"babylonjs/MultiMatOpacity.ma", "pCubeShape1", "pCubeShape2"},
                                           StoredCopy{"babylonjs/MultiMatOpacity.ma", "pSphereShape1", "pSphereShape2"}));

TEST(HistoryInSharedScenes, BlendShapeWeightRunsTheCubeIntoItsTargetAndBack)
{
    // CubeToSphereAnim.ma keys the weight 0 at frame 1, 1 at frame 20 and 0 at frame 40.
    if (!HaveSharedScenes())
        GTEST_SKIP() << "the shared scenes are not on this machine";
    const ImportResult result = ImportScene(SharedScene("maya2gltf/CubeToSphereAnim.ma"));
    ASSERT_TRUE(result.Ok) << result.Error;
    MAnimControl::setCurrentTime(MTime(1.0, MTime::kFilm));
    ExpectSamePoints("pCubeShape1", "pCubeShape1Orig");
    MAnimControl::setCurrentTime(MTime(20.0, MTime::kFilm));
    ExpectSamePoints("pCubeShape1", "pCubeShape2");
}

} // namespace
