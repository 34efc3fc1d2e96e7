#include "model/VMOwnedList.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

// Counts destructions so that the tests can see which records a list frees.
struct Tracked {
    Tracked(int value, int& destroyed) : Value(value), m_destroyed(destroyed) {}
    ~Tracked() { ++m_destroyed; }
    int Value;
    int& m_destroyed;
};

std::vector<int> Values(const VMOwnedList<Tracked>& list)
{
    std::vector<int> values;
    for (const Tracked* item : list)
        values.push_back(item != nullptr ? item->Value : -1);
    return values;
}

class VMOwnedListTest : public testing::Test {
protected:
    void Fill(int count)
    {
        for (int i = 0; i < count; ++i)
            ASSERT_EQ(list.Add(new Tracked(i, destroyed)), 0);
    }

    int destroyed = 0;
    VMOwnedList<Tracked> list;
};

TEST_F(VMOwnedListTest, RemoveDestroysTheRecordAndClosesTheGapInOrder)
{
    Fill(4);
    EXPECT_EQ(list.Remove(1), 0);
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(Values(list), (std::vector<int> {0, 2, 3}));
}

TEST_F(VMOwnedListTest, NullAndPlacesOutsideTheListAreRefusedAndChangeNothing)
{
    Fill(2);
    EXPECT_EQ(list.Add(static_cast<Tracked*>(nullptr)), -1);
    EXPECT_EQ(list.Remove(2), -1);
    EXPECT_EQ(list.Remove(-1), -1);
    EXPECT_EQ(list.RemoveLeaveEmpty(5), -1);
    EXPECT_EQ(list.Get(2), nullptr);
    EXPECT_EQ(list.Get(-1), nullptr);
    EXPECT_EQ(list.Find(nullptr), -1);
    EXPECT_EQ(list.Find(list[1]), 1);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(destroyed, 0);
}

TEST_F(VMOwnedListTest, RemoveLeaveEmptyKeepsTheSlotUntilCompaction)
{
    Fill(5);
    EXPECT_EQ(list.RemoveLeaveEmpty(1), 0);
    EXPECT_EQ(list.RemoveLeaveEmpty(3), 0);
    EXPECT_EQ(destroyed, 2);
    EXPECT_EQ(list.Count(), 5);
    EXPECT_EQ(list[1], nullptr);
    EXPECT_TRUE(list.HasEmptySlots());

    list.Compact();
    EXPECT_EQ(Values(list), (std::vector<int> {0, 2, 4}));
    EXPECT_FALSE(list.HasEmptySlots());
}

TEST_F(VMOwnedListTest, TakeHandsTheRecordOverWithoutDestroyingIt)
{
    Fill(3);
    std::unique_ptr<Tracked> taken = list.Take(0);
    ASSERT_NE(taken, nullptr);
    EXPECT_EQ(taken->Value, 0);
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(Values(list), (std::vector<int> {1, 2}));
    EXPECT_EQ(list.Take(7), nullptr);
}

TEST_F(VMOwnedListTest, ClearAndDestructionFreeEveryRecordOnce)
{
    Fill(3);
    list.RemoveLeaveEmpty(0);
    list.Clear();
    EXPECT_EQ(destroyed, 3);
    EXPECT_TRUE(list.IsEmpty());
    {
        VMOwnedList<Tracked> scoped;
        scoped.Add(new Tracked(9, destroyed));
    }
    EXPECT_EQ(destroyed, 4);
}

TEST_F(VMOwnedListTest, ReleaseAllLetsABorrowingListEndWithoutFreeing)
{
    Fill(2);
    VMOwnedList<Tracked> borrower;
    for (Tracked* item : list)
        borrower.Add(item);
    borrower.ReleaseAll();
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(list.Count(), 2);
}

} // namespace
