#include "ui/CollisionBitNames.h"

#include "base/FileSystem.h"
#include "base/TextUtil.h"

#include <cstdlib>

namespace {

constexpr int kMaxBits = 32;

std::string_view TrimBlanks(std::string_view text)
{
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos)
        return {};
    const size_t last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
}

// As atoi: blanks, a sign and the digits that follow; 0 when there are none.
long ReadLeadingInt(std::string_view text)
{
    const std::string digits(text.substr(0, 16));
    return std::strtol(digits.c_str(), nullptr, 10);
}

} // namespace

std::vector<std::string> ParseBitNames(std::string_view text)
{
    std::vector<std::string> names;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view {} : text.substr(end + 1);

        const size_t colon = line.find(':');
        if (line.starts_with("//") || colon == std::string_view::npos)
            continue;
        const long bit = ReadLeadingInt(line.substr(0, colon));
        if (bit < 0 || bit >= kMaxBits)
            continue;
        if (names.size() <= static_cast<size_t>(bit))
            names.resize(static_cast<size_t>(bit) + 1);
        names[static_cast<size_t>(bit)] = std::string(TrimBlanks(line.substr(colon + 1)));
    }
    return names;
}

std::vector<std::string> LoadBitNames(std::string_view path, int defaultCount)
{
    std::vector<std::string> names;
    std::string text;
    if (ReadWholeFile(path, text))
        names = ParseBitNames(text);
    if (names.empty()) {
        for (int bit = 0; bit < defaultCount; ++bit)
            names.push_back(Format("Unknown (bit %i)", bit));
    }
    return names;
}
