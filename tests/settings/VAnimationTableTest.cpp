#include "settings/VAnimationTable.h"

#include <gtest/gtest.h>

namespace {

VAnimationDescription Named(const char* name)
{
    VAnimationDescription entry;
    entry.Name = name;
    return entry;
}

} // namespace

TEST(AnimationTable, NewEntryHoldsTheDocumentedDefaults)
{
    const VAnimationDescription entry;
    EXPECT_EQ(entry.Name, "Noname");
    EXPECT_EQ(entry.SourceFile, "[This file]");
    EXPECT_EQ(entry.Type, kAnimTypeMuscle);
    EXPECT_EQ(entry.UseMaxFrames, 1);
    EXPECT_EQ(entry.EstimateLevel, 1);
    EXPECT_EQ(entry.RotationAxis, 0);
    EXPECT_TRUE(entry.Compressed);
    EXPECT_EQ(entry.KeyFrameCount, 0);
}

TEST(AnimationTable, EntriesAreAddedUpToTheCapacityRemovedInOrderAndResetWithAClampedCount)
{
    VAnimationTable table;
    table.Add(Named("a"));
    table.Add(Named("b"));
    table.Add(Named("c"));
    table.Remove(1);
    ASSERT_EQ(table.Count(), 2);
    EXPECT_EQ(table[0].Name, "a");
    EXPECT_EQ(table[1].Name, "c");
    table.Reset(2);
    ASSERT_EQ(table.Count(), 2);
    EXPECT_EQ(table[0], VAnimationDescription {});
    table.Reset(-1);
    EXPECT_EQ(table.Count(), 0);
    table.Reset(VAnimationTable::kCapacity + 1);
    EXPECT_EQ(table.Count(), VAnimationTable::kCapacity);
    table.Reset(VAnimationTable::kCapacity - 1);
    EXPECT_TRUE(table.Add(Named("last")));
    EXPECT_FALSE(table.Add(Named("one too many")));
    EXPECT_EQ(table.Count(), VAnimationTable::kCapacity);
    EXPECT_EQ(table[VAnimationTable::kCapacity - 1].Name, "last");
}
