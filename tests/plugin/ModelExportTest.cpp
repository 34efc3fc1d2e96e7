// The model format end to end: a scene built as a Maya script would, exported through the
// "Zephra_Model_File" translator and read back from the written file.

#include "PluginFixture.h"
#include "TestScenes.h"

#include "formats/AnimationChunks.h"
#include "formats/AnimationFileReader.h"
#include "formats/LoadModel.h"
#include "formats/chunk/LastError.h"
#include "model/VMModel.h"
#include "model/Validate.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace {

using standin::CreateNode;
using standin::SetAttr;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;

class ModelExport : public PluginFixture {
protected:
    MStatus Export(const std::string& relative)
    {
        return standin::ExportFile("Zephra_Model_File", MayaName(relative), MPxFileTranslator::kExportAccessMode);
    }

    std::unique_ptr<VMModel> ReadModel(const std::string& relative)
    {
        auto model = std::make_unique<VMModel>();
        EXPECT_TRUE(LoadModel(*model, SystemPath(relative))) << LastError().Text;
        return model;
    }

    // Three quads in a row along x, from 0 to 3, skinned to the joints root (x 0) and mid (x 2);
    // mid carries the chain tip (x 3) and leaf (x 4), which no vertex follows.
    void AddSkinnedStrip()
    {
        const MObject root = CreateNode("joint", "root");
        const MObject mid = CreateNode("joint", "mid", root);
        SetAttr("mid.translate", 2, 0, 0);
        const MObject tip = CreateNode("joint", "tip", mid);
        SetAttr("tip.translate", 1, 0, 0);
        const MObject leaf = CreateNode("joint", "leaf", tip);
        SetAttr("leaf.translate", 1, 0, 0);

        const MObject transform = CreateNode("transform", "strip");
        standin::MeshDescription strip;
        for (int i = 0; i < 8; ++i)
            strip.points.emplace_back(i / 2, i % 2, 0);
        strip.counts = {4, 4, 4};
        strip.connects = {0, 2, 3, 1, 2, 4, 5, 3, 4, 6, 7, 5};
        const MObject shape = standin::CreateMesh("stripShape", transform, strip);
        AssignMaterial(shape, "skin");
        const std::vector<std::vector<double>> weights {{1, 0, 0, 0},     {1, 0, 0, 0},   {0.5, 0.5, 0, 0},
                                                        {0.5, 0.5, 0, 0}, {0.2, 0.8, 0, 0}, {0.2, 0.8, 0, 0},
                                                        {0, 1, 0, 0},     {0, 1, 0, 0}};
        ASSERT_FALSE(standin::SkinMesh(shape, {root, mid, tip, leaf}, weights).isNull());
    }
};

std::vector<std::string> BoneNames(const VMModel& model)
{
    std::vector<std::string> names;
    for (const VMBone* bone : model.Skeleton->Bones)
        names.push_back(bone->Name);
    return names;
}

TEST_F(ModelExport, ASkinnedStripBecomesAModelWithItsLiveBonesAndWeightsSummingToOne)
{
    AddSkinnedStrip();
    SetOptions("// ExportBones : TRUE\r\n");

    ASSERT_TRUE(Export("hero.model"));

    const auto read = ReadModel("hero.model");
    const VMModel& model = *read;
    EXPECT_THAT(Validate(model), IsEmpty());
    EXPECT_THAT(BoneNames(model), ElementsAre("root", "mid"));
    // Eight corners, none lost and none split: every quad corner has one UV and normal.
    EXPECT_EQ(model.Vertices.Count(), 8);
    EXPECT_EQ(model.Faces.Count(), 6);
    for (const VMSkinVertex* vertex : model.Vertices) {
        float sum = 0.0f;
        for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot)
            sum += vertex->InfluenceWeights[slot];
        EXPECT_NEAR(sum, 1.0f, 1e-5f);
    }
    // The pruned bones are named, leaf first: pruning climbs the chain.
    const auto pruned = std::find(Log.Messages.begin(), Log.Messages.end(), "Pruned bones:\r\n");
    ASSERT_NE(pruned, Log.Messages.end());
    EXPECT_THAT(std::vector<std::string>(pruned + 1, pruned + 4),
                ElementsAre("leaf\r\n", "tip\r\n", "Resorting bones...\r\n"));
}

TEST_F(ModelExport, RunsTheLogLinesOfEveryPhaseInOrder)
{
    AddSkinnedStrip();
    SetOptions("// ExportBones : TRUE\r\n// MeshFactor : 2\r\n// RotateYaw : 90\r\n");
    ASSERT_TRUE(Export("log.model"));

    const std::vector<std::string> phases {
        "Starting Model Export...\r\n", "Mesh harvesting phase...\r\n", "Limiting blended vertex influences...\r\n",
        "Removing dead bones...\r\n", "Pruned bones:\r\n", "Resorting bones...\r\n",
        "Calculating global visibility bounding box\r\n", "Pre-encoding vertices...\r\n", "Animation phase...\r\n", "Centering mesh...\r\n",
        "Scaling mesh...\r\n", "Encoding vertices...\r\n", "Calculating global visibility bounding box\r\n",
        "Calculating skeleton bounding boxes...\r\n", "Middle Enumeration...\r\n", "Optimizing mesh (1)...\r\n",
        "Adjusting animations...\r\n", "Sorting primitives...\r\n",
        "Calculating bone animation boundaries...\r\n", "Final enumeration...\r\n",
        "Saving model to '" + ShownPath(SystemPath("log.model")) + "'...\r\n", "Model saved: " + ShownPath(SystemPath("log.model")) + ".\r\n",
        "Finished\r\n"};
    auto from = Log.Messages.begin();
    for (const std::string& phase : phases) {
        from = std::find(from, Log.Messages.end(), phase);
        ASSERT_NE(from, Log.Messages.end()) << "missing or out of order: " << phase;
    }

    // Centred on the root bone, doubled, then turned a quarter about z: x goes to -y.
    const auto model = ReadModel("log.model");
    EXPECT_NEAR(model->Box.Min[1], -6.0f, 1e-4f);
    EXPECT_NEAR(model->Box.Max[1], 0.0f, 1e-4f);
    EXPECT_NEAR(model->Box.Max[0], 0.0f, 1e-4f);
}

// The strip's root walks 4 along x from frame 1 to 3 while mid bends a quarter turn about Maya's
// z; "walk" takes the walk out as root motion, "flex" records how far the skin moved from its
// pose at the first frame.
TEST_F(ModelExport, TheAnimationTableIsSampledIntoTheAnimationFileBesideTheModel)
{
    AddSkinnedStrip();
    const auto key = [](double frame, double value) {
        return standin::KeySpec {MTime(frame, MTime::kFilm), value, standin::TangentType::Linear,
                                 standin::TangentType::Linear};
    };
    standin::Animate("root.translateX", {key(1, 0), key(3, 4)});
    standin::Animate("mid.rotateZ", {key(1, 0), key(3, std::acos(0.0))});
    standin::SetPlaybackRange(MTime(1.0, MTime::kFilm), MTime(3.0, MTime::kFilm));
    SetOptions("// ExportBones : TRUE\r\n// NumAnimations: 2\r\n"
               "// Animation: walk\r\n// AnimType: 3\r\n// UseMaxFrames: 0\r\n// AnimMotionDelta: 1\r\n"
               "// AnimMovY: 0\r\n// AnimMovZ: 0\r\n"
               "// Animation: flex\r\n// AnimType: 2\r\n// UseMaxFrames: 0\r\n");

    ASSERT_TRUE(Export("hero.model"));
    EXPECT_TRUE(Log.Has("Animation saved: " + ShownPath(SystemPath("hero.anim")) + ".\r\n"));

    VAnimationFile file;
    ASSERT_TRUE(ReadAnimationFile(SystemPath("hero.anim"), file)) << LastError().Text;
    ASSERT_EQ(file.Animations.size(), 2u);
    const VAnimFileAnimation& walk = file.Animations[0];
    EXPECT_EQ(walk.Name, "walk");
    EXPECT_THAT(walk.Chunks, ElementsAre(ChunkVSBX, ChunkODTA, ChunkBPOS, ChunkBROT));
    ASSERT_EQ(walk.Offsets.KeyCount(), 3);
    for (int k = 0; k < 3; ++k) {
        EXPECT_NEAR(walk.Offsets.Key(k)[0], 2.0f * k, 1e-4f) << k;
        // The root stays where it started; mid keeps its place on the root and turns about the
        // root's z, which is Maya's.
        EXPECT_NEAR(walk.Positions.Key(k)[3], 2.0f, 1e-4f) << k;
        EXPECT_NEAR(walk.Positions.Key(k)[0], 0.0f, 1e-4f) << k;
    }
    EXPECT_NEAR(walk.Rotations.Key(2)[4 + 2], std::sqrt(0.5f), 1e-4f);
    EXPECT_NEAR(walk.Positions.Times[2], 2.0f / 24.0f, 1e-6f);

    const VAnimFileAnimation& flex = file.Animations[1];
    EXPECT_EQ(flex.Name, "flex");
    EXPECT_EQ(flex.VertexCount, 8);
    ASSERT_EQ(flex.Deltas.size(), 3u);
    EXPECT_THAT(flex.Deltas[0], IsEmpty());
    ASSERT_EQ(flex.Deltas[2].size(), 8u);
    // Vertex 0 follows the root alone, and the delta in the root's space keeps Maya's x as x.
    EXPECT_THAT(flex.Deltas[2][0].Position, ElementsAre(FloatNear(4.0f, 1e-4f), FloatNear(0.0f, 1e-4f),
                                                        FloatNear(0.0f, 1e-4f)));
}

TEST_F(ModelExport, WithoutBlendingEveryVertexFollowsOneBoneFully)
{
    AddSkinnedStrip();
    SetOptions("// ExportBones : TRUE\r\n// ExportBlended : 0\r\n// MaxNumBones : 3\r\n");

    ASSERT_TRUE(Export("rigid.model"));

    const auto model = ReadModel("rigid.model");
    for (const VMSkinVertex* vertex : model->Vertices) {
        ASSERT_EQ(vertex->InfluenceCount, 1u);
        EXPECT_EQ(vertex->InfluenceWeights[0], 1.0f);
    }
}

TEST_F(ModelExport, ASceneWithoutJointsIsABonelessModelAndSaysSoWhenBonesWereAsked)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");

    ASSERT_TRUE(Export("plain.model"));
    auto model = ReadModel("plain.model");
    EXPECT_EQ(model->Skeleton, nullptr);
    EXPECT_EQ(model->Faces.Count(), 12);
    EXPECT_TRUE(Report.Entries.empty());

    SetOptions("// ExportBones : TRUE\r\n");
    ASSERT_TRUE(Export("plain.model"));
    model = ReadModel("plain.model");
    EXPECT_EQ(model->Skeleton, nullptr);
    EXPECT_EQ(model->Faces.Count(), 12);
    EXPECT_NE(Report.Find("No bones found in animation"), nullptr);
}

TEST_F(ModelExport, ASkeletonWithoutMeshLosesEveryBoneAndStillWritesAModel)
{
    CreateNode("joint", "b", CreateNode("joint", "a"));
    SetOptions("// ExportBones : TRUE\r\n");
    // A batch export files errors only; this is a warning.
    standin::SetInteractive(true);
    const MStatus exported = Export("bare.model");
    standin::SetInteractive(false);

    ASSERT_TRUE(exported);
    EXPECT_NE(Report.Find("Bone animation with all bones eliminated"), nullptr);
    EXPECT_NE(Report.Find("Empty scene"), nullptr);
    EXPECT_TRUE(Log.Has("b\r\n"));
    EXPECT_EQ(ReadModel("bare.model")->Vertices.Count(), 0);
}

} // namespace
