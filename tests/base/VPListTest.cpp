#include "base/VPList.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<int> Values(const VPListT<int>& list)
{
    std::vector<int> values;
    for (int* item : list)
        values.push_back(item ? *item : -1);
    return values;
}

} // namespace

TEST(VPList, RemoveLeavingEmptySlotsThenCompactKeepsOrderOfSurvivors)
{
    int a = 1, b = 2, c = 3, d = 4;
    VPListT<int> list;
    for (int* item : {&a, &b, &c, &d})
        list.Add(item);

    list.RemoveLeaveEmpty(1);
    list.RemoveLeaveEmpty(3);
    EXPECT_EQ(Values(list), (std::vector<int> {1, -1, 3, -1}));

    list.Compact();
    EXPECT_EQ(Values(list), (std::vector<int> {1, 3}));
}

TEST(VPList, RemoveClosesTheGapAndFindLocatesItems)
{
    int a = 1, b = 2, c = 3;
    VPListT<int> list;
    list.Add(&a);
    list.Add(&b);
    list.Add(&c);
    list.Remove(0);
    EXPECT_EQ(Values(list), (std::vector<int> {2, 3}));
    EXPECT_EQ(list.Find(&c), 1);
    EXPECT_EQ(list.Find(&a), -1);
    EXPECT_TRUE(list.RemoveItem(&c));
    EXPECT_FALSE(list.RemoveItem(&c));
    EXPECT_EQ(list.Count(), 1);
}

TEST(VPList, DeleteAllFreesOwnedRecordsAndSkipsEmptySlots)
{
    VPListT<std::vector<int>> list;
    list.Add(new std::vector<int>(100));
    list.Add(new std::vector<int>(5));
    delete list.Get(0);
    list.RemoveLeaveEmpty(0);
    list.Add(new std::vector<int>(7));
    EXPECT_EQ(list.Get(0), nullptr);
    list.DeleteAll();
    EXPECT_TRUE(list.IsEmpty());
}
