#include "geometry/RepairNormals.h"

#include "LogRecorder.h"
#include "TestWorlds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

TEST(RepairNormals, KeepsUsableNormalsAndRebuildsMissingOnesFromTheFace)
{
    //  c(0,1,0)
    //  a(0,0,0) --- b(1,0,0)     the face normal is +z
    VMWorld world;
    VMVertex* a = AddVertex(world, 0, 0, 0);
    VMVertex* b = AddVertex(world, 1, 0, 0);
    VMVertex* c = AddVertex(world, 0, 1, 0);
    a->Normal[2] = 0.0f;
    b->Normal[0] = 1.0f;
    b->Normal[2] = 0.0f;
    for (VMVertex* vertex : {a, b, c})
        vertex->Siblings.Add(vertex);
    AddTriangle(world, a, b, c, AddMaterial(world));
    ASSERT_EQ(RepairNormals(world), 0);
    EXPECT_THAT(a->Normal, ::testing::ElementsAre(0.0f, 0.0f, ::testing::FloatEq(1.0f)));
    EXPECT_THAT(b->Normal, ::testing::ElementsAre(1.0f, 0.0f, 0.0f));
}

TEST(RepairNormals, SiblingOfAnotherSmoothingGroupIsLeftOut)
{
    VMWorld world;
    VMVertex* a = AddVertex(world, 0, 0, 0);
    VMVertex* b = AddVertex(world, 1, 0, 0);
    VMVertex* c = AddVertex(world, 0, 1, 0);
    VMVertex* other = AddVertex(world, 0, 0, 0);
    for (VMVertex* vertex : {a, other})
        vertex->Normal[2] = 0.0f;
    other->GroupNumber = 1;
    a->Siblings.Add(a);
    a->Siblings.Add(other);
    AddTriangle(world, a, b, c, AddMaterial(world));
    LogRecorder log;
    ASSERT_EQ(RepairNormals(world), 0);
    EXPECT_FLOAT_EQ(a->Normal[2], 1.0f);
    EXPECT_EQ(other->Normal[2], 0.0f);
    EXPECT_TRUE(log.Has("1 Vertices with bad normals found.\n"));
}

}
