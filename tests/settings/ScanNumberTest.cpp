#include "settings/ScanNumber.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

// The text, the characters read (0: refused, the value untouched) and the value read.
template <class T>
struct ScanCase {
    const char* Text;
    size_t Read;
    T Value;
};

} // namespace

TEST(ScanNumber, IntIsReadLikeScanfPercentIWithinThirtyTwoBits)
{
    const ScanCase<int32_t> cases[] = {
        {"42", 2, 42}, {"0x1F", 4, 31}, {"017", 3, 15}, {"-0x10", 5, -16}, {" \t+12abc", 5, 12}, {"0xg", 1, 0},
        {"2147483647", 10, 2147483647}, {"-2147483648", 11, INT32_MIN}, {"", 0, 7}, {"abc", 0, 7}, {"-", 0, 7},
        {"+-3", 0, 7}, {"2147483648", 0, 7}, {"-2147483649", 0, 7}, {"99999999999999999999999", 0, 7},
    };
    for (const ScanCase<int32_t>& scan : cases) {
        int32_t value = 7;
        EXPECT_EQ(ScanInt(scan.Text, value), scan.Read) << scan.Text;
        EXPECT_EQ(value, scan.Value) << scan.Text;
    }
    int32_t value = 0;
    EXPECT_EQ(ScanDecimalInt("017", value), 3u);
    EXPECT_EQ(value, 17);
    EXPECT_EQ(ScanDecimalInt("0x1F", value), 1u);
    EXPECT_EQ(value, 0);
}

// A comma ends the number: it is never a decimal separator, whatever the locale.
TEST(ScanNumber, FloatIsReadWithADecimalPointAndMustBeFinite)
{
    const ScanCase<float> cases[] = {
        {"1.500000", 8, 1.5f}, {"-2.5e2", 6, -250.0f}, {" .25x", 4, 0.25f}, {"+3", 2, 3.0f}, {"1,5", 1, 1.0f},
        {"nan", 0, 4.0f}, {"inf", 0, 4.0f}, {"-infinity", 0, 4.0f}, {"1e39", 0, 4.0f}, {"1e999", 0, 4.0f},
        {"", 0, 4.0f}, {"-", 0, 4.0f}, {"+-1", 0, 4.0f},
    };
    for (const ScanCase<float>& scan : cases) {
        float value = 4.0f;
        EXPECT_EQ(ScanFloat(scan.Text, value), scan.Read) << scan.Text;
        EXPECT_EQ(value, scan.Value) << scan.Text;
    }
}
