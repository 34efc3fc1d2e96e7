#include "geometry/LocalBoneTransforms.h"
#include "geometry/RemoveDeadBones.h"
#include "geometry/ResortBones.h"

#include "model/Validate.h"

#include "../model/ModelBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class Bones>
std::vector<std::string> Names(const Bones& bones)
{
    std::vector<std::string> names;
    for (const auto& bone : bones)
        names.push_back(bone->Name);
    return names;
}

//  hip ─ spine ─ chest ─ neck ─ head      (head and neck: no vertices)
//   │              └─ arm (vertices)
//   └─ tail (anchored, no vertices)
//  prop (no vertices, a root of its own)
TEST(RemoveDeadBones, PrunesAChainFromTheLeafUpToTheFirstBoneThatHoldsSomething)
{
    VMModel model;
    VMBone* hip = AddBone(model, "hip");
    VMBone* spine = AddBone(model, "spine", hip);
    VMBone* chest = AddBone(model, "chest", spine);
    VMBone* neck = AddBone(model, "neck", chest);
    AddBone(model, "head", neck);
    VMBone* arm = AddBone(model, "arm", chest);
    VMBone* tail = AddBone(model, "tail", hip);
    tail->Anchored = 1;
    AddBone(model, "prop");
    AttachVertex(arm, AddSkinVertex(model, 0, 0, 0), 1.0f);
    model.Skeleton->Root = AddBone(model, "root-to-be-pruned");

    std::vector<std::unique_ptr<VMBone>> pruned;
    RemoveDeadBones(*model.Skeleton, pruned);

    // Roots from the last to the first, children from the last to the first before their parent.
    EXPECT_THAT(Names(pruned), ElementsAre("root-to-be-pruned", "prop", "head", "neck"));
    EXPECT_THAT(Names(model.Skeleton->Bones), ElementsAre("hip", "spine", "chest", "arm", "tail"));
    EXPECT_THAT(Items(chest->Children), ElementsAre(arm));
    EXPECT_EQ(model.Skeleton->Root, nullptr);
    EXPECT_THAT(Validate(model), IsEmpty());
}

TEST(RemoveDeadBones, AWholeDeadSkeletonIsEmptied)
{
    VMModel model;
    AddBone(model, "b", AddBone(model, "a"));
    std::vector<std::unique_ptr<VMBone>> pruned;
    RemoveDeadBones(*model.Skeleton, pruned);
    EXPECT_THAT(Names(pruned), ElementsAre("b", "a"));
    EXPECT_EQ(model.Skeleton->Bones.Count(), 0);
}

//  b ─ y, X ─ (X: z2, Z1)        A ─ c
TEST(ResortBones, OrdersRootsThenEachBonesChildrenAsOneBlockByNameIgnoringCase)
{
    VMModel model;
    VMBone* b = AddBone(model, "b");
    AddBone(model, "y", b);
    VMBone* x = AddBone(model, "X", b);
    AddBone(model, "z2", x);
    AddBone(model, "Z1", x);
    VMBone* a = AddBone(model, "A");
    AddBone(model, "c", a);

    ResortBones(*model.Skeleton);

    EXPECT_THAT(Names(model.Skeleton->Bones), ElementsAre("A", "b", "c", "X", "y", "Z1", "z2"));
    for (int i = 0; i < model.Skeleton->Bones.Count(); ++i)
        EXPECT_EQ(model.Skeleton->Bones[i]->SortIndex, static_cast<uint32_t>(i));
}

TEST(LocalBoneTransforms, LocalIsTheGlobalRelativeToTheParentAndTheRootIsFoundByExactName)
{
    VMModel model;
    VMBone* root = AddBone(model, "Root");
    VMBone* child = AddBone(model, "Child", root);
    // The root turned a quarter about z and moved; the child one unit along the root's x axis.
    root->GlobalTransform.At(0, 0) = 0;
    root->GlobalTransform.At(1, 0) = 1;
    root->GlobalTransform.At(0, 1) = -1;
    root->GlobalTransform.At(1, 1) = 0;
    SetTranslation(root->GlobalTransform, 5, 0, 0);
    child->GlobalTransform = root->GlobalTransform;
    SetTranslation(child->GlobalTransform, 5, 1, 0);

    ComputeLocalTransforms(*model.Skeleton);
    FindRootBone(*model.Skeleton, "child");
    EXPECT_EQ(model.Skeleton->Root, nullptr);
    EXPECT_EQ(model.Skeleton->GetRootBone(), root);
    FindRootBone(*model.Skeleton, "Child");
    EXPECT_EQ(model.Skeleton->Root, child);

    VMTransform expected;
    SetTranslation(expected, 1, 0, 0);
    for (int i = 0; i < 12; ++i)
        EXPECT_NEAR(child->LocalTransform.M[i], expected.M[i], 1e-6f) << i;
    EXPECT_EQ(root->LocalTransform.M[9], 5.0f);
}

} // namespace
