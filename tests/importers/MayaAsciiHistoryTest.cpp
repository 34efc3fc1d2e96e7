// Shared scenes that keep a mesh Maya made from construction history beside a copy Maya stored as plain data, or
// a blend shape whose weight runs over its target: evaluating the history must give what Maya stored.

#include "importers/ImportScene.h"

#include "base/Path.h"

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
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
