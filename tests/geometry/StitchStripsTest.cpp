#include "geometry/CheckTriList.h"
#include "geometry/MergeTriLists.h"
#include "geometry/StitchStrips.h"

#include "StripTestWorlds.h"

#include <gtest/gtest.h>

namespace {

class JoinTriListsTest : public ::testing::Test {
protected:
    JoinTriListsTest()
    {
        for (int k = 0; k < 12; ++k)
            AddStripVertex(m_world, static_cast<float>(k), 0);
    }

    std::unique_ptr<VMTriList> MakeTriList(VMTriListKind kind, const std::vector<int>& corners)
    {
        auto triList = std::make_unique<VMTriList>();
        triList->ListKind = kind;
        for (const int corner : corners)
            triList->Corners.push_back(m_world.Vertices.Get(corner));
        return triList;
    }

    std::vector<std::vector<int>> Numbers(const std::vector<std::unique_ptr<VMTriList>>& triLists)
    {
        std::vector<std::vector<int>> numbers;
        for (const auto& triList : triLists)
            numbers.push_back(CornerNumbers(m_world, *triList));
        return numbers;
    }

    VMWorld m_world;
};

// After an even triangle count four degenerate triangles join the next strip, after an odd one five.
TEST_F(JoinTriListsTest, StripsAreJoinedByFourOrFiveDegenerateTriangles)
{
    const std::vector<int> cases[][3] = {
        {{0, 1, 2, 2, 1, 3},
         {4, 5, 6, 6, 5, 7},
         {0, 1, 2, 2, 1, 3, 2, 3, 3, 3, 3, 4, 3, 4, 4, 4, 4, 5, 4, 5, 6, 6, 5, 7}},
        {{0, 1, 2, 2, 1, 3, 2, 3, 4},
         {5, 6, 7, 7, 6, 8},
         {0, 1, 2, 2, 1, 3, 2, 3, 4, 4, 3, 3, 4, 3, 3, 3, 3, 5, 3, 5, 5, 5, 5, 6, 5, 6, 7, 7, 6, 8}},
    };
    for (const auto& [first, second, joined] : cases) {
        std::vector<std::unique_ptr<VMTriList>> strips;
        strips.push_back(MakeTriList(VMTriListKind::StripOddStart, first));
        strips.push_back(MakeTriList(VMTriListKind::StripOddStart, second));
        std::vector<std::unique_ptr<VMTriList>> stitched;
        std::vector<std::unique_ptr<VMTriList>> rest;

        StitchStrips(std::move(strips), 6, stitched, rest);

        ASSERT_EQ(stitched.size(), 1u);
        EXPECT_TRUE(rest.empty());
        EXPECT_EQ(Numbers(stitched)[0], joined);
        EXPECT_EQ(CheckTriList(*stitched[0], false), 0);
    }
}

TEST_F(JoinTriListsTest, StitchingStopsAtTheFirstShortStripAndSkipsLists)
{
    std::vector<std::unique_ptr<VMTriList>> triLists;
    triLists.push_back(MakeTriList(VMTriListKind::StripOddStart, {0, 1, 2, 2, 1, 3, 2, 3, 4}));
    triLists.push_back(MakeTriList(VMTriListKind::List, {9, 10, 11}));
    triLists.push_back(MakeTriList(VMTriListKind::StripOddStart, {5, 6, 7, 7, 6, 8}));
    triLists.push_back(MakeTriList(VMTriListKind::StripOddStart, {0, 1, 2, 2, 1, 3, 2, 3, 4}));
    std::vector<std::unique_ptr<VMTriList>> stitched;
    std::vector<std::unique_ptr<VMTriList>> rest;

    StitchStrips(std::move(triLists), 9, stitched, rest);

    EXPECT_EQ(Numbers(stitched), (std::vector<std::vector<int>>{{0, 1, 2, 2, 1, 3, 2, 3, 4}}));
    EXPECT_EQ(Numbers(rest), (std::vector<std::vector<int>>{
                                 {9, 10, 11}, {5, 6, 7, 7, 6, 8}, {0, 1, 2, 2, 1, 3, 2, 3, 4}}));
}

TEST_F(JoinTriListsTest, StripsThatWouldReach2047CornersStaySeparate)
{
    std::vector<int> longStrip;
    for (int k = 0; k < 340; ++k) {
        const bool odd = k % 2 == 1;
        longStrip.insert(longStrip.end(), {odd ? 1 : 0, odd ? 0 : 1, 2});
    }
    std::vector<std::unique_ptr<VMTriList>> strips;
    strips.push_back(MakeTriList(VMTriListKind::StripOddStart, longStrip));
    strips.push_back(MakeTriList(VMTriListKind::StripOddStart, longStrip));
    strips.push_back(MakeTriList(VMTriListKind::StripOddStart, {4, 5, 6, 6, 5, 7}));
    std::vector<std::unique_ptr<VMTriList>> stitched;
    std::vector<std::unique_ptr<VMTriList>> rest;

    StitchStrips(std::move(strips), 6, stitched, rest);

    // 1020 + 1020 + 12 reaches 2047: the second strip starts anew and takes the third.
    ASSERT_EQ(stitched.size(), 2u);
    EXPECT_EQ(stitched[0]->CornerCount(), 1020);
    EXPECT_EQ(stitched[1]->CornerCount(), 1020 + 12 + 6);
}

TEST_F(JoinTriListsTest, MergeTakesShortPiecesInReverseOrderAsListsWithoutDegenerates)
{
    std::vector<std::unique_ptr<VMTriList>> triLists;
    triLists.push_back(MakeTriList(VMTriListKind::StripOddStart, {0, 1, 2, 2, 1, 3, 2, 3, 4}));
    triLists.push_back(MakeTriList(VMTriListKind::StripOddStart, {5, 6, 7, 7, 7, 8}));
    triLists.push_back(MakeTriList(VMTriListKind::List, {9, 10, 11}));
    std::vector<std::unique_ptr<VMTriList>> kept;
    std::vector<std::unique_ptr<VMTriList>> merged;

    MergeTriLists(std::move(triLists), 9, kept, merged);

    EXPECT_EQ(Numbers(kept), (std::vector<std::vector<int>>{{0, 1, 2, 2, 1, 3, 2, 3, 4}}));
    EXPECT_EQ(Numbers(merged), (std::vector<std::vector<int>>{{9, 10, 11, 5, 6, 7}}));
    EXPECT_EQ(merged[0]->ListKind, VMTriListKind::List);
}

TEST_F(JoinTriListsTest, MergeStartsANewListBefore2047Corners)
{
    std::vector<int> thousand;
    for (int k = 0; k < 340; ++k)
        thousand.insert(thousand.end(), {0, 1, 2});
    std::vector<std::unique_ptr<VMTriList>> triLists;
    for (int k = 0; k < 3; ++k)
        triLists.push_back(MakeTriList(VMTriListKind::List, thousand));
    std::vector<std::unique_ptr<VMTriList>> kept;
    std::vector<std::unique_ptr<VMTriList>> merged;

    MergeTriLists(std::move(triLists), 9, kept, merged);

    ASSERT_EQ(merged.size(), 2u);
    EXPECT_EQ(merged[0]->CornerCount(), 2040);
    EXPECT_EQ(merged[1]->CornerCount(), 1020);
}

} // namespace
