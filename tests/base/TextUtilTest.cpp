#include "base/TextUtil.h"

#include <gtest/gtest.h>

#include <clocale>

TEST(TextUtil, ComparisonIgnoresAsciiCaseAndFoldsUmlauts)
{
    EXPECT_TRUE(EqualsNoCase("Level.QMESH", "level.qmesh"));
    EXPECT_TRUE(EqualsNoCase("Gr\xe4" "ber", "GR\xc4" "BER"));
    EXPECT_TRUE(EqualsNoCase("\xf6\xfc", "\xd6\xdc"));
    EXPECT_FALSE(EqualsNoCase("abc", "abd"));
    EXPECT_FALSE(EqualsNoCase("abc", "abcd"));
    EXPECT_LT(CompareNoCase("apple", "Banana"), 0);
    EXPECT_GT(CompareNoCase("b", "A"), 0);
    EXPECT_LT(CompareNoCase("ab", "ABC"), 0);
}

TEST(TextUtil, EndsWithIgnoresCaseIncludingUmlauts)
{
    EXPECT_TRUE(EndsWithNoCase("C:\\Scenes\\M\xfchle.QMesh", ".qmesh"));
    EXPECT_TRUE(EndsWithNoCase("x_m\xfc", "M\xdc"));
    EXPECT_FALSE(EndsWithNoCase("mesh", ".qmesh"));
    EXPECT_TRUE(StartsWithNoCase("Animation:run", "ANIMATION:"));
}

TEST(TextUtil, FormatUsesDecimalPointWhateverTheLocale)
{
    const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8") && !std::setlocale(LC_NUMERIC, "de_DE"))
        GTEST_SKIP() << "no comma-decimal locale installed";
    EXPECT_EQ(Format("%f|%i|%.4f", 1.5, -3, 0.25), "1.500000|-3|0.2500");
    std::setlocale(LC_NUMERIC, previous.c_str());
}

TEST(TextUtil, FormatGrowsBeyondItsSmallBuffer)
{
    const std::string long_text(1000, 'x');
    EXPECT_EQ(Format("<%s>", long_text.c_str()), "<" + long_text + ">");
}

TEST(TextUtil, TrimSpacesRemovesLineEndsAndTabs)
{
    EXPECT_EQ(TrimSpaces(" \t value\r\n"), "value");
    EXPECT_EQ(TrimSpaces("   "), "");
}
