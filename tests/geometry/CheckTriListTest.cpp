#include "geometry/CheckTriList.h"

#include "StripTestWorlds.h"

#include <gtest/gtest.h>

namespace {

class CheckTriListTest : public ::testing::Test {
protected:
    CheckTriListTest()
    {
        for (int k = 0; k < 8; ++k)
            AddStripVertex(m_world, static_cast<float>(k), 0);
    }

    std::unique_ptr<VMTriList> MakeTriList(VMTriListKind kind, std::initializer_list<int> corners)
    {
        auto triList = std::make_unique<VMTriList>();
        triList->ListKind = kind;
        for (const int corner : corners)
            triList->Corners.push_back(m_world.Vertices.Get(corner));
        return triList;
    }

    std::vector<int> Numbers(const VMTriList& triList) { return CornerNumbers(m_world, triList); }

    VMWorld m_world;
};

TEST_F(CheckTriListTest, StripsInAlternatingOrderPassAndAListPassesWithoutItsDegenerateTriangles)
{
    std::unique_ptr<VMTriList> odd = MakeTriList(VMTriListKind::StripOddStart, {0, 1, 2, 2, 1, 3, 2, 3, 4, 4, 3, 5});
    std::unique_ptr<VMTriList> even = MakeTriList(VMTriListKind::StripEvenStart, {0, 1, 2, 0, 2, 3, 3, 2, 4});
    std::unique_ptr<VMTriList> list = MakeTriList(VMTriListKind::List, {0, 0, 1, 1, 2, 3, 4, 5, 4, 5, 6, 7});

    EXPECT_EQ(CheckTriList(*odd, true), 0);
    EXPECT_EQ(CheckTriList(*even, true), 0);
    EXPECT_EQ(CheckTriList(*list, true), 0);
    EXPECT_EQ(Numbers(*odd), (std::vector<int>{0, 1, 2, 2, 1, 3, 2, 3, 4, 4, 3, 5}));
    EXPECT_EQ(Numbers(*list), (std::vector<int>{1, 2, 3, 5, 6, 7}));
}

TEST_F(CheckTriListTest, BrokenStripIsLeftAloneOrRepairedIntoAListWithoutDegenerateTriangles)
{
    // The third triangle should start with 2 3 (the second's first and third corners).
    std::unique_ptr<VMTriList> strip = MakeTriList(VMTriListKind::StripOddStart, {0, 1, 2, 2, 1, 3, 3, 3, 4, 5, 6, 7});

    EXPECT_EQ(CheckTriList(*strip, false), TriListBrokenStrip);
    EXPECT_EQ(strip->ListKind, VMTriListKind::StripOddStart);
    EXPECT_EQ(strip->CornerCount(), 12);

    EXPECT_EQ(CheckTriList(*strip, true), TriListBrokenStrip);

    EXPECT_EQ(strip->ListKind, VMTriListKind::List);
    EXPECT_EQ(Numbers(*strip), (std::vector<int>{0, 1, 2, 2, 1, 3, 5, 6, 7}));
}

TEST_F(CheckTriListTest, CountsAreTestedFirst)
{
    std::unique_ptr<VMTriList> notTriples = MakeTriList(VMTriListKind::StripOddStart, {0, 1, 2, 3});
    std::unique_ptr<VMTriList> empty = MakeTriList(VMTriListKind::List, {});
    std::unique_ptr<VMTriList> tooLong = MakeTriList(VMTriListKind::List, {});
    tooLong->Corners.assign(30003, m_world.Vertices.Get(0));

    EXPECT_EQ(CheckTriList(*notTriples, true), TriListCornersNotTriples);
    EXPECT_EQ(CheckTriList(*empty, true), TriListTooFewCorners);
    EXPECT_EQ(CheckTriList(*tooLong, true), TriListTooManyCorners);
    EXPECT_EQ(tooLong->CornerCount(), 30003);
}

} // namespace
