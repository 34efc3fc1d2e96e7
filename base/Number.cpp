#include "base/Number.h"

#include "base/TextUtil.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace {

std::string_view NumberBody(std::string_view text)
{
    text = TrimSpaces(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

template <class T>
bool ParseWhole(std::string_view text, T& value)
{
    text = NumberBody(text);
    if (text.empty())
        return false;
    T parsed {};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), parsed);
    if (error != std::errc() || end != text.data() + text.size())
        return false;
    value = parsed;
    return true;
}

} // namespace

std::string FormatFloat(double value, int decimals)
{
    char buffer[400];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    if (error != std::errc())
        return Format("%.*f", decimals, value);
    return std::string(buffer, end);
}

std::string FormatInt(long long value)
{
    char buffer[24];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, error == std::errc() ? end : buffer);
}

bool ParseFloat(std::string_view text, double& value)
{
    double parsed = 0;
    if (!ParseWhole(text, parsed) || !std::isfinite(parsed))
        return false;
    value = parsed;
    return true;
}

bool ParseFloat(std::string_view text, float& value)
{
    double parsed = 0;
    if (!ParseFloat(text, parsed) || std::fabs(parsed) > std::numeric_limits<float>::max())
        return false;
    value = static_cast<float>(parsed);
    return true;
}

bool ParseInt(std::string_view text, int& value) { return ParseWhole(text, value); }
bool ParseInt(std::string_view text, long long& value) { return ParseWhole(text, value); }
bool ParseInt(std::string_view text, unsigned long long& value) { return ParseWhole(text, value); }
