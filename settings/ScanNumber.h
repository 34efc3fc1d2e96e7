#pragma once
// Numbers in the settings block are read as the block's writers always read them, with the
// scanf conversions: leading white space is skipped, the longest number at the start is
// taken and whatever follows it is left to the caller. Each function answers how many
// characters it consumed, 0 when the text does not start with a number (value unchanged).
// Numbers outside the target type, infinities and NaNs are refused.

#include <cstddef>
#include <cstdint>
#include <string_view>

// "%i": "0x1F" is hexadecimal, "017" octal, "17" decimal.
size_t ScanInt(std::string_view text, int32_t& value);
// "%d": decimal only.
size_t ScanDecimalInt(std::string_view text, int32_t& value);
// "%f", with a decimal point whatever the process locale.
size_t ScanFloat(std::string_view text, float& value);
