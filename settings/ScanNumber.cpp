#include "settings/ScanNumber.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

namespace {

bool IsCSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r'; }

bool IsHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

// Skips white space and one sign; answers the position of the first character behind them.
size_t SkipSpaceAndSign(std::string_view text, bool& negative)
{
    size_t pos = 0;
    while (pos < text.size() && IsCSpace(text[pos]))
        ++pos;
    negative = false;
    if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
        negative = text[pos] == '-';
        ++pos;
    }
    return pos;
}

size_t ScanInteger(std::string_view text, bool detectBase, int32_t& value)
{
    bool negative = false;
    size_t pos = SkipSpaceAndSign(text, negative);
    int base = 10;
    if (detectBase && pos < text.size() && text[pos] == '0') {
        if (pos + 2 < text.size() && (text[pos + 1] == 'x' || text[pos + 1] == 'X') && IsHexDigit(text[pos + 2])) {
            base = 16;
            pos += 2;
        } else {
            base = 8;
        }
    }
    const char* first = text.data() + pos;
    const char* last = text.data() + text.size();
    if (first == last || *first == '+' || *first == '-')
        return 0;
    uint64_t magnitude = 0;
    const auto [end, error] = std::from_chars(first, last, magnitude, base);
    if (error != std::errc())
        return 0;
    const uint64_t limit = negative ? uint64_t {1} << 31 : (uint64_t {1} << 31) - 1;
    if (magnitude > limit)
        return 0;
    value = static_cast<int32_t>(negative ? -static_cast<int64_t>(magnitude) : static_cast<int64_t>(magnitude));
    return static_cast<size_t>(end - text.data());
}

} // namespace

size_t ScanInt(std::string_view text, int32_t& value) { return ScanInteger(text, true, value); }

size_t ScanDecimalInt(std::string_view text, int32_t& value) { return ScanInteger(text, false, value); }

size_t ScanFloat(std::string_view text, float& value)
{
    bool negative = false;
    const size_t pos = SkipSpaceAndSign(text, negative);
    const char* first = text.data() + pos;
    const char* last = text.data() + text.size();
    if (first == last || *first == '+' || *first == '-')
        return 0;
    double magnitude = 0;
    const auto [end, error] = std::from_chars(first, last, magnitude, std::chars_format::general);
    if (error != std::errc() || !std::isfinite(magnitude) || magnitude > std::numeric_limits<float>::max())
        return 0;
    value = static_cast<float>(negative ? -magnitude : magnitude);
    return static_cast<size_t>(end - text.data());
}
