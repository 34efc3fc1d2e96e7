#include "settings/NameEscaping.h"

#include <gtest/gtest.h>

TEST(NameEscaping, BlanksTabsAndEqualsSignsBecomePercentCodes)
{
    EXPECT_EQ(EscapeName("walk fast=1"), "walk%20fast%3D1");
    EXPECT_EQ(EscapeName("a\tb"), "a%20b");
    EXPECT_EQ(EscapeName("[This file]"), "[This%20file]");
}

TEST(NameEscaping, OtherCharactersStay)
{
    EXPECT_EQ(EscapeName("C:\\anims\\run_01.ma"), "C:\\anims\\run_01.ma");
    EXPECT_EQ(EscapeName("100%"), "100%");
    EXPECT_EQ(EscapeName(""), "");
}

TEST(NameEscaping, UnescapingRestoresBlanksAndEqualsSigns)
{
    EXPECT_EQ(UnescapeName("walk%20fast%3D1"), "walk fast=1");
    EXPECT_EQ(UnescapeName("%20%20"), "  ");
}

TEST(NameEscaping, UnescapingDropsLineBreaksAndKeepsOtherPercentSigns)
{
    EXPECT_EQ(UnescapeName("a\r\nb"), "ab");
    EXPECT_EQ(UnescapeName("100%"), "100%");
    EXPECT_EQ(UnescapeName("%2"), "%2");
    EXPECT_EQ(UnescapeName("%3d"), "%3d");
    EXPECT_EQ(UnescapeName("%%20"), "% ");
}
