#include "settings/NameEscaping.h"

#include <gtest/gtest.h>

TEST(NameEscaping, BlanksTabsAndEqualsSignsBecomePercentCodesAndNothingElseChanges)
{
    EXPECT_EQ(EscapeName("walk fast=1"), "walk%20fast%3D1");
    EXPECT_EQ(EscapeName("a\tb"), "a%20b");
    EXPECT_EQ(EscapeName("C:\\anims\\run_01.ma 100%"), "C:\\anims\\run_01.ma%20100%");
    EXPECT_EQ(EscapeName(""), "");
}

TEST(NameEscaping, UnescapingRestoresBlanksAndEqualsSignsDropsLineBreaksAndKeepsOtherPercentSigns)
{
    EXPECT_EQ(UnescapeName("walk%20fast%3D1"), "walk fast=1");
    EXPECT_EQ(UnescapeName("%20%20"), "  ");
    EXPECT_EQ(UnescapeName("a\r\nb"), "ab");
    EXPECT_EQ(UnescapeName("100%"), "100%");
    EXPECT_EQ(UnescapeName("%2"), "%2");
    EXPECT_EQ(UnescapeName("%3d"), "%3d");
    EXPECT_EQ(UnescapeName("%%20"), "% ");
}
