#include "geometry/BuildConnectivity.h"
#include "geometry/StripBuilder.h"

#include "StripTestWorlds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace {

// The strip builder as written step by step: every step scans all free triangles for the
// start, and every score walks afresh. The builder under test keeps its candidates in a heap
// and must choose exactly the same starts.
class ReferenceStripBuilder {
public:
    ReferenceStripBuilder(VMWorld& world, int method, int minStripLength)
        : m_world(world)
        , m_method(method)
        , m_minStripLength(minStripLength)
        , m_used(static_cast<size_t>(world.Polygons.Count()), false)
    {
        BuildConnectivity(world, false);
    }

    StripBatchOutput Run()
    {
        StripBatchOutput output;
        for (;;) {
            int start = -1;
            int edge = 0;
            int best = 0;
            if (m_method == 2) {
                int fewest = 999;
                for (int triangle = 0; triangle < Count(); ++triangle)
                    if (!m_used[static_cast<size_t>(triangle)] && FreeNeighbours(triangle) < fewest) {
                        fewest = FreeNeighbours(triangle);
                        start = triangle;
                    }
                if (start >= 0)
                    for (int e = 0; e < 3; ++e)
                        if (Score(start, e) > best) {
                            best = Score(start, e);
                            edge = e;
                        }
            } else {
                for (int triangle = 0; triangle < Count(); ++triangle)
                    for (int e = 0; e < 3 && !m_used[static_cast<size_t>(triangle)]; ++e)
                        if (Score(triangle, e) > best) {
                            best = Score(triangle, e);
                            start = triangle;
                            edge = e;
                        }
            }
            if (start < 0)
                return output;
            const int segmentStart = static_cast<int>(output.Triangles.size());
            if (FreeNeighbours(start) == 0 || best < m_minStripLength - 1) {
                Append(output, start, 0);
                output.Segments.push_back({segmentStart, 1, -1});
                continue;
            }
            Append(output, start, (edge + 2) % 3);
            int length = 1;
            int current = Walkable(start, edge);
            int shared = Shared(start, edge);
            bool before = true;
            while (current >= 0 && !m_used[static_cast<size_t>(current)]) {
                Append(output, current, shared);
                ++length;
                const int leaving = before ? (shared + 2) % 3 : (shared + 1) % 3;
                const int next = Walkable(current, leaving);
                if (next < 0 || m_used[static_cast<size_t>(next)])
                    break;
                shared = Shared(current, leaving);
                current = next;
                before = !before;
            }
            output.Segments.push_back({segmentStart, length, 2 * edge + 1});
        }
    }

private:
    int Count() const { return m_world.Polygons.Count(); }
    VMVertex* Corner(int triangle, int corner) const { return m_world.Polygons.Get(triangle)->Corners[static_cast<size_t>(corner % 3)]; }

    int Neighbour(int triangle, int edge) const
    {
        const VMPolygon* neighbour = m_world.Polygons.Get(triangle)->Neighbours[static_cast<size_t>(edge)];
        return neighbour == nullptr ? -1 : m_world.Polygons.Find(neighbour);
    }

    int Shared(int triangle, int edge) const
    {
        const int neighbour = Neighbour(triangle, edge);
        for (int other = 0; other < 3 && neighbour >= 0; ++other)
            if (Corner(neighbour, other) == Corner(triangle, edge + 1) && Corner(neighbour, other + 1) == Corner(triangle, edge))
                return other;
        return -1;
    }

    int Walkable(int triangle, int edge) const { return Shared(triangle, edge) < 0 ? -1 : Neighbour(triangle, edge); }

    int FreeNeighbours(int triangle) const
    {
        int count = 0;
        for (int edge = 0; edge < 3; ++edge)
            if (Neighbour(triangle, edge) >= 0 && !m_used[static_cast<size_t>(Neighbour(triangle, edge))])
                ++count;
        return count;
    }

    int Score(int start, int edge) const
    {
        const auto isFree = [this](int triangle) { return triangle >= 0 && !m_used[static_cast<size_t>(triangle)]; };
        const int first = Walkable(start, edge);
        if (!isFree(first))
            return 1;
        std::set<int> walk{start, first};
        int leaving = (Shared(start, edge) + 1) % 3;
        int current = Walkable(first, leaving);
        if (!isFree(current) || walk.count(current) != 0)
            return 2;
        int shared = Shared(first, leaving);
        int depth = 3;
        bool after = false;
        for (;;) {
            walk.insert(current);
            leaving = after ? (shared + 1) % 3 : (shared + 2) % 3;
            const int next = Walkable(current, leaving);
            if (!isFree(next) || walk.count(next) != 0)
                return depth;
            ++depth;
            shared = Shared(current, leaving);
            current = next;
            after = !after;
        }
    }

    void Append(StripBatchOutput& output, int triangle, int firstCorner)
    {
        for (int corner = 0; corner < 3; ++corner)
            output.Corners.push_back(Corner(triangle, firstCorner + corner));
        output.Triangles.push_back(triangle);
        m_used[static_cast<size_t>(triangle)] = true;
    }

    VMWorld& m_world;
    int m_method;
    int m_minStripLength;
    std::vector<bool> m_used;
};

void AddRandomTriangles(VMWorld& world, std::mt19937& random)
{
    VMMaterial* material = AddStripMaterial(world);
    const int columns = 2 + static_cast<int>(random() % 8);
    const int rows = 2 + static_cast<int>(random() % 8);
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column <= columns; ++column)
            AddStripVertex(world, static_cast<float>(column), static_cast<float>(row));
    const auto at = [&](int column, int row) { return row * (columns + 1) + column; };
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            if (random() % 9 == 0)
                continue;
            // Cells split along either diagonal, some triangles flipped, some given twice.
            const bool otherDiagonal = random() % 3 == 0;
            Triangle cell[2] = {{at(column, row), at(column + 1, row), at(column + 1, row + 1)},
                                {at(column, row), at(column + 1, row + 1), at(column, row + 1)}};
            if (otherDiagonal) {
                cell[0] = {at(column, row), at(column + 1, row), at(column, row + 1)};
                cell[1] = {at(column + 1, row), at(column + 1, row + 1), at(column, row + 1)};
            }
            for (Triangle triangle : cell) {
                if (random() % 11 == 0)
                    std::swap(triangle[0], triangle[1]);
                AddStripTriangle(world, triangle, material);
                if (random() % 23 == 0)
                    AddStripTriangle(world, triangle, material);
            }
        }
    world.Polygons.Rearrange([&random](std::vector<VMPolygon*>& polygons) { std::shuffle(polygons.begin(), polygons.end(), random); });
}

class StripBuilderMatchesReference : public ::testing::TestWithParam<unsigned> {};

TEST_P(StripBuilderMatchesReference, ForEveryMethodAndMinimumLength)
{
    for (const int method : {1, 2, 3}) {
        for (const int minStripLength : {3, 4, 6}) {
            std::mt19937 random(GetParam());
            VMWorld world;
            AddRandomTriangles(world, random);
            const std::vector<VMPolygon*> batch(world.Polygons.begin(), world.Polygons.end());

            StripBatchOutput built;
            ASSERT_EQ(BuildStrips(batch, method, minStripLength, world.Vertices.Count(), built), 0);
            const StripBatchOutput expected = ReferenceStripBuilder(world, method, minStripLength).Run();

            SCOPED_TRACE(testing::Message() << "method " << method << ", minimum " << minStripLength);
            EXPECT_EQ(built.Corners, expected.Corners);
            EXPECT_EQ(built.Triangles, expected.Triangles);
            ASSERT_EQ(built.Segments.size(), expected.Segments.size());
            for (size_t segment = 0; segment < built.Segments.size(); ++segment) {
                EXPECT_EQ(built.Segments[segment].Start, expected.Segments[segment].Start);
                EXPECT_EQ(built.Segments[segment].Count, expected.Segments[segment].Count);
                EXPECT_EQ(built.Segments[segment].Type, expected.Segments[segment].Type);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(RandomMeshes, StripBuilderMatchesReference, ::testing::Range(1u, 21u));

} // namespace
