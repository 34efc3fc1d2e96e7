#include "GoldenBytes.h"

#include "formats/DescribeModel.h"
#include "formats/LoadModel.h"
#include "formats/ModelChunks.h"
#include "formats/SaveModel.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VMemoryStreamProvider.h"
#include "model/Validate.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char Target[] = "C:\\art\\hero.model";

class ModelFileTest : public testing::Test {
protected:
    std::string Save(VMModel& model, uint32_t flags = 0)
    {
        VSaveParams params;
        params.Flags = flags;
        params.Streams = &streams;
        EXPECT_TRUE(SaveModel(model, Target, params)) << LastError().Text;
        const std::string* bytes = streams.FindFile(Target);
        return bytes ? *bytes : std::string();
    }

    // A triangle (0,0,0) (1,0,0) (0,1,0) facing +z with one material.
    void AddTriangle(VMModel& model)
    {
        VMMaterial* skin = AddModelMaterial(model, "skin");
        for (int i = 0; i < 3; ++i) {
            VMSkinVertex* v = AddSkinVertex(model, i == 1 ? 1.0f : 0.0f, i == 2 ? 1.0f : 0.0f, 0);
            v->Normal[2] = 1;
            v->Tangent[0] = 1;
            v->BaseUV[0] = v->Position[0];
            v->BaseUV[1] = v->Position[1];
        }
        AddFace(model, {model.Vertices[0], model.Vertices[1], model.Vertices[2]}, skin);
    }

    VMemoryStreamProvider streams;
};

// Position, normal, tangent, base UV, second UV of the triangle's corner i.
GoldenBytes CornerFields(int i)
{
    const float x = i == 1 ? 1.0f : 0.0f;
    const float y = i == 2 ? 1.0f : 0.0f;
    return GoldenBytes().F32({x, y, 0, 0, 0, 1, 1, 0, 0, x, y, 0, 0});
}

TEST_F(ModelFileTest, AModelWithoutSkeletonHoldsGeometryAndBoundsOnly)
{
    VMModel model;
    AddTriangle(model);

    GoldenBytes vertices;
    for (int i = 0; i < 3; ++i)
        vertices.Bytes(CornerFields(i).Str()).F32({1.0f}).I32(-1)   // skin values without bones
                .I32(-1);                                           // no ID link
    const GoldenBytes expected = GoldenBytes().FileHeader()
        .Chunk(0, ChunkMODL, GoldenBytes()
            .U16(0)                                                 // version
            .Chunk(1, ChunkGEOM, GoldenBytes()
                .U16(0)
                .I32(1).Bytes(DefaultMaterialChunk("skin", 2).Str())
                .I32(3).U16(0x031F).Bytes(vertices.Str())
                .I32(1).I32s({0, 1, 2}).U16(0))                     // triangle, material 0
            .Chunk(1, ChunkBNDS, GoldenBytes()
                .F32({0, 0, 0, 1, 1, 0})                            // the box, grown from the vertices
                .F32({0, 0, 0, std::sqrt(2.0f)})                    // sphere
                .F32({0, 0, 0, 1, 1, 0})))                          // collision box: the box
        .FileEnd();
    EXPECT_EQ(Save(model), expected.Str());
}

TEST_F(ModelFileTest, AModelWithSkeletonHoldsEveryChunkInOrder)
{
    VMModel model;
    AddTriangle(model);
    VMBone* root = AddBone(model, "root");
    VMBone* tip = AddBone(model, "tip", root);
    SetTranslation(root->GlobalTransform, 0, 0, 1);
    SetTranslation(root->LocalTransform, 0, 0, 1);
    SetTranslation(tip->GlobalTransform, 0, 0, 3);
    SetTranslation(tip->LocalTransform, 0, 0, 2);
    root->Box = {{0, 0, -1}, {1, 0, -1}};
    tip->Box = {{0, 1, -3}, {0, 1, -3}};
    AttachVertex(root, model.Vertices[0], 1.0f);
    AttachVertex(root, model.Vertices[1], 0.25f);
    AttachVertex(tip, model.Vertices[1], 0.75f);
    AttachVertex(tip, model.Vertices[2], 1.0f);
    model.Vertices[2]->IdLink = model.Vertices[0];
    model.Box = {{0, 0, 0}, {1, 1, 0}};
    model.CollisionBox = {{-1, -1, -1}, {2, 2, 2}};

    const GoldenBytes expected = GoldenBytes().FileHeader()
        .Chunk(0, ChunkMODL, GoldenBytes()
            .U16(0)
            .Chunk(1, ChunkSKEL, GoldenBytes()
                .U16(0).U16(2)
                .Str("root").U16(65535)                             // no parent
                .F32({0, 0, -1, 0, 0, 0, 1})                        // inverse global: translation, quaternion
                .F32({0, 0, 1, 0, 0, 0, 1})                         // local
                .Str("tip").U16(0)
                .F32({0, 0, -3, 0, 0, 0, 1})
                .F32({0, 0, 2, 0, 0, 0, 1})
                .U16(0))                                            // trailer
            .Chunk(1, ChunkGEOM, GoldenBytes()
                .U16(0)
                .I32(1).Bytes(DefaultMaterialChunk("skin", 2).Str())
                .I32(3).U16(0x031F)
                .Bytes(CornerFields(0).Str()).F32({1.0f}).I32(0).I32(-1)      // strongest weight, its bone
                .Bytes(CornerFields(1).Str()).F32({0.75f}).I32(1).I32(-1)
                .Bytes(CornerFields(2).Str()).F32({1.0f}).I32(1).I32(0)       // ID link to vertex 0
                .I32(1).I32s({0, 1, 2}).U16(0))
            .Chunk(1, ChunkWGHT, GoldenBytes()
                .I32(4)
                .I32(0).U16(0).F32({1.0f})
                .I32(1).U16(1).F32({0.75f})                         // strongest first
                .I32(1).U16(0).F32({0.25f})
                .I32(2).U16(1).F32({1.0f}))
            .Chunk(1, ChunkBBBX, GoldenBytes()
                .U16(2).F32({0, 0, -1, 1, 0, -1}).F32({0, 1, -3, 0, 1, -3}))
            .Chunk(1, ChunkCBPR, GoldenBytes()
                .U16(2).Str("").Str(""))
            .Chunk(1, ChunkBNDS, GoldenBytes()
                .F32({0, 0, 0, 1, 1, 0}).F32({0, 0, 0, std::sqrt(2.0f)}).F32({-1, -1, -1, 2, 2, 2})))
        .FileEnd();
    EXPECT_EQ(Save(model), expected.Str());
}

void ExpectNear(const float* a, const float* b, int count)
{
    for (int i = 0; i < count; ++i)
        EXPECT_NEAR(a[i], b[i], 1e-5f) << "component " << i;
}

TEST_F(ModelFileTest, TheModelReadBackEqualsTheModelWritten)
{
    VMModel written;
    written.HasColours = 1;
    written.HasSecondUV = 1;
    written.HasTangents = 1;
    AddTriangle(written);
    AddModelMaterial(written, "cloth")->DiffuseTexture = "cloth.dds";
    VMSkinVertex* extra = AddSkinVertex(written, 4, 5, 6);
    extra->Colour[0] = 10;
    extra->Colour[2] = 30;
    extra->SecondUV[1] = 0.5f;
    extra->IdLink = written.Vertices[1];
    AddFace(written, {written.Vertices[1], extra, written.Vertices[2]}, written.Materials[1]);
    VMBone* hip = AddBone(written, "hip");
    VMBone* leg = AddBone(written, "leg", hip);
    AddBone(written, "prop");
    // The hip turned a quarter about x and moved, the leg a third of a turn about z below it.
    hip->GlobalTransform.At(1, 1) = 0;
    hip->GlobalTransform.At(2, 1) = 1;
    hip->GlobalTransform.At(1, 2) = -1;
    hip->GlobalTransform.At(2, 2) = 0;
    SetTranslation(hip->GlobalTransform, 1, 2, 3);
    leg->LocalTransform.At(0, 0) = leg->LocalTransform.At(1, 1) = -0.5f;
    leg->LocalTransform.At(1, 0) = 0.8660254f;
    leg->LocalTransform.At(0, 1) = -0.8660254f;
    SetTranslation(leg->LocalTransform, 0, 0, -4);
    leg->GlobalTransform = hip->GlobalTransform * leg->LocalTransform;
    hip->LocalTransform = hip->GlobalTransform;
    leg->Box = {{-1, -2, -3}, {1, 2, 3}};
    for (VMSkinVertex* vertex : written.Vertices) {
        AttachVertex(hip, vertex, 0.5f);
        AttachVertex(leg, vertex, 0.5f);
    }
    written.BoneMasks.push_back({"upper", {1, 0, 1}});
    written.Box = {{0, 0, 0}, {4, 5, 6}};
    written.CollisionBox = {{-1, 0, 0}, {1, 1, 1}};
    Save(written);

    VMModel read;
    ASSERT_TRUE(LoadModel(read, Target, &streams)) << LastError().Text;

    EXPECT_THAT(Validate(read), IsEmpty());
    ASSERT_EQ(read.Vertices.Count(), written.Vertices.Count());
    EXPECT_EQ(read.HasColours, 1);
    EXPECT_EQ(read.HasBones, 1);
    for (int i = 0; i < read.Vertices.Count(); ++i) {
        const VMSkinVertex& a = *written.Vertices[i];
        const VMSkinVertex& b = *read.Vertices[i];
        EXPECT_THAT(b.Position, ElementsAre(a.Position[0], a.Position[1], a.Position[2])) << i;
        EXPECT_THAT(b.Normal, ElementsAre(a.Normal[0], a.Normal[1], a.Normal[2])) << i;
        EXPECT_THAT(b.Tangent, ElementsAre(a.Tangent[0], a.Tangent[1], a.Tangent[2])) << i;
        EXPECT_THAT(b.BaseUV, ElementsAre(a.BaseUV[0], a.BaseUV[1])) << i;
        EXPECT_THAT(b.SecondUV, ElementsAre(a.SecondUV[0], a.SecondUV[1])) << i;
        EXPECT_THAT(b.Colour, ElementsAre(a.Colour[0], a.Colour[1], a.Colour[2], a.Colour[3])) << i;
        EXPECT_EQ(b.IdLink ? b.IdLink->Index : -1u, a.IdLink ? a.IdLink->Index : -1u) << i;
        ASSERT_EQ(b.InfluenceCount, a.InfluenceCount) << i;
        for (uint32_t slot = 0; slot < a.InfluenceCount; ++slot) {
            EXPECT_EQ(b.InfluenceBones[slot]->Index, a.InfluenceBones[slot]->Index);
            EXPECT_EQ(b.InfluenceWeights[slot], a.InfluenceWeights[slot]);
        }
    }
    ASSERT_EQ(read.Faces.Count(), 2);
    EXPECT_EQ(read.Faces[1]->Material()->Index, 1);
    EXPECT_EQ(read.Faces[1]->Corner(1)->Index, 3u);
    EXPECT_EQ(read.Materials[1]->DiffuseTexture, "cloth.dds");
    ASSERT_EQ(read.Skeleton->Bones.Count(), 3);
    for (int i = 0; i < 3; ++i) {
        const VMBone& a = *written.Skeleton->Bones[i];
        const VMBone& b = *read.Skeleton->Bones[i];
        EXPECT_EQ(b.Name, a.Name);
        EXPECT_EQ(b.Parent ? b.Parent->Index : -1, a.Parent ? a.Parent->Index : -1);
        ExpectNear(b.GlobalTransform.M, a.GlobalTransform.M, 12);
        ExpectNear(b.LocalTransform.M, a.LocalTransform.M, 12);
        EXPECT_THAT(b.Box.Max, ElementsAre(a.Box.Max[0], a.Box.Max[1], a.Box.Max[2]));
    }
    EXPECT_THAT(Items(read.Skeleton->Bones[0]->Children), ElementsAre(read.Skeleton->Bones[1]));
    ASSERT_EQ(read.BoneMasks.size(), 1u);
    EXPECT_EQ(read.BoneMasks[0].Name, "upper");
    EXPECT_THAT(read.BoneMasks[0].Values, ElementsAre(1, 0, 1));
    EXPECT_THAT(read.Box.Max, ElementsAre(4, 5, 6));
    EXPECT_THAT(read.CollisionBox.Min, ElementsAre(-1, 0, 0));
    EXPECT_FLOAT_EQ(read.VisibilityRadius, std::sqrt(16.0f + 25.0f + 36.0f));
}

TEST_F(ModelFileTest, APosedSaveWritesTheVerticesWhereTheirBonesPoseThem)
{
    VMModel model;
    AddTriangle(model);
    VMBone* bone = AddBone(model, "bone");
    for (VMSkinVertex* vertex : model.Vertices) {
        AttachVertex(bone, vertex, 1.0f);
        std::copy_n(vertex->Position, 3, vertex->SlotPositions[0]);
        std::copy_n(vertex->Normal, 3, vertex->SlotNormal);
    }
    SetTranslation(bone->PosedWorldTransform, 0, 0, 5);
    Save(model, SaveFlagPosedModel);

    VMModel read;
    ASSERT_TRUE(LoadModel(read, Target, &streams)) << LastError().Text;
    EXPECT_THAT(read.Vertices[1]->Position, ElementsAre(1, 0, 5));
}

// The file of AModelWithSkeletonHoldsEveryChunkInOrder, cut down to what the reader tests need:
// two bones, two vertices bound to them, and a bone box chunk given.
GoldenBytes SkinnedFile(uint32_t boxChunk, uint16_t boxCount, int32_t weightBone = 1)
{
    GoldenBytes boxes = GoldenBytes().U16(boxCount);
    for (uint16_t i = 0; i < boxCount; ++i)
        boxes.F32({0, 0, 0, 1, 2, static_cast<float>(i)});
    return GoldenBytes().FileHeader()
        .Chunk(0, ChunkMODL, GoldenBytes()
            .U16(0)
            .Chunk(1, ChunkSKEL, GoldenBytes()
                .U16(0).U16(2)
                .Str("a").U16(65535).F32({0, 0, 0, 0, 0, 0, 1}).F32({0, 0, 0, 0, 0, 0, 1})
                .Str("b").U16(0).F32({0, 0, 0, 0, 0, 0, 1}).F32({0, 0, 0, 0, 0, 0, 1})
                .U16(0))
            .Chunk(1, ChunkGEOM, GoldenBytes()
                .U16(0).I32(0)
                .I32(2).U16(0x0001).F32({0, 0, 0}).F32({1, 0, 0})   // positions only
                .I32(0))
            .Chunk(1, ChunkWGHT, GoldenBytes()
                .I32(2).I32(0).U16(0).F32({1.0f}).I32(1).U16(static_cast<uint16_t>(weightBone)).F32({1.0f}))
            .Chunk(1, boxChunk, boxes))
        .FileEnd();
}

TEST_F(ModelFileTest, TheOlderBoneBoxChunkIsReadAndABoxCountOfAnotherSkeletonOrAnEmptyModelIsSkipped)
{
    VMModel model;
    streams.SetFile("old.model", SkinnedFile(ChunkBBOX, 2).Str());
    ASSERT_TRUE(LoadModel(model, "old.model", &streams)) << LastError().Text;
    EXPECT_THAT(model.Skeleton->Bones[1]->Box.Max, ElementsAre(1, 2, 1));
    EXPECT_EQ(model.Vertices[1]->InfluenceBones[0], model.Skeleton->Bones[1]);

    streams.SetFile("mismatch.model", SkinnedFile(ChunkBBBX, 3).Str());
    ASSERT_TRUE(LoadModel(model, "mismatch.model", &streams)) << LastError().Text;
    EXPECT_THAT(model.Skeleton->Bones[1]->Box.Max, ElementsAre(-1e8f, -1e8f, -1e8f));

    // Bone boxes for no bones, in a model without a skeleton.
    streams.SetFile("boneless.model", GoldenBytes().FileHeader()
        .Chunk(0, ChunkMODL, GoldenBytes().U16(0).Chunk(1, ChunkBBBX, GoldenBytes().U16(0))).FileEnd().Str());
    EXPECT_TRUE(LoadModel(model, "boneless.model", &streams)) << LastError().Text;

    // An empty model chunk gives an empty model.
    streams.SetFile("empty.model", GoldenBytes().FileHeader().Chunk(0, ChunkMODL, GoldenBytes()).FileEnd().Str());
    EXPECT_TRUE(LoadModel(model, "empty.model", &streams)) << LastError().Text;
    EXPECT_EQ(model.Vertices.Count(), 0);
}

TEST_F(ModelFileTest, TheDescriptionNamesBonesInfluencesSubmeshesAndBounds)
{
    streams.SetFile("old.model", SkinnedFile(ChunkBBBX, 2).Str());
    VMModel model;
    ASSERT_TRUE(LoadModel(model, "old.model", &streams)) << LastError().Text;
    AddFace(model, {model.Vertices[0], model.Vertices[1], model.Vertices[0]}, AddModelMaterial(model, "skin"));
    model.Enumerate();

    EXPECT_EQ(DescribeModel(model),
              "Model file\n"
              "Skeleton: 2 bones\n"
              "  0 \"a\", root\n"
              "  1 \"b\", parent 0 \"a\"\n"
              "Materials: 1\n"
              "  0 \"skin\": diffuse \"\", transparency opaque, 0 shader(s)\n"
              "Vertices: 2 (position, normal, uv)\n"
              "Influences per vertex: 0: 0, 1: 2, 2: 0, 3: 0, 4: 0\n"
              "Triangles: 1\n"
              "Submeshes: 1\n"
              "  0: material 0, triangles 0+1\n"
              "Bounds: (1e+08, 1e+08, 1e+08) - (-1e+08, -1e+08, -1e+08), radius 0\n"
              "Collision box: (1e+08, 1e+08, 1e+08) - (-1e+08, -1e+08, -1e+08)\n");
}

TEST_F(ModelFileTest, EveryTruncationFailsCleanly)
{
    const std::string bytes = SkinnedFile(ChunkBBBX, 2).Str();
    // The last four bytes are the end marker, which the reader does not need.
    for (size_t length = 0; length + 4 < bytes.size(); ++length) {
        streams.SetFile("cut.model", bytes.substr(0, length));
        VMModel model;
        EXPECT_FALSE(LoadModel(model, "cut.model", &streams)) << length;
    }
}

struct Damage {
    const char* Name;
    std::string Bytes;
    const char* Message;
};

class DamagedModelFileTest : public testing::TestWithParam<Damage> {};

TEST_P(DamagedModelFileTest, IsRefusedWithTheReasonAndLeavesAnEmptyModel)
{
    VMemoryStreamProvider streams;
    streams.SetFile("bad.model", GetParam().Bytes);
    VMModel model;
    AddSkinVertex(model, 0, 0, 0);
    EXPECT_FALSE(LoadModel(model, "bad.model", &streams));
    EXPECT_EQ(LastError().Text, std::string("File 'bad.model' is not a readable model file: ") + GetParam().Message);
    EXPECT_EQ(model.Vertices.Count(), 0);
    EXPECT_EQ(model.Skeleton, nullptr);
}

GoldenBytes Geometry(const GoldenBytes& content)
{
    return GoldenBytes().FileHeader().Chunk(0, ChunkMODL, GoldenBytes().U16(0).Chunk(1, ChunkGEOM, content)).FileEnd();
}

INSTANTIATE_TEST_SUITE_P(
    Files, DamagedModelFileTest,
    testing::Values(
        Damage {"WeightOfAMissingBone", SkinnedFile(ChunkBBBX, 2, 7).Str(), "A weight names no bone in chunk WGHT"},
        Damage {"HugeVertexCount", Geometry(GoldenBytes().U16(0).I32(0).I32(0x7FFFFFFF).U16(0x031F)).Str(),
                "Vertex count exceeds the chunk in chunk GEOM"},
        Damage {"UnknownVertexFlags", Geometry(GoldenBytes().U16(0).I32(0).I32(0).U16(0x0020)).Str(),
                "Unknown vertex flags in chunk GEOM"},
        Damage {"TriangleOfAMissingVertex",
                Geometry(GoldenBytes().U16(0).I32(0).I32(1).U16(1).F32({0, 0, 0}).I32(1).I32s({0, 0, 1}).U16(65535))
                    .Str(),
                "A triangle names no vertex in chunk GEOM"},
        Damage {"HugeMaterialCount", Geometry(GoldenBytes().U16(0).I32(1000)).Str(),
                "Material count exceeds the chunk in chunk GEOM"},
        Damage {"NotAModel", GoldenBytes().FileHeader().Chunk(0, ChunkGEOM, GoldenBytes()).FileEnd().Str(),
                "Unexpected chunk ID; actual: 0x47454F4D, expected: 0x4D4F444C"}),
    [](const testing::TestParamInfo<Damage>& paramInfo) { return paramInfo.param.Name; });

} // namespace
