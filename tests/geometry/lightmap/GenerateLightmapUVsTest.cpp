#include "geometry/lightmap/GenerateLightmapUVs.h"

#include "base/TextUtil.h"
#include "model/VMWorld.h"
#include "report/VGLogger.h"

#include "../TestWorlds.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <limits>
#include <string>
#include <vector>

namespace {

class RecordingLogger final : public VGLogger {
public:
    void Print(const char* format, ...) override
    {
        va_list args;
        va_start(args, format);
        Lines.push_back(FormatV(format, args));
        va_end(args);
    }
    void Warning(const char* format, ...) override
    {
        va_list args;
        va_start(args, format);
        Warnings.push_back(FormatV(format, args));
        va_end(args);
    }
    std::vector<std::string> Lines;
    std::vector<std::string> Warnings;
};

VMMaterial* AddNamedMaterial(VMWorld& world, const char* name)
{
    VMMaterial* material = AddMaterial(world);
    material->Name = name;
    return material;
}

// Two triangles of a unit square; answers the four vertices.
std::vector<VMVertex*> AddSquare(VMWorld& world, VMMaterial* material, float x)
{
    std::vector<VMVertex*> v {AddVertex(world, x, 0, 0), AddVertex(world, x + 1, 0, 0), AddVertex(world, x, 1, 0),
                              AddVertex(world, x + 1, 1, 0)};
    AddTriangle(world, v[0], v[1], v[2], material);
    AddTriangle(world, v[2], v[1], v[3], material);
    return v;
}

bool InUnitSquare(const VMVertex& vertex)
{
    return vertex.SecondUV[0] >= 0.0f && vertex.SecondUV[0] <= 1.0f && vertex.SecondUV[1] >= 0.0f &&
           vertex.SecondUV[1] <= 1.0f;
}

TEST(GenerateLightmapUVs, UnwrapsEachMaterialInListOrderAndLogsEveryStep)
{
    VMWorld world;
    VMMaterial* stone = AddNamedMaterial(world, "stone");
    AddNamedMaterial(world, "unused");
    VMMaterial* wood = AddNamedMaterial(world, "wood");
    AddSquare(world, wood, 0);
    AddSquare(world, stone, 5);
    RecordingLogger logger;

    EXPECT_EQ(GenerateLightmapUVs(world, 64, 0.1f, &logger), 0);
    EXPECT_EQ(logger.Lines, (std::vector<std::string>{"Processing material: stone (0/3)\r\n", "Creating mesh\r\n",
                                                      "AtlasCreate\n", "Processing material: unused (1/3)\r\n",
                                                      "Processing material: wood (2/3)\r\n", "Creating mesh\r\n",
                                                      "AtlasCreate\n", "Done"}));
    EXPECT_TRUE(logger.Warnings.empty());
    EXPECT_EQ(world.HasSecondUV, 1);
    // Stone's vertices and triangles come first now; each square is one chart.
    ASSERT_EQ(world.Vertices.Count(), 8);
    ASSERT_EQ(world.Polygons.Count(), 4);
    EXPECT_EQ(world.Polygons.Get(0)->Material(), stone);
    EXPECT_EQ(world.Polygons.Get(2)->Material(), wood);
    EXPECT_EQ(world.Vertices.Get(0)->Position[0], 5.0f);
    EXPECT_EQ(world.Vertices.Get(7)->Index, 7u);
    EXPECT_EQ(stone->UseCount, 2u);
    for (const VMVertex* vertex : world.Vertices)
        EXPECT_TRUE(InUnitSquare(*vertex));
}

TEST(GenerateLightmapUVs, GivesAVertexSharedByTwoMaterialsACopyInEach)
{
    //  2 --- 3     triangle (0, 1, 2) is stone, (2, 1, 3) wood: vertices 1 and 2 are shared.
    //  | \   |
    //  0 --- 1
    VMWorld world;
    VMMaterial* stone = AddMaterial(world);
    VMMaterial* wood = AddMaterial(world);
    VMVertex* v0 = AddVertex(world, 0, 0, 0);
    VMVertex* v1 = AddVertex(world, 1, 0, 0);
    VMVertex* v2 = AddVertex(world, 0, 1, 0);
    VMVertex* v3 = AddVertex(world, 1, 1, 0);
    AddTriangle(world, v0, v1, v2, stone);
    AddTriangle(world, v2, v1, v3, wood);

    EXPECT_EQ(GenerateLightmapUVs(world, 64, 0.1f, nullptr), 0);
    ASSERT_EQ(world.Vertices.Count(), 6);
    const VMPolygon& first = *world.Polygons.Get(0);
    const VMPolygon& second = *world.Polygons.Get(1);
    EXPECT_EQ(CornerIndices(first), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(CornerIndices(second), (std::vector<int>{3, 4, 5}));
    // The copies of vertex 2 and 1 in wood are ID vertices of those in stone.
    EXPECT_EQ(second.Corners[0]->MergeLink, first.Corners[2]);
    EXPECT_EQ(second.Corners[1]->MergeLink, first.Corners[1]);
    EXPECT_EQ(second.Corners[2]->MergeLink, nullptr);
}

TEST(GenerateLightmapUVs, CopiesEveryVertexAttributeButTheColourWhichTurnsWhite)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    VMVertex* corners[3] = {AddVertex(world, 0, 0, 0), AddVertex(world, 2, 0, 0), AddVertex(world, 0, 3, 0)};
    for (VMVertex* vertex : corners) {
        vertex->Normal[0] = 0.6f;
        vertex->Normal[2] = 0.8f;
        vertex->BaseUV[0] = 0.25f;
        vertex->BaseUV[1] = 0.75f;
        vertex->Tangent[1] = 1.0f;
        vertex->Colour[0] = 10;
        vertex->Colour[3] = 40;
        vertex->SmoothingMask = 5;
        vertex->GroupNumber = 7;
        vertex->Attachment = std::make_unique<VMVertexAttachment>(VMVertexAttachment{{1, 2, 3}});
    }
    AddTriangle(world, corners[0], corners[1], corners[2], material);

    EXPECT_EQ(GenerateLightmapUVs(world, 64, 0.1f, nullptr), 0);
    ASSERT_EQ(world.Vertices.Count(), 3);
    for (int i = 0; i < 3; ++i) {
        const VMVertex& copy = *world.Vertices.Get(i);
        EXPECT_EQ(copy.Position[1], i == 2 ? 3.0f : 0.0f);
        EXPECT_EQ(copy.Normal[0], 0.6f);
        EXPECT_EQ(copy.Normal[2], 0.8f);
        EXPECT_EQ(copy.BaseUV[0], 0.25f);
        EXPECT_EQ(copy.BaseUV[1], 0.75f);
        EXPECT_EQ(copy.Tangent[1], 1.0f);
        EXPECT_EQ(std::vector<int>(std::begin(copy.Colour), std::end(copy.Colour)), (std::vector<int>{255, 255, 255, 255}));
        EXPECT_EQ(copy.SmoothingMask, 5u);
        EXPECT_EQ(copy.GroupNumber, 7u);
        ASSERT_NE(copy.Attachment, nullptr);
        EXPECT_EQ(copy.Attachment->Data, (std::vector<uint8_t>{1, 2, 3}));
        EXPECT_EQ(copy.MaterialLink, material);
        EXPECT_TRUE(InUnitSquare(copy));
    }
    // The atlas keeps the triangle's shape: sides 2 and 3 long stay in that ratio.
    const VMVertex& a = *world.Vertices.Get(0);
    const VMVertex& b = *world.Vertices.Get(1);
    const VMVertex& c = *world.Vertices.Get(2);
    const float ab = std::hypot(b.SecondUV[0] - a.SecondUV[0], b.SecondUV[1] - a.SecondUV[1]);
    const float ac = std::hypot(c.SecondUV[0] - a.SecondUV[0], c.SecondUV[1] - a.SecondUV[1]);
    EXPECT_NEAR(ac / ab, 1.5f, 1e-4f);
}

// A closed cube cannot lie flat in one piece: its charts meet along seams, where each vertex
// is copied per chart with the same position and base UV but its own place in the atlas.
TEST(GenerateLightmapUVs, LinksTheCopiesAlongASeamAsIDVertices)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    VMVertex* v[8];
    for (int i = 0; i < 8; ++i)
        v[i] = AddVertex(world, float(i & 1), float((i >> 1) & 1), float(i >> 2));
    const int faces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
    for (const auto& f : faces) {
        AddTriangle(world, v[f[0]], v[f[1]], v[f[2]], material);
        AddTriangle(world, v[f[0]], v[f[2]], v[f[3]], material);
    }

    EXPECT_EQ(GenerateLightmapUVs(world, 128, 0.1f, nullptr), 0);
    int seamCopies = 0;
    for (int i = 0; i < world.Vertices.Count(); ++i) {
        const VMVertex& vertex = *world.Vertices.Get(i);
        const VMVertex* first = nullptr;
        for (int j = 0; j < i && !first; ++j) {
            const VMVertex& earlier = *world.Vertices.Get(j);
            if (std::equal(std::begin(earlier.Position), std::end(earlier.Position), vertex.Position))
                first = &earlier;
        }
        EXPECT_EQ(vertex.MergeLink, first);
        if (first) {
            ++seamCopies;
            EXPECT_EQ(first->MergeLink, nullptr);
            EXPECT_EQ(first->BaseUV[0], vertex.BaseUV[0]);
            EXPECT_TRUE(first->SecondUV[0] != vertex.SecondUV[0] || first->SecondUV[1] != vertex.SecondUV[1]);
        }
    }
    EXPECT_GT(seamCopies, 0);
}

TEST(GenerateLightmapUVs, PutsEachNewTriangleInTheOldOnesPlaceWithItsAttributes)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    AddSquare(world, material, 0);
    VMPolygon* old0 = world.Polygons.Get(0);
    VMPolygon* old1 = world.Polygons.Get(1);
    old1->SourceNode = 3;
    old1->Group = 2;
    old1->Name = "wall";
    old1->CollisionFlags = 9;
    old1->Plane[3] = 4.0;
    old1->PlaneFlags = VMPolygon::PlaneValidFlag;
    VMVisArea* hall = world.VisAreas.Add(VMWorld::NewVisArea()) == 0 ? world.VisAreas.Get(0) : nullptr;
    VMVisArea* porch = world.VisAreas.Add(VMWorld::NewVisArea()) == 0 ? world.VisAreas.Get(1) : nullptr;
    hall->Link(*old0);
    hall->Link(*old1);
    porch->Link(*old1);

    EXPECT_EQ(GenerateLightmapUVs(world, 64, 0.1f, nullptr), 0);
    const VMPolygon* new0 = world.Polygons.Get(0);
    const VMPolygon* new1 = world.Polygons.Get(1);
    EXPECT_EQ(hall->Polygons()[0], new0);
    EXPECT_EQ(hall->Polygons()[1], new1);
    EXPECT_EQ(hall->ElementCount(), 2);
    EXPECT_EQ(porch->Polygons().Count(), 1);
    EXPECT_EQ(porch->Polygons()[0], new1);
    EXPECT_EQ(new1->Owners.Count(), 2);
    EXPECT_EQ(new1->SourceNode, 3u);
    EXPECT_EQ(new1->Group, 2u);
    EXPECT_EQ(new1->Name, "wall");
    EXPECT_EQ(new1->CollisionFlags, 9);
    EXPECT_EQ(new1->Plane[3], 4.0);
    EXPECT_TRUE(new1->HasValidPlane());
    EXPECT_EQ(material->UseCount, 2u);
}

// The failing material: a position that is not a number, or more separate triangles than an
// atlas of 32 texels has room for with their gutters.
class FailingMaterial : public ::testing::TestWithParam<bool> {};

TEST_P(FailingMaterial, LosesItsTrianglesWhileTheOthersAreUnwrapped)
{
    VMWorld world;
    VMMaterial* good = AddNamedMaterial(world, "good");
    VMMaterial* bad = AddNamedMaterial(world, "bad");
    AddSquare(world, good, 0);
    if (GetParam()) {
        AddSquare(world, bad, 5)[3]->Position[2] = std::numeric_limits<float>::quiet_NaN();
    } else {
        for (int t = 0; t < 40; ++t) {
            const float points[3][3] = {{10.0f * t, 5, 0}, {10.0f * t + 1, 5, 0}, {10.0f * t, 6, 0}};
            AddHarvestedTriangle(world, points, bad);
        }
    }
    VMVisArea* area = world.VisAreas.Add(VMWorld::NewVisArea()) == 0 ? world.VisAreas.Get(0) : nullptr;
    area->Link(*world.Polygons.Get(0));
    area->Link(*world.Polygons.Get(2));
    RecordingLogger logger;

    EXPECT_EQ(GenerateLightmapUVs(world, 32, 0.1f, &logger), -2160);
    EXPECT_EQ(logger.Warnings, (std::vector<std::string>{"AtlasCreate failed! Skipping material!\r\n"}));
    EXPECT_EQ(logger.Lines.back(), "Done");
    ASSERT_EQ(world.Polygons.Count(), 2);
    EXPECT_EQ(world.Vertices.Count(), 4);
    for (const VMPolygon* polygon : world.Polygons)
        EXPECT_EQ(polygon->Material(), good);
    EXPECT_EQ(bad->UseCount, 0u);
    EXPECT_EQ(world.Materials.Count(), 2);
    ASSERT_EQ(area->Polygons().Count(), 1);
    EXPECT_EQ(area->Polygons()[0], world.Polygons.Get(0));
    EXPECT_EQ(world.HasSecondUV, 1);
}

INSTANTIATE_TEST_SUITE_P(NotANumberOrNoRoom, FailingMaterial, ::testing::Bool());

// Worlds whose vertices something besides triangles of listed materials uses.
class RefusedWorld : public ::testing::TestWithParam<int> {};

TEST_P(RefusedWorld, IsLeftUntouched)
{
    VMWorld world;
    VMMaterial* material = AddMaterial(world);
    std::vector<VMVertex*> v = AddSquare(world, material, 0);
    switch (GetParam()) {
    case 0: AddPolygon(world, {v[0], v[1], v[3], v[2]}, material); break;
    case 1: {
        VMPatch* patch = VMWorld::NewPatch(true).release();
        std::fill(patch->Corners.begin(), patch->Corners.end(), v[0]);
        world.Patches.Add(patch);
        break;
    }
    case 2: {
        VMMaterial stray;
        world.Polygons.Get(0)->SetMaterial(&stray);
        EXPECT_EQ(GenerateLightmapUVs(world, 64, 0.1f, nullptr), -1);
        world.Polygons.Get(0)->SetMaterial(material);
        EXPECT_EQ(world.Polygons.Get(0)->Corners[0], v[0]);
        return;
    }
    default: {
        // A corner outside the vertex list, numbered as if it were the list's first vertex.
        VMVertex stray;
        v[3]->Index = 7;
        VMVertex*& corner = world.Polygons.Get(1)->Corners[2];
        corner = &stray;
        EXPECT_EQ(GenerateLightmapUVs(world, 64, 0.1f, nullptr), -1);
        corner = v[3];
        EXPECT_EQ(v[3]->Index, 7u);
        EXPECT_EQ(world.Polygons.Get(1)->Corners[0], v[2]);
        return;
    }
    }
    EXPECT_EQ(GenerateLightmapUVs(world, 64, 0.1f, nullptr), -1);
    EXPECT_EQ(world.Vertices.Get(0), v[0]);
    EXPECT_EQ(world.Polygons.Get(0)->Corners[0], v[0]);
    EXPECT_EQ(world.HasSecondUV, 0);
}

INSTANTIATE_TEST_SUITE_P(QuadPatchUnlistedMaterialOrStrayCorner, RefusedWorld, ::testing::Range(0, 4));

TEST(GenerateLightmapUVs, LeavesAWorldWithoutPolygonsAlone)
{
    VMWorld world;
    AddMaterial(world);
    AddVertex(world, 0, 0, 0);
    RecordingLogger logger;
    EXPECT_EQ(GenerateLightmapUVs(world, 64, 0.1f, &logger), 0);
    EXPECT_TRUE(logger.Lines.empty());
    EXPECT_EQ(world.Vertices.Count(), 1);
    EXPECT_EQ(world.HasSecondUV, 0);
}

} // namespace
