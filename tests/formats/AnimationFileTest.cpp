#include "GoldenBytes.h"

#include "formats/AnimationChunks.h"
#include "formats/AnimationFileReader.h"
#include "formats/ModelChunks.h"
#include "formats/SaveAnimations.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VMemoryStreamProvider.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr char Target[] = "C:\\art\\hero.anim";

// The SKEL chunk of one root bone "hip" at the origin.
GoldenBytes HipSkeleton()
{
    return GoldenBytes().Chunk(1, ChunkSKEL, GoldenBytes()
        .U16(0).U16(1)
        .Str("hip").U16(65535)
        .F32({0, 0, 0, 0, 0, 0, 1})                  // inverse global
        .F32({0, 0, 0, 0, 0, 0, 1})                  // local
        .U16(0));
}

class AnimationFileTest : public testing::Test {
protected:
    std::string Save()
    {
        EXPECT_TRUE(SaveAnimations(model, Target, &streams)) << LastError().Text;
        const std::string* bytes = streams.FindFile(Target);
        return bytes ? *bytes : std::string();
    }

    // A bone animation of the hip whose frame k has the hip at (k, 0, 0) and its motion values
    // (10 k, 20 k, 30 k) and (1 k, 2 k, 3 k), a key every half second.
    VMAnimation& AddBoneAnimation(int keys)
    {
        VMAnimation* animation = VMModel::NewAnimation("walk", keys).release();
        model.BoneAnimations.Add(animation);
        model.Enumerate();
        for (int k = 0; k < keys; ++k) {
            auto frame = VMAnimFrame::Create(VMAnimFrame::SampledCapacity, false);
            VMTransform pose;
            SetTranslation(pose, static_cast<float>(k), 0, 0);
            frame->AddBone(hip, &pose, &pose, nullptr);
            for (int axis = 0; axis < 3; ++axis) {
                frame->MotionTranslation[axis] = 10.0f * static_cast<float>((axis + 1) * k);
                frame->MotionRotation[axis] = static_cast<float>((axis + 1) * k);
            }
            animation->AddFrame(std::move(frame), 0.5f * static_cast<float>(k), 500);
        }
        return *animation;
    }

    // A vertex animation whose key k moves the listed vertices by (k, 0, 0) with normal (0, 0, 1).
    VMAnimation& AddVertexAnimation(std::initializer_list<std::initializer_list<int>> keys)
    {
        VMAnimation* animation = VMModel::NewAnimation("smile", static_cast<int>(keys.size())).release();
        model.VertexAnimations.Add(animation);
        float time = 0.0f;
        for (const auto& moved : keys) {
            auto track = std::make_unique<VMVertexTrack>();
            for (int vertex : moved)
                track->Deltas.push_back({model.Vertices[vertex], {time, 0, 0}, {0, 0, 1}});
            animation->AddVertexFrame(std::move(track), time, 40);
            time += 1.0f;
        }
        return *animation;
    }

    void AddVertices(int count)
    {
        for (int i = 0; i < count; ++i)
            AddSkinVertex(model, static_cast<float>(i), 0, 0);
    }

    VMModel model;
    VMBone* hip = AddBone(model, "hip");
    VMemoryStreamProvider streams;
};

TEST_F(AnimationFileTest, AModelWithoutAnimationsHoldsTheHeaderAndItsSkeleton)
{
    const GoldenBytes expected = GoldenBytes().FileHeader()
        .Chunk(0, ChunkANIM, GoldenBytes()
            .U16(0)
            .Chunk(1, ChunkHEAD, GoldenBytes().I32(0))
            .Bytes(HipSkeleton().Str()))
        .FileEnd();
    model.Skeleton->Number = 3;
    EXPECT_EQ(Save(), expected.Str());
    EXPECT_EQ(model.Skeleton->Number, 0);

    model.Skeleton.reset();
    const GoldenBytes bare = GoldenBytes().FileHeader()
        .Chunk(0, ChunkANIM, GoldenBytes().U16(0).Chunk(1, ChunkHEAD, GoldenBytes().I32(0)))
        .FileEnd();
    EXPECT_EQ(Save(), bare.Str());
}

TEST_F(AnimationFileTest, ABoneAnimationWithoutMotionOrBoxesHoldsPositionsAndRotationsOnly)
{
    AddBoneAnimation(2);
    const GoldenBytes expected = GoldenBytes().FileHeader()
        .Chunk(0, ChunkANIM, GoldenBytes()
            .U16(0)
            .Chunk(1, ChunkHEAD, GoldenBytes().I32(1))
            .Bytes(HipSkeleton().Str())
            .Chunk(1, ChunkBANI, GoldenBytes()
                .U16(0).U16(0).U16(1)                     // version, skeleton number, bones
                .Str("walk")
                .Chunk(2, ChunkBPOS, GoldenBytes()
                    .I32(2)
                    .F32({0.0f}).F32({0, 0, 0})           // time, the hip's translation
                    .F32({0.5f}).F32({1, 0, 0}))
                .Chunk(2, ChunkBROT, GoldenBytes()
                    .I32(2)
                    .F32({0.0f}).F32({0, 0, 0, 1})        // time, the hip's quaternion
                    .F32({0.5f}).F32({0, 0, 0, 1}))))
        .FileEnd();
    EXPECT_EQ(Save(), expected.Str());
}

// Root motion on x with rotation flags on y and z: the offsets, and the rotation about z alone.
TEST_F(AnimationFileTest, MotionChunksComeBeforeThePoseAndNameTheLastRotationAxisSet)
{
    VMAnimation& animation = AddBoneAnimation(1);
    animation.Move[0] = 1;
    animation.RotationAxis[1] = 1;
    animation.RotationAxis[2] = 1;
    animation.HasBoundaries = 1;
    animation.Frames[0]->Box = {{-1, -2, -3}, {1, 2, 3}};
    const GoldenBytes expected = GoldenBytes().FileHeader()
        .Chunk(0, ChunkANIM, GoldenBytes()
            .U16(0)
            .Chunk(1, ChunkHEAD, GoldenBytes().I32(1))
            .Bytes(HipSkeleton().Str())
            .Chunk(1, ChunkBANI, GoldenBytes()
                .U16(0).U16(0).U16(1).Str("walk")
                .Chunk(2, ChunkVSBX, GoldenBytes().I32(1).F32({0.0f}).F32({-1, -2, -3, 1, 2, 3}))
                .Chunk(2, ChunkODTA, GoldenBytes().U16(0).I32(1).F32({0.0f}).F32({0, 0, 0}))
                .Chunk(2, ChunkRDTA, GoldenBytes().U16(0).U8({2}).I32(1).F32({0.0f}).F32({0}))
                .Chunk(2, ChunkBPOS, GoldenBytes().I32(1).F32({0.0f}).F32({0, 0, 0}))
                .Chunk(2, ChunkBROT, GoldenBytes().I32(1).F32({0.0f}).F32({0, 0, 0, 1}))))
        .FileEnd();
    EXPECT_EQ(Save(), expected.Str());
}

TEST_F(AnimationFileTest, AVertexAnimationMasksTheVerticesItMovesSortedByNumber)
{
    model.Skeleton.reset();
    AddVertices(41);
    AddVertexAnimation({{40, 3}, {}});
    const GoldenBytes expected = GoldenBytes().FileHeader()
        .Chunk(0, ChunkANIM, GoldenBytes()
            .U16(0)
            .Chunk(1, ChunkHEAD, GoldenBytes().I32(1))
            .Chunk(1, ChunkVANI, GoldenBytes()
                .U16(1).Str("smile").U16(41)              // version, name, the model's vertices
                .Chunk(2, ChunkVDEL, GoldenBytes()
                    .I32(2)
                    .F32({0.0f}).I32(2)                   // key 0: two entries, vertex 3 first
                    .I32(3).F32({0, 0, 0, 0, 0, 1})
                    .I32(40).F32({0, 0, 0, 0, 0, 1})
                    .F32({1.0f}).I32(0))                  // key 1: none
                .Chunk(2, ChunkVMSK, GoldenBytes().I32(41).U32(0x00000008).U32(0x00000100))))
        .FileEnd();
    EXPECT_EQ(Save(), expected.Str());
    // The model keeps its order.
    EXPECT_EQ(model.VertexAnimations[0]->VertexTracks[0]->Deltas[0].Vertex, model.Vertices[40]);
}

TEST_F(AnimationFileTest, WhatIsReadBackIsWhatWasWritten)
{
    VMBone* knee = AddBone(model, "knee", hip);
    knee->TrackIndex = 0;
    VMAnimation& walk = AddBoneAnimation(2);
    walk.Move[1] = 1;
    walk.RotationAxis[0] = 1;
    walk.Events.Add(std::make_unique<VMEvent>(VMEvent {0.25f, "step"}));
    walk.BoneMasks.push_back({"legs", {0, 1}});
    AddVertices(3);
    AddVertexAnimation({{2}, {0, 1}});
    // One that moves nothing has no mask.
    AddVertexAnimation({{}});
    Save();

    VAnimationFile read;
    ASSERT_TRUE(ReadAnimationFile(Target, read, &streams)) << LastError().Text;
    EXPECT_EQ(read.DeclaredCount, 3);
    ASSERT_TRUE(read.Skeleton);
    ASSERT_EQ(read.Skeleton->Bones.Count(), 2);
    EXPECT_EQ(read.Skeleton->Bones[1]->Parent, read.Skeleton->Bones[0]);
    ASSERT_EQ(read.Animations.size(), 3u);

    const VAnimFileAnimation& bones = read.Animations[0];
    EXPECT_EQ(bones.Name, "walk");
    EXPECT_EQ(bones.BoneCount, 2);
    EXPECT_THAT(bones.Chunks, ElementsAre(ChunkODTA, ChunkRDTA, ChunkBPOS, ChunkBROT, ChunkEVNT, ChunkBMSK));
    EXPECT_THAT(bones.Offsets.Values, ElementsAre(0, 0, 0, 10, 20, 30));
    EXPECT_EQ(bones.RotationAxis, 0);
    EXPECT_THAT(bones.RotationDeltas.Values, ElementsAre(0, 1));
    EXPECT_THAT(bones.Positions.Times, ElementsAre(0.0f, 0.5f));
    // The knee follows track 0, the hip's.
    EXPECT_THAT(bones.Positions.Values, ElementsAre(0, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0));
    ASSERT_EQ(bones.Events.size(), 1u);
    EXPECT_EQ(bones.Events[0].Name, "step");
    EXPECT_EQ(bones.Events[0].Time, 0.25f);
    ASSERT_EQ(bones.BoneMasks.size(), 1u);
    EXPECT_THAT(bones.BoneMasks[0].Values, ElementsAre(0u, 1u));

    const VAnimFileAnimation& vertices = read.Animations[1];
    EXPECT_EQ(vertices.VertexCount, 3);
    ASSERT_EQ(vertices.Deltas.size(), 2u);
    ASSERT_EQ(vertices.Deltas[1].size(), 2u);
    EXPECT_EQ(vertices.Deltas[1][1].Vertex, 1);
    EXPECT_THAT(vertices.Deltas[1][1].Position, ElementsAre(1.0f, 0.0f, 0.0f));
    EXPECT_EQ(vertices.MaskBits, 3);
    EXPECT_THAT(vertices.MaskWords, ElementsAre(7u));
    EXPECT_THAT(read.Animations[2].Chunks, ElementsAre(ChunkVDEL));
}

// Counts the file cannot hold: each is refused with the chunk named, not allocated.
TEST_F(AnimationFileTest, CountsBeyondTheirChunkAreRefused)
{
    struct Case {
        GoldenBytes Content;
        const char* Problem;
    };
    const Case cases[] = {
        {GoldenBytes().Chunk(1, ChunkBANI, GoldenBytes().U16(0).U16(0).U16(50000).Str("x")
                                               .Chunk(2, ChunkBPOS, GoldenBytes().I32(1).F32({0}))),
         "In animation \"x\": Key count exceeds the chunk in chunk BPOS in chunk BANI"},
        {GoldenBytes().Chunk(1, ChunkVANI, GoldenBytes().U16(1).Str("y").U16(3)
                                               .Chunk(2, ChunkVDEL, GoldenBytes().I32(1).F32({0}).I32(1000000))),
         "In animation \"y\": Delta count exceeds the chunk in chunk VDEL in chunk VANI"},
        {GoldenBytes().Chunk(1, ChunkVANI, GoldenBytes().U16(1).Str("z").U16(3)
                                               .Chunk(2, ChunkVMSK, GoldenBytes().I32(0x7FFFFFFF))),
         "In animation \"z\": Vertex mask exceeds the chunk in chunk VMSK in chunk VANI"},
    };
    for (const Case& c : cases) {
        const GoldenBytes file = GoldenBytes().FileHeader()
            .Chunk(0, ChunkANIM, GoldenBytes().U16(0).Bytes(c.Content.Str())).FileEnd();
        streams.SetFile("bad.anim", file.Str());
        VAnimationFile read;
        EXPECT_FALSE(ReadAnimationFile("bad.anim", read, &streams));
        EXPECT_EQ(LastError().Text, std::string("File 'bad.anim' is not a readable animation file: ") + c.Problem);
        EXPECT_TRUE(read.Animations.empty());
    }
}

} // namespace
