// The fast passes (hash grid weld, exact-position groups) against a slow reference that queries
// the search tree exactly as the passes are defined, on random harvested-style meshes.

#include "geometry/AdjustTriangles.h"
#include "geometry/FixID.h"
#include "geometry/FoldExactDuplicates.h"
#include "geometry/VertexSearchTree.h"
#include "geometry/WeldVertices.h"

#include "TestWorlds.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

namespace {

void ReferenceWeld(VMWorld& world, VertexSearchTree& tree, float eps, float epsUV)
{
    for (VMVertex* vertex : world.Vertices)
        vertex->State = 0;
    for (VMVertex* s : world.Vertices) {
        if (s->State != 0)
            continue;
        const std::vector<VMVertex*> found = tree.Query(s->Position, 3.0f * eps);
        std::vector<VMVertex*> candidates;
        for (VMVertex* w : found) {
            const float dx = w->Position[0] - s->Position[0];
            const float dy = w->Position[1] - s->Position[1];
            const float dz = w->Position[2] - s->Position[2];
            if (w != s && w->State == 0 && dx * dx + dy * dy + dz * dz < eps * eps) {
                w->State = 4;
                candidates.push_back(w);
            }
        }
        if (candidates.empty())
            continue;
        s->State = 1;
        for (VMVertex* w : candidates) {
            w->State = 1;
            for (int k = 0; k < 3; ++k)
                w->Position[k] = s->Position[k];
            if (s->BaseUV[0] - epsUV <= w->BaseUV[0] && w->BaseUV[0] <= s->BaseUV[0] + epsUV &&
                s->BaseUV[1] - epsUV <= w->BaseUV[1] && w->BaseUV[1] <= s->BaseUV[1] + epsUV) {
                w->BaseUV[0] = s->BaseUV[0];
                w->BaseUV[1] = s->BaseUV[1];
            }
            if (std::fabs(w->Normal[0] - s->Normal[0]) <= 0.002f && std::fabs(w->Normal[1] - s->Normal[1]) <= 0.002f &&
                std::fabs(w->Normal[2] - s->Normal[2]) <= 0.002f) {
                for (int k = 0; k < 3; ++k)
                    w->Normal[k] = s->Normal[k];
            }
        }
    }
}

int ReferenceDuplicates(VMWorld& world, VertexSearchTree& tree, float eps, float epsUV)
{
    int links = 0;
    for (VMPolygon* polygon : world.Polygons) {
        for (VMVertex* v : polygon->Corners) {
            if (v->MergeLink != nullptr)
                continue;
            const std::vector<VMVertex*> found = tree.Query(v->Position, 2.0f * eps);
            for (VMVertex* w : found) {
                if (w == v || w->MergeLink != nullptr)
                    continue;
                bool same = std::memcmp(w->Tangent, v->Tangent, sizeof v->Tangent) == 0 &&
                            std::memcmp(w->Colour, v->Colour, sizeof v->Colour) == 0;
                for (int k = 0; k < 2; ++k)
                    same = same && std::fabs(w->BaseUV[k] - v->BaseUV[k]) <= epsUV &&
                           std::fabs(w->SecondUV[k] - v->SecondUV[k]) <= epsUV;
                for (int k = 0; k < 3; ++k)
                    same = same && std::fabs(w->Normal[k] - v->Normal[k]) <= 0.002f && w->Position[k] == v->Position[k];
                if (same) {
                    w->MergeLink = v;
                    ++links;
                }
            }
        }
    }
    return links;
}

int ReferenceFixID(VMWorld& world)
{
    const int count = world.Vertices.Count();
    for (int i = 0; i < count; ++i)
        world.Vertices.Get(i)->MergeLink = nullptr;
    int links = 0;
    for (int i = 0; i + 1 < count; ++i) {
        VMVertex* first = world.Vertices.Get(i);
        for (int j = i + 1; j < count; ++j) {
            VMVertex* w = world.Vertices.Get(j);
            if (w->MergeLink == nullptr && w->Position[0] == first->Position[0] &&
                w->Position[1] == first->Position[1] && w->Position[2] == first->Position[2]) {
                w->MergeLink = first;
                ++links;
            }
        }
    }
    return links;
}

void NumberVertices(VMWorld& world)
{
    for (int i = 0; i < world.Vertices.Count(); ++i)
        world.Vertices.Get(i)->Index = static_cast<uint32_t>(i);
}

std::vector<int> MergeTargets(const VMWorld& world)
{
    std::vector<int> targets;
    for (const VMVertex* vertex : world.Vertices)
        targets.push_back(vertex->MergeLink ? static_cast<int>(vertex->MergeLink->Index) : -1);
    return targets;
}

void ExpectSameVertices(const VMWorld& fast, const VMWorld& reference)
{
    ASSERT_EQ(fast.Vertices.Count(), reference.Vertices.Count());
    for (int i = 0; i < fast.Vertices.Count(); ++i) {
        const VMVertex& a = *fast.Vertices.Get(i);
        const VMVertex& b = *reference.Vertices.Get(i);
        ASSERT_EQ(std::memcmp(a.Position, b.Position, sizeof a.Position), 0) << "vertex " << i;
        ASSERT_EQ(std::memcmp(a.BaseUV, b.BaseUV, sizeof a.BaseUV), 0) << "vertex " << i;
        ASSERT_EQ(std::memcmp(a.Normal, b.Normal, sizeof a.Normal), 0) << "vertex " << i;
    }
}

class WeldReference : public ::testing::TestWithParam<float> {};

TEST_P(WeldReference, FastWeldAndDuplicateFoldingMatchTheTreeDefinition)
{
    const float eps = GetParam();
    for (uint32_t seed = 1; seed <= 5; ++seed) {
        VMWorld fast;
        VMWorld reference;
        AddRandomHarvestedMesh(fast, AddMaterial(fast), 600, seed, 0.12f);
        AddRandomHarvestedMesh(reference, AddMaterial(reference), 600, seed, 0.12f);

        const PositionRings rings = WeldVertices(fast.Vertices, eps, 0.3f);
        VertexSearchTree tree;
        ASSERT_EQ(tree.Build(reference.Vertices.Count(), reference.Vertices), 0);
        ReferenceWeld(reference, tree, eps, 0.3f);
        ExpectSameVertices(fast, reference);

        NumberVertices(fast);
        NumberVertices(reference);
        const int fastLinks = FoldExactDuplicates(fast, rings, eps, 0.3f);
        EXPECT_EQ(fastLinks, ReferenceDuplicates(reference, tree, eps, 0.3f)) << "seed " << seed;
        EXPECT_GT(fastLinks, 0);
        EXPECT_EQ(MergeTargets(fast), MergeTargets(reference)) << "seed " << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(Tolerances, WeldReference, ::testing::Values(0.0f, 0.01f, 0.1f, 0.25f));

TEST(FixIDReference, HashedLinksMatchAPairwiseScan)
{
    for (uint32_t seed = 1; seed <= 5; ++seed) {
        VMWorld fast;
        VMWorld reference;
        AddRandomHarvestedMesh(fast, AddMaterial(fast), 500, seed, 0.1f);
        AddRandomHarvestedMesh(reference, AddMaterial(reference), 500, seed, 0.1f);
        const int fastLinks = FixID(fast, 0.0f);
        NumberVertices(reference);
        EXPECT_EQ(fastLinks, ReferenceFixID(reference));
        EXPECT_GT(fastLinks, 0);
        EXPECT_EQ(MergeTargets(fast), MergeTargets(reference)) << "seed " << seed;
    }
}

// AdjustTriangles links its ID vertices from the groups its weld made; a fresh FixID over the
// result, which groups the positions anew, must find the same links. The patch's control
// vertices come first in the list and sit on mesh positions, so some groups start with a member
// that may not be linked to.
TEST(FixIDReference, AdjustTrianglesLinksAsAFreshFixID)
{
    for (const float eps : {0.0f, 0.01f, 0.1f}) {
        for (uint32_t seed = 1; seed <= 4; ++seed) {
            VMWorld world;
            VMMaterial* material = AddMaterial(world);
            VMPatch* patch = VMWorld::NewPatch(true).release();
            for (VMVertex*& corner : patch->Corners)
                corner = AddVertex(world, 0, 0, 0);
            world.Patches.Add(patch);
            AddRandomHarvestedMesh(world, material, 500, seed, 0.1f);
            for (size_t k = 0; k < patch->Corners.size(); ++k)
                std::memcpy(patch->Corners[k]->Position, world.Vertices.Get(static_cast<int>(7 * k + 20))->Position,
                            sizeof(float[3]));

            ASSERT_EQ(AdjustTriangles(world, eps, 0.3f, true), 0);
            const std::vector<int> adjusted = MergeTargets(world);
            EXPECT_GT(FixID(world, eps), 0);
            EXPECT_EQ(MergeTargets(world), adjusted) << "EpsVert " << eps << ", seed " << seed;
        }
    }
}

}
