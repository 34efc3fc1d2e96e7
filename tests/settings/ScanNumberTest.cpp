#include "settings/ScanNumber.h"

#include <gtest/gtest.h>

#include <cstdint>

TEST(ScanNumber, IntReadsDecimalHexadecimalAndOctalLikeScanfPercentI)
{
    int32_t value = 0;
    EXPECT_EQ(ScanInt("42", value), 2u);
    EXPECT_EQ(value, 42);
    EXPECT_EQ(ScanInt("0x1F", value), 4u);
    EXPECT_EQ(value, 31);
    EXPECT_EQ(ScanInt("017", value), 3u);
    EXPECT_EQ(value, 15);
    EXPECT_EQ(ScanInt("-0x10", value), 5u);
    EXPECT_EQ(value, -16);
}

TEST(ScanNumber, IntSkipsLeadingWhiteSpaceAndStopsAtTheFirstNonDigit)
{
    int32_t value = 0;
    EXPECT_EQ(ScanInt(" \t+12abc", value), 5u);
    EXPECT_EQ(value, 12);
    EXPECT_EQ(ScanInt("0xg", value), 1u);
    EXPECT_EQ(value, 0);
}

TEST(ScanNumber, IntAcceptsTheFullRangeOfThirtyTwoBits)
{
    int32_t value = 0;
    EXPECT_NE(ScanInt("2147483647", value), 0u);
    EXPECT_EQ(value, 2147483647);
    EXPECT_NE(ScanInt("-2147483648", value), 0u);
    EXPECT_EQ(value, INT32_MIN);
}

TEST(ScanNumber, IntRefusesTextWithoutDigitsAndNumbersBeyondThirtyTwoBits)
{
    int32_t value = 7;
    EXPECT_EQ(ScanInt("", value), 0u);
    EXPECT_EQ(ScanInt("abc", value), 0u);
    EXPECT_EQ(ScanInt("-", value), 0u);
    EXPECT_EQ(ScanInt("+-3", value), 0u);
    EXPECT_EQ(ScanInt("2147483648", value), 0u);
    EXPECT_EQ(ScanInt("-2147483649", value), 0u);
    EXPECT_EQ(ScanInt("99999999999999999999999", value), 0u);
    EXPECT_EQ(value, 7);
}

TEST(ScanNumber, DecimalIntReadsLeadingZerosAsDecimal)
{
    int32_t value = 0;
    EXPECT_EQ(ScanDecimalInt("017", value), 3u);
    EXPECT_EQ(value, 17);
    EXPECT_EQ(ScanDecimalInt("0x1F", value), 1u);
    EXPECT_EQ(value, 0);
}

TEST(ScanNumber, FloatReadsFixedAndExponentFormsWithADecimalPoint)
{
    float value = 0;
    EXPECT_EQ(ScanFloat("1.500000", value), 8u);
    EXPECT_EQ(value, 1.5f);
    EXPECT_EQ(ScanFloat("-2.5e2", value), 6u);
    EXPECT_EQ(value, -250.0f);
    EXPECT_EQ(ScanFloat(" .25x", value), 4u);
    EXPECT_EQ(value, 0.25f);
    EXPECT_EQ(ScanFloat("+3", value), 2u);
    EXPECT_EQ(value, 3.0f);
}

TEST(ScanNumber, FloatStopsAtACommaInsteadOfReadingItAsDecimalSeparator)
{
    float value = 0;
    EXPECT_EQ(ScanFloat("1,5", value), 1u);
    EXPECT_EQ(value, 1.0f);
}

TEST(ScanNumber, FloatRefusesNonFiniteAndOutOfRangeValues)
{
    float value = 4.0f;
    EXPECT_EQ(ScanFloat("nan", value), 0u);
    EXPECT_EQ(ScanFloat("inf", value), 0u);
    EXPECT_EQ(ScanFloat("-infinity", value), 0u);
    EXPECT_EQ(ScanFloat("1e39", value), 0u);
    EXPECT_EQ(ScanFloat("1e999", value), 0u);
    EXPECT_EQ(ScanFloat("", value), 0u);
    EXPECT_EQ(ScanFloat("-", value), 0u);
    EXPECT_EQ(ScanFloat("+-1", value), 0u);
    EXPECT_EQ(value, 4.0f);
}
