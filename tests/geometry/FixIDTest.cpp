#include "geometry/FixID.h"

#include "TestWorlds.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(FixID, LinksEveryVertexToTheLowestIndexAtItsPositionAndClearsOldLinks)
{
    //  0 (1,1,1)   1 (2,2,2)   2 (1,1,1)   3 (1,1,1)   4 (2,2,2)   5 (3,3,3)
    VMWorld world;
    EXPECT_EQ(FixID(world, 0.0f), 0);
    VMVertex* v0 = AddVertex(world, 1, 1, 1);
    VMVertex* v1 = AddVertex(world, 2, 2, 2);
    VMVertex* v2 = AddVertex(world, 1, 1, 1);
    VMVertex* v3 = AddVertex(world, 1, 1, 1);
    VMVertex* v4 = AddVertex(world, 2, 2, 2);
    VMVertex* v5 = AddVertex(world, 3, 3, 3);
    v5->MergeLink = v0;
    // A negative radius links nothing.
    EXPECT_EQ(FixID(world, -1.0f), 0);
    EXPECT_EQ(v5->MergeLink, nullptr);
    EXPECT_EQ(FixID(world, 0.0f), 3);
    EXPECT_EQ(v0->MergeLink, nullptr);
    EXPECT_EQ(v1->MergeLink, nullptr);
    EXPECT_EQ(v2->MergeLink, v0);
    EXPECT_EQ(v3->MergeLink, v0);
    EXPECT_EQ(v4->MergeLink, v1);
    EXPECT_EQ(v5->MergeLink, nullptr);
    EXPECT_EQ(v5->Index, 5u);
}

TEST(FixID, TreatsMinusZeroAsZeroAndNeverLinksNaN)
{
    VMWorld world;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    VMVertex* zero = AddVertex(world, 0.0f, 0.0f, 0.0f);
    VMVertex* minusZero = AddVertex(world, -0.0f, 0.0f, 0.0f);
    AddVertex(world, nan, 0.0f, 0.0f);
    VMVertex* secondNaN = AddVertex(world, nan, 0.0f, 0.0f);
    EXPECT_EQ(FixID(world, 0.0f), 1);
    EXPECT_EQ(minusZero->MergeLink, zero);
    EXPECT_EQ(secondNaN->MergeLink, nullptr);
}

TEST(FixID, PatchControlVertexIsNoLinkTarget)
{
    VMWorld world;
    VMVertex* control = AddVertex(world, 1, 1, 1);
    VMVertex* free = AddVertex(world, 1, 1, 1);
    VMVertex* later = AddVertex(world, 1, 1, 1);
    VMPatch* patch = VMWorld::NewPatch(true).release();
    for (VMVertex*& corner : patch->Corners)
        corner = control;
    world.Patches.Add(patch);
    EXPECT_EQ(FixID(world, 0.0f), 1);
    EXPECT_EQ(control->MergeLink, nullptr);
    EXPECT_EQ(free->MergeLink, nullptr);
    EXPECT_EQ(later->MergeLink, free);
    EXPECT_EQ(control->State, 2u);
}

}
