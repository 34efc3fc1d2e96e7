// Skinned shared scenes of every source format exported as models: the bind-pose mesh must sit on
// its skeleton, the written vertices skinned with the written bind matrices must land where the
// scene's own skin puts the mesh and cover all of it, and every joint left out is named in the log.

#include "kestrel/ExportCommand.h"

#include "base/Path.h"
#include "formats/LoadModel.h"
#include "formats/chunk/LastError.h"
#include "harvest/BoneMatrix.h"
#include "importers/ImportScene.h"
#include "model/VMModel.h"
#include "tests/UniqueTempFolder.h"
#include "tests/kestrel/CapturedRun.h"

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectArray.h>
#include <maya/MItDag.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

using Point = std::array<float, 3>;

struct Box {
    Point Min {std::numeric_limits<float>::max(), std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    Point Max {-std::numeric_limits<float>::max(), -std::numeric_limits<float>::max(),
               -std::numeric_limits<float>::max()};

    void Grow(const float* p)
    {
        for (int a = 0; a < 3; ++a) {
            Min[a] = std::min(Min[a], p[a]);
            Max[a] = std::max(Max[a], p[a]);
        }
    }
    float Diagonal() const { return std::hypot(Max[0] - Min[0], Max[1] - Min[1], Max[2] - Min[2]); }
    bool Holds(const float* p, float margin) const
    {
        for (int a = 0; a < 3; ++a)
            if (p[a] < Min[a] - margin || p[a] > Max[a] + margin)
                return false;
        return true;
    }
};

float Distance(const float* a, const float* b) { return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]); }

// Drawn in the viewport: no intermediate shape, nothing hidden above it.
bool Shown(MDagPath path)
{
    if (MFnDagNode(path).isIntermediateObject())
        return false;
    for (; path.length() > 0; path.pop())
        if (!MFnDagNode(path).findPlug("visibility", true).asBool())
            return false;
    return true;
}

MMatrix GeomMatrix(const MFnSkinCluster& skin)
{
    MObject data;
    skin.findPlug("geomMatrix", true).getValue(data);
    return data.isNull() ? MMatrix() : MFnMatrixData(data).matrix();
}

// Every point of the scene's visible skinned meshes where their skin puts them now, in the model's
// axes: the skin works where the shape was bound, and a further instance of the shape stands beside
// the first as Maya shows them.
std::vector<Point> SkinnedScenePoints()
{
    std::vector<std::pair<MObject, MMatrix>> boundAt; // each skinned shape with its geomMatrix
    for (MItDependencyNodes it(MFn::kSkinClusterFilter); !it.isDone(); it.next()) {
        const MFnSkinCluster skin(it.thisNode());
        MObjectArray outputs;
        skin.getOutputGeometry(outputs);
        for (unsigned int i = 0; i < outputs.length(); ++i)
            boundAt.emplace_back(outputs[i], GeomMatrix(skin));
    }
    std::vector<Point> points;
    for (MItDag it(MItDag::kDepthFirst, MFn::kMesh); !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        const auto bound = std::find_if(boundAt.begin(), boundAt.end(),
                                        [&](const auto& shape) { return shape.first == path.node(); });
        if (!Shown(path) || bound == boundAt.end())
            continue;
        MDagPath first;
        MDagPath::getAPathTo(path.node(), first);
        const MMatrix placement = bound->second * first.inclusiveMatrixInverse() * path.inclusiveMatrix();
        for (MItMeshVertex vertex(path, MObject::kNullObj); !vertex.isDone(); vertex.next()) {
            const MPoint p = vertex.position(MSpace::kObject) * placement;
            points.push_back({static_cast<float>(p.x), static_cast<float>(-p.z), static_cast<float>(p.y)});
        }
    }
    return points;
}

// The joint's world matrix in the scene now, as the exporter turns joint matrices into bones.
VMTransform PoseOf(const VMBone& bone)
{
    MSelectionList list;
    MDagPath path;
    if (!list.add(MString(bone.Name.c_str())) || !list.getDagPath(0, path))
        ADD_FAILURE() << "no joint " << bone.Name << " in the scene";
    return BoneMatrix(path, false);
}

class SkinnedModelExport : public ::testing::Test {
protected:
    SkinnedModelExport() { setenv("XDG_CONFIG_HOME", m_folder.Native("config").c_str(), 1); }

    // Exports the shared scene as a model left where the file puts it, dead bones pruned, and reads the
    // model back.
    void Export(const char* relativePath, VMModel& model)
    {
        const std::filesystem::path scene = std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / relativePath;
        if (!std::filesystem::exists(scene))
            GTEST_SKIP() << "the shared scenes are not on this machine";
        ExportRequest request;
        request.Scene = scene.string();
        request.Target = m_folder.Native("skinned.model").string();
        request.Settings = {"CenterMethod=0", "ExportBones=1", "RemoveBones=1"};
        request.Progress = false;
        const auto load = [](const std::string& path) { return ImportScene(path); };
        ASSERT_EQ(m_run.Run([&](std::FILE* out, std::FILE* err) { return RunExport(request, load, out, err); }), 0)
            << m_run.Err;
        ASSERT_TRUE(LoadModel(model, FromNativePath(request.Target))) << LastError().Text;
        ASSERT_TRUE(model.Skeleton);
        ASSERT_GT(model.Vertices.Count(), 0);
    }

    // The names the log lists under "Pruned bones:".
    std::set<std::string> PrunedBones() const
    {
        std::set<std::string> names;
        std::istringstream log(m_run.Out + m_run.Err);
        bool listing = false;
        for (std::string line; std::getline(log, line);) {
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            if (line == "Resorting bones...")
                listing = false;
            if (listing)
                names.insert(line);
            if (line == "Pruned bones:")
                listing = true;
        }
        return names;
    }

private:
    UniqueTempFolder m_folder {"kestrel_skinned"};
    CapturedRun m_run;
};

class SkinnedSceneModel : public SkinnedModelExport, public ::testing::WithParamInterface<const char*> {};
// Characters whose joints all stand inside their mesh.
class SkinnedCharacter : public SkinnedSceneModel {};

// The file's two joints share one inverse bind matrix, a move by (-0.5, -1, 0) metres; its skinned
// mesh's node is the scene root, so no transform stands between the mesh and its joints.
TEST_F(SkinnedModelExport, GltfBindMatricesInvertTheFilesInverseBindMatrices)
{
    VMModel model;
    Export("gltf/SimpleSkin/SimpleSkin.gltf", model);
    if (IsSkipped() || HasFatalFailure())
        return;
    ASSERT_EQ(model.Skeleton->Bones.Count(), 2);
    // Unturned joints at Maya's (50, 100, 0) centimetres, in the model's axes (x, -z, y): Maya's y axis
    // is the model's z, Maya's z the model's -y.
    const float expected[12] = {1, 0, 0, 0, 0, 1, 0, -1, 0, 50, 0, 100};
    for (const VMBone* bone : model.Skeleton->Bones)
        for (int i = 0; i < 12; ++i)
            EXPECT_NEAR(bone->GlobalTransform.M[i], expected[i], 1e-4f) << bone->Name << " element " << i;
}

TEST_P(SkinnedCharacter, BindPoseMeshWrapsItsJoints)
{
    VMModel model;
    Export(GetParam(), model);
    if (IsSkipped() || HasFatalFailure())
        return;
    Box mesh;
    for (const VMSkinVertex* vertex : model.Vertices)
        mesh.Grow(vertex->Position);
    Box joints;
    for (const VMBone* bone : model.Skeleton->Bones)
        joints.Grow(bone->GlobalTransform.Translation());

    const float margin = 0.1f * mesh.Diagonal();
    for (const VMBone* bone : model.Skeleton->Bones)
        EXPECT_TRUE(mesh.Holds(bone->GlobalTransform.Translation(), margin)) << bone->Name;
    EXPECT_LT(mesh.Diagonal(), 3.0f * joints.Diagonal());
}

// Every vertex of the model skinned with the written bind matrices to the joints' pose in the scene now.
std::vector<Point> PosedVertices(const VMModel& model)
{
    std::vector<VMTransform> skinning;
    for (const VMBone* bone : model.Skeleton->Bones) {
        VMTransform inverseBind;
        EXPECT_TRUE(Invert(bone->GlobalTransform, inverseBind)) << bone->Name;
        skinning.push_back(PoseOf(*bone) * inverseBind);
    }
    std::vector<Point> posed;
    for (const VMSkinVertex* vertex : model.Vertices) {
        Point sum {0.0f, 0.0f, 0.0f};
        for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot) {
            float moved[3];
            skinning[vertex->InfluenceBones[slot]->Index].TransformPoint(vertex->Position, moved);
            for (int a = 0; a < 3; ++a)
                sum[a] += vertex->InfluenceWeights[slot] * moved[a];
        }
        posed.push_back(sum);
    }
    return posed;
}

// The farthest any point of the first set lies from its nearest point of the second.
float FarthestFromNearest(const std::vector<Point>& from, const std::vector<Point>& to)
{
    float worst = 0.0f;
    for (const Point& p : from) {
        float nearest = std::numeric_limits<float>::max();
        for (const Point& q : to)
            nearest = std::min(nearest, Distance(p.data(), q.data()));
        worst = std::max(worst, nearest);
    }
    return worst;
}

float Tolerance(const std::vector<Point>& points)
{
    Box box;
    for (const Point& p : points)
        box.Grow(p.data());
    return 1e-3f * box.Diagonal();
}

TEST_P(SkinnedSceneModel, WrittenSkinPosedLikeTheSceneGivesTheScenesSkinnedMeshesAndAllOfThem)
{
    VMModel model;
    Export(GetParam(), model);
    if (IsSkipped() || HasFatalFailure())
        return;
    const std::vector<Point> posed = PosedVertices(model);
    // Vertices of meshes without a skin ride on the root bone, where the scene leaves them in place.
    std::vector<Point> skinned;
    for (int v = 0; v < model.Vertices.Count(); ++v) {
        const VMSkinVertex& vertex = *model.Vertices[v];
        if (vertex.InfluenceCount != 1 || vertex.InfluenceBones[0] != model.Skeleton->GetRootBone())
            skinned.push_back(posed[static_cast<size_t>(v)]);
    }
    const std::vector<Point> scene = SkinnedScenePoints();
    ASSERT_FALSE(scene.empty());
    const float tolerance = Tolerance(scene);
    EXPECT_LE(FarthestFromNearest(skinned, scene), tolerance) << "a written vertex lies off the scene's mesh";
    EXPECT_LE(FarthestFromNearest(scene, posed), tolerance) << "a vertex of the scene is missing from the model";
}

TEST_P(SkinnedSceneModel, EveryJointIsABoneOrListedAsPrunedAndNoLeafBoneIsLeftWithoutVertices)
{
    VMModel model;
    Export(GetParam(), model);
    if (IsSkipped() || HasFatalFailure())
        return;
    std::set<std::string> joints;
    for (MItDag it(MItDag::kDepthFirst, MFn::kJoint); !it.isDone(); it.next())
        joints.insert(MFnDagNode(it.currentItem()).name().asChar());
    const std::set<std::string> pruned = PrunedBones();
    std::map<const VMBone*, int> moved;
    for (const VMSkinVertex* vertex : model.Vertices)
        for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot)
            ++moved[vertex->InfluenceBones[slot]];
    std::set<std::string> accounted = pruned;
    for (const VMBone* bone : model.Skeleton->Bones) {
        EXPECT_FALSE(pruned.count(bone->Name)) << bone->Name << " is written and listed as pruned";
        EXPECT_TRUE(!bone->Children.IsEmpty() || moved[bone] > 0) << bone->Name << " is a dead bone left in";
        accounted.insert(bone->Name);
    }
    EXPECT_EQ(accounted, joints);
}

// The skin clusters of an FBX file stored as text, read here apart from any importer.
struct FbxCluster {
    std::string Joint;
    double TransformLink[16];
};

std::vector<FbxCluster> ReadFbxClusters(const std::filesystem::path& path)
{
    std::ifstream file(path);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::map<std::string, std::string> modelNames;
    const std::regex model(R"re(Model: (\d+), "Model::([^"]+)")re");
    for (std::sregex_iterator it(text.begin(), text.end(), model), end; it != end; ++it)
        modelNames[(*it)[1]] = (*it)[2];
    std::map<std::string, std::string> linkOfCluster; // cluster id to the id of the model it links to
    const std::regex connection(R"re(C: "OO",(\d+),(\d+))re");
    for (std::sregex_iterator it(text.begin(), text.end(), connection), end; it != end; ++it)
        if (modelNames.count((*it)[1]))
            linkOfCluster[(*it)[2]] = (*it)[1];
    std::vector<FbxCluster> clusters;
    const std::regex cluster(R"re(Deformer: (\d+), "SubDeformer::", "Cluster")re");
    for (std::sregex_iterator it(text.begin(), text.end(), cluster), end; it != end; ++it) {
        FbxCluster found;
        found.Joint = modelNames[linkOfCluster[(*it)[1]]];
        const size_t link = text.find("TransformLink: *16", static_cast<size_t>(it->position()));
        std::istringstream numbers(text.substr(text.find("a:", link) + 2));
        char comma = 0;
        for (int i = 0; i < 16; ++i)
            numbers >> found.TransformLink[i] >> comma;
        clusters.push_back(found);
    }
    return clusters;
}

// A cluster's TransformLink is its joint's world matrix at binding, in centimetres with y up like
// Maya's: in the model's axes (x, -z, y) its rows must be the bone's bind matrix.
TEST_F(SkinnedModelExport, FbxBindMatricesAreTheClustersTransformLinks)
{
    const char* scene = "fbx/ufbx/maya_game_sausage_7500_ascii_spin.fbx";
    VMModel model;
    Export(scene, model);
    if (IsSkipped() || HasFatalFailure())
        return;
    const std::vector<FbxCluster> clusters =
        ReadFbxClusters(std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / scene);
    ASSERT_EQ(clusters.size(), 3u);
    for (const FbxCluster& cluster : clusters) {
        const VMBone* bone = nullptr;
        for (const VMBone* candidate : model.Skeleton->Bones)
            if (candidate->Name == cluster.Joint)
                bone = candidate;
        ASSERT_TRUE(bone) << "no bone " << cluster.Joint;
        for (int row = 0; row < 4; ++row) {
            const double* m = cluster.TransformLink + 4 * row;
            const double expected[3] = {m[0], -m[2], m[1]};
            for (int a = 0; a < 3; ++a)
                EXPECT_NEAR(bone->GlobalTransform.M[3 * row + a], expected[a], 1e-4) << bone->Name << " row " << row;
        }
    }
}

std::string TestName(const ::testing::TestParamInfo<const char*>& param)
{
    std::string name = std::filesystem::path(param.param).stem().string();
    std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
    return name;
}

INSTANTIATE_TEST_SUITE_P(EachSourceFormat, SkinnedCharacter,
                         ::testing::Values("gltf/CesiumMan/CesiumMan.gltf",
                                           "fbx/ufbx/maya_kenney_character_7700_binary.fbx",
                                           "collada/cts/skin_2_influence/skin_2_influence.dae",
                                           "maya_ascii/maya2gltf/ComplexAnim1.ma"),
                         TestName);

// Every shared scene whose file holds a skin.
INSTANTIATE_TEST_SUITE_P(EachSkinnedScene, SkinnedSceneModel,
                         ::testing::Values("gltf/CesiumMan/CesiumMan.gltf", "gltf/Fox/Fox.glb",
                                           "gltf/SimpleSkin/SimpleSkin.gltf",
                                           "fbx/ufbx/maya_kenney_character_7700_binary.fbx",
                                           "fbx/ufbx/maya_game_sausage_7500_binary_wiggle.fbx",
                                           "fbx/ufbx/maya_game_sausage_7500_ascii_spin.fbx",
                                           "fbx/ufbx/maya_instanced_skin_7700_binary.fbx",
                                           "fbx/assimp/animation_with_skeleton.fbx",
                                           "collada/cts/skin_2_influence/skin_2_influence.dae",
                                           "maya_ascii/maya2gltf/ComplexAnim1.ma",
                                           "maya_ascii/maya2gltf/DoubleMeshSkinWeldTestAnim.ma",
                                           "maya_ascii/maya2gltf/CubeNormalBakingRigTest.ma",
                                           "maya_ascii/maya-usd/blendShapesExport.ma",
                                           "maya_ascii/maya-usd/bindTransformsExport.ma"),
                         TestName);

} // namespace
