#include "geometry/WeldVertices.h"

#include "TestWorlds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

TEST(WeldVertices, MovesAVertexStrictlyInsideEpsVertOntoTheSeedAndNothingWithEpsVertZero)
{
    VMWorld world;
    VMVertex* seed = AddVertex(world, 1.0f, 2.0f, 3.0f);
    VMVertex* near = AddVertex(world, 1.04f, 2.0f, 3.0f);
    VMVertex* apart = AddVertex(world, 1.125f, 2.0f, 3.0f);
    VMVertex* same = AddVertex(world, 1.0f, 2.0f, 3.0f);
    same->BaseUV[0] = 0.5f;
    WeldVertices(world.Vertices, 0.0f, 1.0f);
    EXPECT_EQ(same->BaseUV[0], 0.5f);
    WeldVertices(world.Vertices, 0.125f, 0.0f);
    EXPECT_THAT(near->Position, ::testing::ElementsAre(1.0f, 2.0f, 3.0f));
    EXPECT_EQ(seed->Position[0], 1.0f);
    EXPECT_EQ(apart->Position[0], 1.125f) << "a pair exactly EpsVert apart stays";
}

TEST(WeldVertices, AdoptsBaseUVWithinEpsUVInclusiveAndNormalWithinTwoThousandthsPerComponentOnly)
{
    VMWorld world;
    VMVertex* seed = AddVertex(world, 0.0f, 0.0f, 0.0f);
    seed->BaseUV[0] = 0.5f;
    seed->BaseUV[1] = 0.5f;
    VMVertex* close = AddVertex(world, 0.01f, 0.0f, 0.0f);
    close->BaseUV[0] = 0.75f;
    close->BaseUV[1] = 0.25f;
    close->Normal[0] = 0.0015f;
    close->SecondUV[0] = 0.125f;
    close->Tangent[1] = 1.0f;
    close->Colour[2] = 7;
    VMVertex* beyond = AddVertex(world, 0.0f, 0.01f, 0.0f);
    beyond->BaseUV[0] = 0.5f;
    beyond->BaseUV[1] = 0.875f;
    beyond->Normal[0] = 0.003f;
    WeldVertices(world.Vertices, 0.1f, 0.25f);
    EXPECT_THAT(close->BaseUV, ::testing::ElementsAre(0.5f, 0.5f));
    EXPECT_EQ(close->Normal[0], 0.0f);
    EXPECT_EQ(close->SecondUV[0], 0.125f);
    EXPECT_EQ(close->Tangent[1], 1.0f);
    EXPECT_EQ(close->Colour[2], 7);
    EXPECT_THAT(beyond->BaseUV, ::testing::ElementsAre(0.5f, 0.875f));
    EXPECT_EQ(beyond->Normal[0], 0.003f);
    EXPECT_EQ(beyond->Position[1], 0.0f);
}

TEST(WeldVertices, AWeldedVertexIsNeitherSeedNorCandidateAgain)
{
    //  a(0) -- b(0.15) -- c(0.3), EpsVert 0.2: a claims b; c is 0.3 from a and b is taken.
    VMWorld world;
    AddVertex(world, 0.0f, 0.0f, 0.0f);
    VMVertex* b = AddVertex(world, 0.15f, 0.0f, 0.0f);
    VMVertex* c = AddVertex(world, 0.3f, 0.0f, 0.0f);
    WeldVertices(world.Vertices, 0.2f, 0.0f);
    EXPECT_EQ(b->Position[0], 0.0f);
    EXPECT_EQ(c->Position[0], 0.3f);
}

}
