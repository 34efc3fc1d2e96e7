#include "geometry/ExactPositionGroups.h"
#include "geometry/MemberTable.h"

#include "TestWorlds.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

struct KeyOfValue {
    const std::vector<int>* Values;
    int operator()(int member) const { return (*Values)[static_cast<size_t>(member)]; }
};

struct MixedHash {
    uint64_t operator()(int key) const { return HashWords(static_cast<uint64_t>(key), 0, 0); }
};

struct ConstantHash {
    uint64_t operator()(int) const { return 0xABCDEF0123456789ull; }
};

template <class Hash>
void ExpectEveryKeyFoundAfterGrowing(int keyCount)
{
    std::vector<int> values;
    for (int i = 0; i < keyCount; ++i)
        values.push_back(i * 7 - 3000);
    // Each key twice: the second meeting finds the first member.
    MemberTable<int, KeyOfValue, Hash> table(0, KeyOfValue{&values}, Hash{});
    for (int member = 0; member < keyCount; ++member) {
        int& slot = table.Member(values[static_cast<size_t>(member)]);
        ASSERT_EQ(slot, -1) << member;
        slot = member;
    }
    for (int member = 0; member < keyCount; ++member) {
        EXPECT_EQ(table.Member(values[static_cast<size_t>(member)]), member);
        EXPECT_EQ(table.Find(values[static_cast<size_t>(member)]), member);
    }
    EXPECT_EQ(table.Find(1), -1);
    EXPECT_EQ(table.Find(keyCount * 7), -1);
}

// With a constant hash every key is on one probe chain, so only the members' own keys tell them apart.
TEST(MemberTable, GrowsFromNoGuessAndKeepsEveryKeyEvenWhenAllHashAlike)
{
    ExpectEveryKeyFoundAfterGrowing<MixedHash>(20000);
    ExpectEveryKeyFoundAfterGrowing<ConstantHash>(300);
}

std::vector<int> RingFrom(const ExactPositionGroups& groups, int start)
{
    std::vector<int> ring{start};
    for (int member = groups.Next(start); member != start; member = groups.Next(member))
        ring.push_back(member);
    return ring;
}

TEST(ExactPositionGroups, RingsRunInListOrderAndFoldNegativeZero)
{
    VMWorld world;
    AddVertex(world, 1.0f, 2.0f, 3.0f);
    AddVertex(world, 0.0f, 5.0f, 0.0f);
    AddVertex(world, 1.0f, 2.0f, 3.0f);
    AddVertex(world, -0.0f, 5.0f, -0.0f);
    AddVertex(world, std::numeric_limits<float>::quiet_NaN(), 2.0f, 3.0f);
    AddVertex(world, 1.0f, 2.0f, 3.0f);
    AddVertex(world, 1.0f, 2.0f, std::numeric_limits<float>::infinity());
    AddVertex(world, 9.0f, 9.0f, 9.0f);
    const ExactPositionGroups groups(world.Vertices, 0);

    EXPECT_EQ(RingFrom(groups, 0), (std::vector<int>{0, 2, 5}));
    EXPECT_EQ(RingFrom(groups, 2), (std::vector<int>{2, 5, 0}));
    EXPECT_TRUE(groups.IsHighest(5));
    EXPECT_FALSE(groups.IsHighest(0));
    EXPECT_EQ(RingFrom(groups, 1), (std::vector<int>{1, 3}));
    EXPECT_EQ(groups.Next(4), -1);
    EXPECT_EQ(groups.Next(6), -1);
    EXPECT_FALSE(groups.IsHighest(4));
    EXPECT_EQ(groups.Next(7), 7);
    EXPECT_TRUE(groups.IsHighest(7));
}

}
