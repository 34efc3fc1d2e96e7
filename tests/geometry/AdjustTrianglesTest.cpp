#include "geometry/AdjustTriangles.h"

#include "LogRecorder.h"
#include "TestWorlds.h"
#include "model/Validate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <set>
#include <vector>

namespace {

constexpr float Eps = 0.1f;

TEST(AdjustTriangles, EmptyWorldSucceedsAndWorldsWithoutVerticesOrMaterialsFail)
{
    VMWorld empty;
    EXPECT_EQ(AdjustTriangles(empty, Eps, 0.0f, true), 0);

    VMWorld withoutVertices;
    AddMaterial(withoutVertices);
    withoutVertices.Polygons.Add(VMWorld::NewPolygon().release());
    EXPECT_EQ(AdjustTriangles(withoutVertices, Eps, 0.0f, true), -1);

    VMWorld withoutMaterial;
    AddTriangle(withoutMaterial, AddVertex(withoutMaterial, 0, 0, 0), AddVertex(withoutMaterial, 1, 0, 0),
                AddVertex(withoutMaterial, 0, 1, 0), nullptr);
    EXPECT_EQ(AdjustTriangles(withoutMaterial, Eps, 0.0f, true), -1);
}

TEST(AdjustTriangles, PolygonWithoutMaterialGetsTheFirstMaterial)
{
    VMWorld world;
    VMMaterial* first = AddMaterial(world);
    VMPolygon* polygon =
        AddTriangle(world, AddVertex(world, 0, 0, 0), AddVertex(world, 1, 0, 0), AddVertex(world, 0, 1, 0), nullptr);
    ASSERT_EQ(AdjustTriangles(world, Eps, 0.0f, true), 0);
    EXPECT_EQ(polygon->Material(), first);
    EXPECT_EQ(first->UseCount, 1u);
    EXPECT_EQ(polygon->Corners[0]->MaterialLink, first);
}

//  c ---- d        two triangles (a b c) and (c b d), one vertex per corner: six records become
//  | \    |        four, also when the second c lies within EpsVert of the first; a colour
//  a ---- b        difference keeps the two c apart, linked as an ID vertex
TEST(AdjustTriangles, SharedEdgeOfHarvestedTrianglesBecomesSharedVertices)
{
    struct Case {
        float SecondCX;
        float EpsVert;
        bool Recoloured;
        int Vertices;
        std::vector<int> Second;
    };
    const Case cases[] = {
        {0.0f, 0.0f, false, 4, {2, 1, 3}},
        {0.04f, Eps, false, 4, {2, 1, 3}},
        {0.0f, 0.0f, true, 5, {3, 1, 4}},
    };
    for (const Case& c : cases) {
        VMWorld world;
        VMMaterial* material = AddMaterial(world);
        const float first[3][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
        const float second[3][3] = {{c.SecondCX, 1, 0}, {1, 0, 0}, {1, 1, 0}};
        VMPolygon* t1 = AddHarvestedTriangle(world, first, material);
        VMPolygon* t2 = AddHarvestedTriangle(world, second, material);
        if (c.Recoloured)
            t2->Corners[0]->Colour[0] = 0;
        LogRecorder log;
        ASSERT_EQ(AdjustTriangles(world, c.EpsVert, 0.0f, true), 0);
        ASSERT_EQ(world.Vertices.Count(), c.Vertices);
        EXPECT_EQ(CornerIndices(*t1), (std::vector<int>{0, 1, 2}));
        EXPECT_EQ(CornerIndices(*t2), c.Second);
        EXPECT_EQ(t2->Corners[0]->Position[0], 0.0f);
        EXPECT_TRUE(Validate(world).empty());
        if (c.Recoloured) {
            EXPECT_EQ(world.Vertices.Get(3)->MergeLink, world.Vertices.Get(2));
            EXPECT_TRUE(log.Has("Triangles adjusted... 1 ID vertices generated\r\n"));
        }
    }
}

TEST(AdjustTriangles, CountsDegenerateCategories)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    // Area: two corners 0.05 apart are welded onto one position.
    const float sliver[3][3] = {{0, 0, 0}, {0.05f, 0, 0}, {0, 1, 0}};
    AddHarvestedTriangle(world, sliver, material);
    // Multi: the same record at corners 0 and 3 of a pentagon (a b c a d) with an area.
    VMVertex* a = AddVertex(world, 5, 0, 0);
    VMVertex* b = AddVertex(world, 6, 0, 0);
    VMVertex* c = AddVertex(world, 6, 1, 0);
    VMVertex* d = AddVertex(world, 5, 1, 0);
    AddPolygon(world, {a, b, c, a, d}, material);
    // Normal: a plane cached with a normal that is not of unit length.
    const float tilted[3][3] = {{10, 0, 0}, {11, 0, 0}, {10, 1, 0}};
    VMPolygon* bad = AddHarvestedTriangle(world, tilted, material);
    bad->Plane[0] = 2.0;
    bad->PlaneFlags |= VMPolygon::PlaneValidFlag;
    const float good[3][3] = {{20, 0, 0}, {21, 0, 0}, {20, 1, 0}};
    AddHarvestedTriangle(world, good, material);
    // Area too: a triangle that names one record twice.
    VMVertex* twice = AddVertex(world, 30, 0, 0);
    AddTriangle(world, twice, twice, AddVertex(world, 30, 1, 0), material);
    LogRecorder log;
    ASSERT_EQ(AdjustTriangles(world, Eps, 0.0f, true), 0);
    EXPECT_EQ(world.Polygons.Count(), 1);
    EXPECT_EQ(world.Vertices.Count(), 3);
    EXPECT_TRUE(log.Has("AdjustTriangles: 4 degenerate triangles removed\r\n"));
    EXPECT_TRUE(log.Has("  (2 Area, 1 Normal, 1 Multi, 0 NonPlanar )\r\n"));
}

TEST(AdjustTriangles, QuadWithOneRepeatedCornerBecomesATriangle)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    VMVertex* a = AddVertex(world, 0, 0, 0);
    VMVertex* b = AddVertex(world, 1, 0, 0);
    VMVertex* c = AddVertex(world, 0, 1, 0);
    VMPolygon* quad = AddPolygon(world, {a, b, b, c}, material);
    ASSERT_EQ(AdjustTriangles(world, Eps, 0.0f, true), 0);
    ASSERT_EQ(world.Polygons.Count(), 1);
    EXPECT_EQ(CornerIndices(*quad), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(quad->Neighbours.size(), 3u);
}

TEST(AdjustTriangles, UnreferencedVerticesAreRemovedInOrder)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    AddVertex(world, 9, 9, 9);
    VMVertex* a = AddVertex(world, 0, 0, 0);
    AddVertex(world, 8, 8, 8);
    VMVertex* b = AddVertex(world, 1, 0, 0);
    VMVertex* c = AddVertex(world, 0, 1, 0);
    AddTriangle(world, c, a, b, material);
    LogRecorder log;
    ASSERT_EQ(AdjustTriangles(world, Eps, 0.0f, true), 0);
    ASSERT_EQ(world.Vertices.Count(), 3);
    EXPECT_EQ(world.Vertices.Get(0), a);
    EXPECT_EQ(world.Vertices.Get(1), b);
    EXPECT_EQ(world.Vertices.Get(2), c);
    EXPECT_TRUE(log.Has("2 stray vertices removed\r\n"));
}

TEST(AdjustTriangles, OptimizeMeshOffOnlySetsMaterials)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    AddVertex(world, 9, 9, 9);
    const float first[3][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const float second[3][3] = {{0, 1, 0}, {1, 0, 0}, {1, 1, 0}};
    AddHarvestedTriangle(world, first, material);
    VMPolygon* t2 = AddHarvestedTriangle(world, second, nullptr);
    ASSERT_EQ(AdjustTriangles(world, Eps, 0.0f, false), 0);
    EXPECT_EQ(world.Vertices.Count(), 7);
    EXPECT_EQ(world.Polygons.Count(), 2);
    EXPECT_EQ(t2->Material(), material);
    EXPECT_EQ(t2->Corners[2]->MaterialLink, material);
    EXPECT_EQ(world.Vertices.Get(0)->MaterialLink, nullptr);
}

std::vector<VMVertex*> Circle(VMWorld& world, int count)
{
    std::vector<VMVertex*> corners;
    for (int k = 0; k < count; ++k) {
        const double angle = 2.0 * std::numbers::pi * k / count;
        corners.push_back(
            AddVertex(world, static_cast<float>(10.0 * std::cos(angle)), static_cast<float>(10.0 * std::sin(angle)), 0));
    }
    return corners;
}

TEST(AdjustTriangles, PolygonOfMoreThanThirtyTwoCornersEndsAsTrianglesInItsVisArea)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    VMPolygon* whole = VMWorld::NewPolygon().release();
    whole->Corners = Circle(world, 32);
    whole->SetMaterial(material);
    world.Polygons.Add(whole);
    VMPolygon* polygon = VMWorld::NewPolygon().release();
    polygon->Corners = Circle(world, 40);
    for (VMVertex* corner : polygon->Corners)
        corner->Position[2] = 5.0f;
    polygon->SetMaterial(material);
    world.Polygons.Add(polygon);
    VMVisArea* area = VMWorld::NewVisArea().release();
    world.VisAreas.Add(area);
    area->Link(*polygon);
    ASSERT_EQ(AdjustTriangles(world, Eps, 0.0f, true), 0);
    ASSERT_EQ(world.Polygons.Count(), 1 + 38);
    EXPECT_EQ(world.Polygons.Get(0), whole);
    EXPECT_EQ(area->Polygons().Count(), 38);
    EXPECT_EQ(material->UseCount, 1u + 38u);
    std::set<VMVertex*> used;
    for (int k = 1; k < world.Polygons.Count(); ++k) {
        const VMPolygon* triangle = world.Polygons.Get(k);
        EXPECT_EQ(triangle->CornerCount(), 3);
        EXPECT_EQ(triangle->Material(), material);
        EXPECT_EQ(triangle->Owners.Count(), 1);
        used.insert(triangle->Corners.begin(), triangle->Corners.end());
    }
    EXPECT_EQ(used.size(), 40u);
    EXPECT_TRUE(Validate(world).empty());
}

TEST(AdjustTriangles, PatchControlVertexSharedWithAPolygonGetsItsOwnCopy)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    VMVertex* a = AddVertex(world, 0, 0, 0);
    AddTriangle(world, a, AddVertex(world, 1, 0, 0), AddVertex(world, 0, 1, 0), material);
    VMPatch* patch = VMWorld::NewPatch(true).release();
    for (int k = 0; k < VMPatch::TriangularControlCount; ++k)
        patch->Corners[static_cast<size_t>(k)] = AddVertex(world, 50.0f + static_cast<float>(k), 0, 0);
    patch->Corners[0] = a;
    world.Patches.Add(patch);
    ASSERT_EQ(AdjustTriangles(world, 0.0f, 0.0f, true), 0);
    EXPECT_NE(patch->Corners[0], a);
    EXPECT_EQ(patch->Corners[0]->Position[0], 0.0f);
    EXPECT_EQ(patch->Corners[0]->MaterialLink, material);
    EXPECT_EQ(world.Vertices.Count(), 13);
    EXPECT_EQ(patch->Corners[0]->MergeLink, a);
}

TEST(AdjustTriangles, EveryVertexIsReferencedOnRandomMeshes)
{
    for (uint32_t seed = 1; seed <= 6; ++seed) {
        VMWorld world;
        VMMaterial* material = AddMaterial(world);
        AddRandomHarvestedMesh(world, material, 400, seed, 0.05f);
        for (int i = 0; i < 10; ++i)
            AddVertex(world, 100.0f + static_cast<float>(i), 0, 0);
        const float eps = seed % 2 == 0 ? 0.0f : 0.1f;
        ASSERT_EQ(AdjustTriangles(world, eps, 0.01f, true), 0);
        EXPECT_TRUE(Validate(world).empty());
        std::set<const VMVertex*> referenced;
        for (const VMPolygon* polygon : world.Polygons) {
            ASSERT_GE(polygon->CornerCount(), 3);
            ASSERT_LE(polygon->CornerCount(), 32);
            // With EpsVert 0 the area test removes nothing, so a triangle of two corners at one
            // position stays and folds onto one record.
            const std::set<const VMVertex*> distinct(polygon->Corners.begin(), polygon->Corners.end());
            if (eps > 0.0f) {
                EXPECT_EQ(distinct.size(), polygon->Corners.size()) << "seed " << seed;
            }
            for (const VMVertex* corner : polygon->Corners) {
                ASSERT_EQ(world.Vertices.Get(static_cast<int>(corner->Index)), corner);
                EXPECT_EQ(corner->MaterialLink, material);
                referenced.insert(corner);
            }
        }
        EXPECT_EQ(referenced.size(), static_cast<size_t>(world.Vertices.Count())) << "seed " << seed;
    }
}

}
