// Skinned shared scenes of every source format exported as models: the bind-pose mesh must sit on
// its skeleton, and the written vertices skinned with the written bind matrices must land where
// the scene's own skin puts the mesh.

#include "kestrel/ExportCommand.h"

#include "base/Path.h"
#include "formats/LoadModel.h"
#include "formats/chunk/LastError.h"
#include "harvest/BoneMatrix.h"
#include "importers/ImportScene.h"
#include "model/VMModel.h"
#include "tests/UniqueTempFolder.h"

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>
#include <maya/MItMeshVertex.h>
#include <maya/MSelectionList.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
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

// Every point of the scene's visible meshes as the scene shows them now, in the model's axes.
std::vector<Point> ScenePoints()
{
    std::vector<Point> points;
    for (MItDag it(MItDag::kDepthFirst, MFn::kMesh); !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        if (MFnDagNode(path).isIntermediateObject())
            continue;
        for (MItMeshVertex vertex(path, MObject::kNullObj); !vertex.isDone(); vertex.next()) {
            const MPoint p = vertex.position(MSpace::kWorld);
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

    // Exports the shared scene as a model left where the file puts it and reads the model back.
    void Export(const char* relativePath, VMModel& model)
    {
        const std::filesystem::path scene = std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / relativePath;
        if (!std::filesystem::exists(scene))
            GTEST_SKIP() << "the shared scenes are not on this machine";
        ExportRequest request;
        request.Scene = scene.string();
        request.Target = m_folder.Native("skinned.model").string();
        request.Settings = {"CenterMethod=0", "ExportBones=1"};
        const auto load = [](const std::string& path) { return ImportScene(path); };
        std::FILE* out = std::tmpfile();
        std::FILE* err = std::tmpfile();
        const int code = RunExport(request, load, out, err);
        std::fclose(out);
        std::fclose(err);
        ASSERT_EQ(code, 0);
        ASSERT_TRUE(LoadModel(model, FromNativePath(request.Target))) << LastError().Text;
        ASSERT_TRUE(model.Skeleton);
        ASSERT_GT(model.Vertices.Count(), 0);
    }

private:
    UniqueTempFolder m_folder {"kestrel_skinned"};
};

class SkinnedSceneModel : public SkinnedModelExport, public ::testing::WithParamInterface<const char*> {};

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

TEST_P(SkinnedSceneModel, BindPoseMeshWrapsItsJoints)
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

TEST_P(SkinnedSceneModel, WrittenSkinPosedLikeTheSceneGivesTheScenesMesh)
{
    VMModel model;
    Export(GetParam(), model);
    if (IsSkipped() || HasFatalFailure())
        return;
    std::vector<VMTransform> skinning;
    for (const VMBone* bone : model.Skeleton->Bones) {
        VMTransform inverseBind;
        ASSERT_TRUE(Invert(bone->GlobalTransform, inverseBind)) << bone->Name;
        skinning.push_back(PoseOf(*bone) * inverseBind);
    }
    const std::vector<Point> scene = ScenePoints();
    ASSERT_FALSE(scene.empty());
    Box box;
    for (const Point& p : scene)
        box.Grow(p.data());
    const float tolerance = 1e-3f * box.Diagonal();

    // A few hundred vertices spread over the model decide it; each must land on a point of the scene.
    const int count = model.Vertices.Count();
    const int step = std::max(1, count / 300);
    float worst = 0.0f;
    for (int v = 0; v < count; v += step) {
        const VMSkinVertex& vertex = *model.Vertices[v];
        float posed[3] = {0.0f, 0.0f, 0.0f};
        for (uint32_t slot = 0; slot < vertex.InfluenceCount; ++slot) {
            float moved[3];
            skinning[vertex.InfluenceBones[slot]->Index].TransformPoint(vertex.Position, moved);
            for (int a = 0; a < 3; ++a)
                posed[a] += vertex.InfluenceWeights[slot] * moved[a];
        }
        float nearest = std::numeric_limits<float>::max();
        for (const Point& p : scene)
            nearest = std::min(nearest, Distance(posed, p.data()));
        worst = std::max(worst, nearest);
    }
    EXPECT_LE(worst, tolerance);
}

INSTANTIATE_TEST_SUITE_P(EachSourceFormat, SkinnedSceneModel,
                         ::testing::Values("gltf/CesiumMan/CesiumMan.gltf",
                                           "fbx/ufbx/maya_kenney_character_7700_binary.fbx",
                                           "collada/cts/skin_2_influence/skin_2_influence.dae",
                                           "maya_ascii/maya2gltf/ComplexAnim1.ma"),
                         [](const ::testing::TestParamInfo<const char*>& param) {
                             return std::string(std::array<const char*, 4> {"Gltf", "Fbx", "Collada",
                                                                            "MayaAscii"}[param.index]);
                         });

} // namespace
