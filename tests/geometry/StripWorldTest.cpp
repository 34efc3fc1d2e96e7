#include "geometry/BuildConnectivity.h"
#include "geometry/CheckTriList.h"
#include "geometry/RemoveTriLists.h"
#include "geometry/StripWorld.h"
#include "model/Validate.h"
#include "report/GeometryLog.h"

#include "LogRecorder.h"
#include "StripTestWorlds.h"

#include <gtest/gtest.h>

#include <set>

namespace {

StripParams Method(int method)
{
    StripParams params;
    params.StripPerformance = method;
    params.MaxStripSize = 0.0f;
    return params;
}

// Stripping renumbers the vertices in the order it finds them again; the tests name corners by
// their numbers before stripping.
class VertexNames {
public:
    explicit VertexNames(const VMWorld& world)
        : m_records(world.Vertices.begin(), world.Vertices.end())
    {
    }

    std::vector<int> Of(const VMPrimitive& primitive) const
    {
        std::vector<int> numbers;
        for (const VMVertex* corner : primitive.Corners)
            numbers.push_back(static_cast<int>(std::find(m_records.begin(), m_records.end(), corner) - m_records.begin()));
        return numbers;
    }

    std::vector<std::vector<int>> TriLists(const VMWorld& world) const
    {
        std::vector<std::vector<int>> lists;
        for (const VMTriList* triList : world.TriLists)
            lists.push_back(Of(*triList));
        return lists;
    }

    std::vector<std::vector<int>> Polygons(const VMWorld& world) const
    {
        std::vector<std::vector<int>> polygons;
        for (const VMPolygon* polygon : world.Polygons)
            polygons.push_back(Of(*polygon));
        return polygons;
    }

private:
    std::vector<const VMVertex*> m_records;
};

// The triangles of the strip 0 1 2 3 4 5, given as separate triangles:
//
//   1---3---5
//   | \ | \ |
//   0---2---4
void AddZigzag(VMWorld& world, VMMaterial* material)
{
    AddStripVertex(world, 0, 0);
    AddStripVertex(world, 0, 1);
    AddStripVertex(world, 1, 0);
    AddStripVertex(world, 1, 1);
    AddStripVertex(world, 2, 0);
    AddStripVertex(world, 2, 1);
    AddStripTriangle(world, {0, 1, 2}, material);
    AddStripTriangle(world, {2, 1, 3}, material);
    AddStripTriangle(world, {2, 3, 4}, material);
    AddStripTriangle(world, {4, 3, 5}, material);
}

// Strip batches are not counted among those prepared for listing; existing tri-lists are cut up
// and stripped again.
TEST(StripWorld, FewestNeighboursFirstStripsTheZigzagAsOneStripAgainAndAgain)
{
    VMWorld world;
    AddZigzag(world, AddStripMaterial(world));
    const VertexNames names(world);
    LogRecorder sink;

    ASSERT_EQ(StripWorld(world, Method(2)), 0);

    ASSERT_EQ(world.TriLists.Count(), 1);
    EXPECT_EQ(names.TriLists(world)[0], (std::vector<int>{0, 1, 2, 2, 1, 3, 2, 3, 4, 4, 3, 5}));
    EXPECT_EQ(world.TriLists.Get(0)->ListKind, VMTriListKind::StripOddStart);
    EXPECT_EQ(world.Polygons.Count(), 0);
    EXPECT_EQ(sink.StartingWith("0 batches for listing prepared.\r\n").size(), 1u);

    ASSERT_EQ(StripWorld(world, Method(2)), 0);
    EXPECT_EQ(names.TriLists(world), (std::vector<std::vector<int>>{{0, 1, 2, 2, 1, 3, 2, 3, 4, 4, 3, 5}}));
}

// The look-ahead scores a start edge by walking to the edge that follows the shared one, while
// the strip itself leaves by the edge before: in the zigzag the best score belongs to triangle
// 1, edge 2, whose strip ends after two triangles.
TEST(StripWorld, LookAheadStartsAtTheBestScoredEdgeAndLeavesTheRestAsPolygons)
{
    VMWorld world;
    AddZigzag(world, AddStripMaterial(world));
    const VertexNames names(world);

    ASSERT_EQ(StripWorld(world, Method(1)), 0);

    EXPECT_EQ(names.TriLists(world), (std::vector<std::vector<int>>{{1, 3, 2, 2, 3, 4}}));
    EXPECT_EQ(names.Polygons(world), (std::vector<std::vector<int>>{{0, 1, 2}, {4, 3, 5}}));
}

TEST(StripWorld, MethodThreeMergesShortPiecesIntoOneListInReverseOrder)
{
    VMWorld world;
    AddZigzag(world, AddStripMaterial(world));
    const VertexNames names(world);

    ASSERT_EQ(StripWorld(world, Method(3)), 0);

    EXPECT_EQ(names.TriLists(world), (std::vector<std::vector<int>>{{4, 3, 5, 0, 1, 2, 1, 3, 2, 2, 3, 4}}));
    EXPECT_EQ(world.TriLists.Get(0)->ListKind, VMTriListKind::List);
}

TEST(StripWorld, ListsAreRunsOfMaxStripLengthInGatheringOrder)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    AddGrid(world, 5, 1, material);
    StripParams params = Method(4);
    params.MaxStripLength = 4;
    const VertexNames names(world);

    ASSERT_EQ(StripWorld(world, params), 0);

    // Vertices 0..5 on the bottom row, 6..11 on the top row; two triangles per cell.
    EXPECT_EQ(names.TriLists(world), (std::vector<std::vector<int>>{
                                         {0, 1, 7, 0, 7, 6, 1, 2, 8, 1, 8, 7},
                                         {2, 3, 9, 2, 9, 8, 3, 4, 10, 3, 10, 9},
                                         {4, 5, 11, 4, 11, 10},
                                     }));
    for (const VMTriList* triList : world.TriLists)
        EXPECT_EQ(triList->ListKind, VMTriListKind::List);
}

TEST(StripWorld, MaxStripLengthIsClampedToFourAndTenThousand)
{
    VMWorld two;
    AddGrid(two, 5, 1, AddStripMaterial(two));
    StripParams params = Method(4);
    params.MaxStripLength = 2;
    ASSERT_EQ(StripWorld(two, params), 0);
    VMWorld four;
    AddGrid(four, 5, 1, AddStripMaterial(four));
    params.MaxStripLength = 4;
    ASSERT_EQ(StripWorld(four, params), 0);
    EXPECT_EQ(VertexNames(two).TriLists(two), VertexNames(four).TriLists(four));
    EXPECT_EQ(two.TriLists.Count(), 3);

    VMWorld large;
    AddGrid(large, 125, 100, AddStripMaterial(large));
    params.MaxStripLength = 20000;
    ASSERT_EQ(StripWorld(large, params), 0);
    ASSERT_EQ(large.TriLists.Count(), 3);
    EXPECT_EQ(large.TriLists.Get(0)->TriangleCount(), 10000);
    EXPECT_EQ(large.TriLists.Get(1)->TriangleCount(), 10000);
    EXPECT_EQ(large.TriLists.Get(2)->TriangleCount(), 5000);
}

TEST(StripWorld, LongBatchesAreCutAtMaxStripLengthForStripsAndLists)
{
    for (const int method : {1, 4}) {
        VMWorld world;
        AddGrid(world, 125, 100, AddStripMaterial(world));
        StripParams params = Method(method);
        params.MaxStripLength = 682;

        ASSERT_EQ(StripWorld(world, params), 0);

        for (const VMTriList* triList : world.TriLists)
            EXPECT_LE(triList->CornerCount(), 2046) << "method " << method;
        EXPECT_EQ(SurfaceTriangles(world).size(), 25000u);
    }
}

TEST(StripWorld, SingleIsolatedTriangleEndsAsPolygonAgain)
{
    for (const int method : {1, 2, 3, 4}) {
        VMWorld world;
        VMMaterial* material = AddStripMaterial(world);
        AddStripVertex(world, 0, 0);
        AddStripVertex(world, 1, 0);
        AddStripVertex(world, 0, 1);
        VMPolygon* triangle = AddStripTriangle(world, {0, 1, 2}, material);
        triangle->Group = 7;
        triangle->SourceNode = 3;

        ASSERT_EQ(StripWorld(world, Method(method)), 0);

        EXPECT_EQ(world.TriLists.Count(), 0) << "method " << method;
        ASSERT_EQ(world.Polygons.Count(), 1);
        const VMPolygon& back = *world.Polygons.Get(0);
        EXPECT_EQ(CornerNumbers(world, back), (std::vector<int>{0, 1, 2}));
        EXPECT_EQ(back.Group, 7u);
        EXPECT_EQ(back.SourceNode, 3u);
        EXPECT_EQ(back.Material(), material);
        EXPECT_EQ(material->UseCount, 1u);
    }
}

TEST(StripWorld, PolygonWithFourCornersIsNeverStripped)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    AddGrid(world, 2, 1, material);
    AddStripVertex(world, 10, 0);
    AddStripVertex(world, 11, 0);
    AddStripVertex(world, 11, 1);
    AddStripVertex(world, 10, 1);
    VMPolygon* quad = VMWorld::NewPolygon().release();
    for (int k = 6; k < 10; ++k)
        quad->Corners.push_back(world.Vertices.Get(k));
    quad->SetMaterial(material);
    world.Polygons.Add(quad);

    ASSERT_EQ(StripWorld(world, Method(4)), 0);

    ASSERT_EQ(world.Polygons.Count(), 1);
    EXPECT_EQ(world.Polygons.Get(0), quad);
    EXPECT_EQ(world.TriLists.Count(), 1);
}

TEST(StripWorld, MaterialsOfKindOneOrWithoutStrippingKeepTheirTriangles)
{
    VMWorld world;
    VMMaterial* kindOne = AddStripMaterial(world, 1);
    VMMaterial* noStripping = AddStripMaterial(world);
    noStripping->NoStripping = 1;
    AddGrid(world, 2, 2, kindOne);
    AddGrid(world, 2, 2, noStripping, 10.0f);

    ASSERT_EQ(StripWorld(world, Method(3)), 0);

    EXPECT_EQ(world.TriLists.Count(), 0);
    EXPECT_EQ(world.Polygons.Count(), 16);
    EXPECT_TRUE(Validate(world).empty());
}

TEST(StripWorld, StripObjectKeepsEachSourceNodeInItsOwnTriLists)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    const std::vector<VMPolygon*> first = AddGrid(world, 4, 4, material);
    const std::vector<VMPolygon*> second = AddGrid(world, 4, 4, material, 4.0f);
    for (VMPolygon* triangle : second)
        triangle->SourceNode = 1;
    std::set<const VMVertex*> secondVertices;
    for (const VMPolygon* triangle : second)
        secondVertices.insert(triangle->Corners.begin(), triangle->Corners.end());
    StripParams params = Method(3);
    params.StripObject = true;

    ASSERT_EQ(StripWorld(world, params), 0);

    ASSERT_GE(world.TriLists.Count(), 2);
    for (const VMTriList* triList : world.TriLists) {
        const bool inSecond = triList->SourceNode == 1;
        for (const VMVertex* corner : triList->Corners)
            if ((secondVertices.count(corner) != 0) != inSecond) {
                // The two grids share the column at x = 4 only by position, not by record.
                ADD_FAILURE() << "a tri-list of node " << triList->SourceNode << " uses a vertex of the other node";
                break;
            }
    }
}

TEST(StripWorld, WithoutStripObjectTwoNodesShareABatch)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    AddGrid(world, 2, 2, material);
    for (VMPolygon* triangle : AddGrid(world, 2, 2, material, 4.0f))
        triangle->SourceNode = 1;
    LogRecorder sink;

    ASSERT_EQ(StripWorld(world, Method(4)), 0);

    EXPECT_EQ(sink.StartingWith("VA: "), (std::vector<std::string>{"VA: 0 / 0, Mat: 0 / 1, Poly: 16, Seg: 0, Tls: 0\r\n"}));
}

TEST(StripWorld, TriangleWiderThanTheCubeWaitsUntilTheDoubledCubeHoldsIt)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    // Two 25-unit triangles whose box is 35 wide: no cube of 10 or 20 holds either, the cube of
    // 40 holds both. Then a small pair that fits the first cube.
    AddStripVertex(world, 100, 0);
    AddStripVertex(world, 125, 0);
    AddStripVertex(world, 100, 1);
    AddStripVertex(world, 110, 1);
    AddStripVertex(world, 135, 1);
    AddStripVertex(world, 110, 2);
    AddStripTriangle(world, {0, 1, 2}, material);
    AddStripTriangle(world, {3, 4, 5}, material);
    AddGrid(world, 1, 1, material);
    StripParams params = Method(4);
    params.MaxStripSize = 10.0f;
    LogRecorder sink;

    ASSERT_EQ(StripWorld(world, params), 0);

    EXPECT_EQ(sink.StartingWith("VA: "), (std::vector<std::string>{
                                             "VA: 0 / 0, Mat: 0 / 1, Poly: 2, Seg: 0, Tls: 0\r\n",
                                             "VA: 0 / 0, Mat: 0 / 1, Poly: 2, Seg: 0, Tls: 1\r\n",
                                         }));
    ASSERT_EQ(world.TriLists.Count(), 2);
    EXPECT_EQ(world.TriLists.Get(1)->Corners.front()->Position[0], 100.0f);
}

// Cubes of 2.5 over a row of unit cells: a batch takes, in list order, every triangle that keeps
// its box within the cube, so an early triangle to the left of the first one closes the cube to
// the cells on the right. A lone small triangle beside the waiting wide pair is given back and
// ends the pass; it comes after the pair in the doubled cube.
TEST(StripWorld, CubesAreFilledInListOrderOverSeveralCells)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    AddGrid(world, 1, 1, material, 0.0f);          // triangles 0-1, vertices 0-3, x 0..1
    AddGrid(world, 1, 1, material, -1.0f);         // triangles 2-3, vertices 4-7, x -1..0
    AddGrid(world, 3, 1, material, 1.0f);          // triangles 4-9, vertices 8-15, x 1..4
    AddGrid(world, 1, 1, material, 10.0f, 3.0f);   // triangles 10-11, vertices 16-19, x 10..13
    AddGrid(world, 1, 1, material, 20.0f, 0.5f);   // triangles 12-13, vertices 20-23, x 20..20.5
    world.Polygons.Get(13)->Group = 1;
    const VertexNames names(world);
    StripParams params = Method(4);
    params.MaxStripSize = 2.5f;
    LogRecorder sink;

    ASSERT_EQ(StripWorld(world, params), 0);

    EXPECT_EQ(sink.StartingWith("VA: "), (std::vector<std::string>{
                                             "VA: 0 / 0, Mat: 0 / 1, Poly: 4, Seg: 0, Tls: 0\r\n",
                                             "VA: 0 / 0, Mat: 0 / 1, Poly: 4, Seg: 0, Tls: 1\r\n",
                                             "VA: 0 / 0, Mat: 0 / 1, Poly: 2, Seg: 0, Tls: 2\r\n",
                                             "VA: 0 / 0, Mat: 0 / 1, Poly: 2, Seg: 0, Tls: 3\r\n",
                                             "VA: 0 / 0, Mat: 0 / 1, Poly: 1, Seg: 0, Tls: 4\r\n",
                                             "VA: 0 / 0, Mat: 0 / 1, Poly: 1, Seg: 0, Tls: 5\r\n",
                                         }));
    EXPECT_EQ(names.TriLists(world), (std::vector<std::vector<int>>{
                                         {0, 1, 3, 0, 3, 2, 4, 5, 7, 4, 7, 6},
                                         {8, 9, 13, 8, 13, 12, 9, 10, 14, 9, 14, 13},
                                         {10, 11, 15, 10, 15, 14},
                                         {16, 17, 19, 16, 19, 18},
                                     }));
    EXPECT_EQ(names.Polygons(world), (std::vector<std::vector<int>>{{20, 21, 23}, {20, 23, 22}}));
}

TEST(StripWorld, BatchesFollowVisAreasAfterTheTrianglesOutsideThem)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    VMVisArea* area = world.VisAreas.Add(VMWorld::NewVisArea()) == 0 ? world.VisAreas.Get(0) : nullptr;
    ASSERT_NE(area, nullptr);
    AddGrid(world, 2, 1, material, 0.0f, 1.0f, area);
    AddGrid(world, 1, 1, material, 10.0f);
    LogRecorder sink;

    ASSERT_EQ(StripWorld(world, Method(4)), 0);

    EXPECT_EQ(sink.StartingWith("VA: "), (std::vector<std::string>{
                                             "VA: 0 / 1, Mat: 0 / 1, Poly: 2, Seg: 0, Tls: 0\r\n",
                                             "VA: 1 / 1, Mat: 0 / 1, Poly: 4, Seg: 0, Tls: 1\r\n",
                                         }));
    ASSERT_EQ(world.TriLists.Count(), 2);
    EXPECT_TRUE(world.TriLists.Get(0)->Owners.IsEmpty());
    ASSERT_EQ(area->TriLists().Count(), 1);
    EXPECT_EQ(area->TriLists().Get(0), world.TriLists.Get(1));
    EXPECT_TRUE(Validate(world).empty());
}

TEST(StripWorld, TrianglesListedByTwoVisAreasStayPolygons)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    world.VisAreas.Add(VMWorld::NewVisArea());
    world.VisAreas.Add(VMWorld::NewVisArea());
    for (VMPolygon* triangle : AddGrid(world, 1, 1, material, 0.0f, 1.0f, world.VisAreas.Get(0)))
        world.VisAreas.Get(1)->Link(*triangle);

    ASSERT_EQ(StripWorld(world, Method(4)), 0);

    EXPECT_EQ(world.TriLists.Count(), 0);
    EXPECT_EQ(world.VisAreas.Get(0)->Polygons().Count(), 2);
    EXPECT_EQ(world.VisAreas.Get(1)->Polygons().Count(), 2);
    EXPECT_TRUE(Validate(world).empty());
}

TEST(StripWorld, UnreferencedVerticesAreFreedAndTheRestKeepDiscoveryOrder)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    AddStripVertex(world, 50, 50);
    AddGrid(world, 1, 1, material);

    ASSERT_EQ(StripWorld(world, Method(4)), 0);

    ASSERT_EQ(world.Vertices.Count(), 4);
    EXPECT_EQ(CornerNumbers(world, *world.TriLists.Get(0)), (std::vector<int>{0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(world.Vertices.Get(1)->Position[0], 1.0f);
    EXPECT_EQ(world.Vertices.Get(1)->Index, 1u);
}

TEST(StripWorld, IdLinksAreRebuiltForVerticesThatShareAPosition)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    AddGrid(world, 1, 1, material);
    AddGrid(world, 1, 1, material, 1.0f);

    ASSERT_EQ(StripWorld(world, Method(4)), 0);

    int linked = 0;
    for (const VMVertex* vertex : world.Vertices)
        if (vertex->MergeLink != nullptr) {
            ++linked;
            EXPECT_EQ(vertex->MergeLink->Position[0], vertex->Position[0]);
            EXPECT_LT(vertex->MergeLink->Index, vertex->Index);
        }
    EXPECT_EQ(linked, 2);
}

TEST(StripWorld, UnknownMethodLeavesTheWorldUntouched)
{
    VMWorld world;
    AddGrid(world, 2, 2, AddStripMaterial(world));

    ASSERT_EQ(StripWorld(world, Method(0)), 0);

    EXPECT_EQ(world.Polygons.Count(), 8);
    EXPECT_EQ(world.TriLists.Count(), 0);
}

TEST(StripWorld, LogsProgressAndTheTriListCount)
{
    VMWorld world;
    AddGrid(world, 3, 3, AddStripMaterial(world));
    LogRecorder sink;
    StripStatistics statistics;

    ASSERT_EQ(StripWorld(world, Method(4), &statistics), 0);

    EXPECT_EQ(sink.Lines.front(), "Stripping started...\r\n");
    EXPECT_EQ(sink.StartingWith("1 batches for listing prepared.\r\n").size(), 1u);
    EXPECT_EQ(sink.Lines.back(), "1 strips and lists generated\r\n");
    EXPECT_EQ(sink.StartingWith("Sanity check...").size(), 1u);
    EXPECT_EQ(sink.StartingWith("Survival of ").size(), 3u);
    EXPECT_EQ(statistics.TriListCount, 1);
    EXPECT_EQ(statistics.MaterialCount, 1);
}

//   1   3   5   7      four separate triangles of one material; the names split them into two
//   |\  |\  |\  |\     batches, whose short lists still end in one list, the later batch's first
//   0-2 2-4 4-6 6-8    and each in reverse order; neither batch counts as one for listing
TEST(StripWorld, ShortListsOfBatchesSplitByTheirAttributesAreMergedIntoOne)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    for (int column = 0; column < 4; ++column) {
        AddStripVertex(world, static_cast<float>(3 * column), 0);
        AddStripVertex(world, static_cast<float>(3 * column), 1);
        AddStripVertex(world, static_cast<float>(3 * column + 1), 0);
        AddStripTriangle(world, {3 * column, 3 * column + 2, 3 * column + 1}, material)->Name =
            column < 2 ? "left" : "right";
    }
    const VertexNames names(world);
    LogRecorder sink;

    ASSERT_EQ(StripWorld(world, Method(3)), 0);

    EXPECT_EQ(names.TriLists(world), (std::vector<std::vector<int>>{{9, 11, 10, 6, 8, 7, 3, 5, 4, 0, 2, 1}}));
    EXPECT_EQ(world.Polygons.Count(), 0);
    EXPECT_TRUE(sink.Has("0 batches for listing prepared.\r\n"));
}

TEST(StripWorld, ListLeftWithoutTrianglesByTheRepairStays)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    AddStripVertex(world, 0, 0);
    AddStripVertex(world, 1, 0);
    AddStripVertex(world, 0, 1);
    AddStripTriangle(world, {0, 0, 1}, material);
    AddStripTriangle(world, {1, 2, 2}, material);

    ASSERT_EQ(StripWorld(world, Method(4)), 0);

    ASSERT_EQ(world.TriLists.Count(), 1);
    EXPECT_EQ(world.TriLists.Get(0)->CornerCount(), 0);
    EXPECT_EQ(world.Polygons.Count(), 0);
}

// The zigzag with its third triangle wound the other way (2 4 3 instead of 2 3 4). Carrying the
// strip on across edge 2-3 would give 0 1 2 3 4 5 and turn that triangle over, so the strip stops
// after two triangles; too short to stay a strip, it is merged into a list with the other two,
// and every triangle keeps its facing.
TEST(StripWorld, StripNeverCrossesAnEdgeThatBothTrianglesRunTheSameWay)
{
    VMWorld world;
    VMMaterial* material = AddStripMaterial(world);
    for (int column = 0; column < 3; ++column) {
        AddStripVertex(world, static_cast<float>(column), 0);
        AddStripVertex(world, static_cast<float>(column), 1);
    }
    AddStripTriangle(world, {0, 1, 2}, material);
    AddStripTriangle(world, {2, 1, 3}, material);
    AddStripTriangle(world, {2, 4, 3}, material);
    AddStripTriangle(world, {4, 3, 5}, material);
    const std::vector<PositionTriangle> before = SurfaceTriangles(world);
    const VertexNames names(world);

    ASSERT_EQ(StripWorld(world, Method(2)), 0);

    EXPECT_EQ(names.TriLists(world), (std::vector<std::vector<int>>{{4, 3, 5, 2, 4, 3, 0, 1, 2, 2, 1, 3}}));
    EXPECT_EQ(world.TriLists.Get(0)->ListKind, VMTriListKind::List);
    EXPECT_EQ(SurfaceTriangles(world), before);
}

} // namespace
