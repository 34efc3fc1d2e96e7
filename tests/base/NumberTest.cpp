#include "base/Number.h"

#include <gtest/gtest.h>

TEST(Number, FormatsLikePrintfWithAPoint)
{
    EXPECT_EQ(FormatFloat(1.0), "1.000000");
    EXPECT_EQ(FormatFloat(-0.125, 4), "-0.1250");
    EXPECT_EQ(FormatFloat(2.5, 0), "2");
    EXPECT_EQ(FormatInt(-42), "-42");
}

TEST(Number, ParsesWholeTextOnly)
{
    double d = 7;
    EXPECT_TRUE(ParseFloat(" 1.25 ", d));
    EXPECT_DOUBLE_EQ(d, 1.25);
    EXPECT_TRUE(ParseFloat("+3e2", d));
    EXPECT_DOUBLE_EQ(d, 300);
    EXPECT_FALSE(ParseFloat("1,5", d));
    EXPECT_FALSE(ParseFloat("", d));
    EXPECT_FALSE(ParseFloat("nan", d));
    EXPECT_FALSE(ParseFloat("+-1", d));
    EXPECT_DOUBLE_EQ(d, 300) << "a failed parse leaves the value unchanged";
}

TEST(Number, RejectsOutOfRangeValues)
{
    float f = 1;
    EXPECT_FALSE(ParseFloat("1e39", f));
    EXPECT_EQ(f, 1);
    int i = 5;
    EXPECT_FALSE(ParseInt("99999999999", i));
    EXPECT_FALSE(ParseInt("12abc", i));
    EXPECT_TRUE(ParseInt("-12", i));
    EXPECT_EQ(i, -12);
}
