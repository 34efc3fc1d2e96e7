#include "base/TextUtil.h"

#include <clocale>
#include <cstdio>
#include <locale.h>
#include <vector>

namespace {

constexpr unsigned char kLowerAUmlaut = 0xE4, kLowerOUmlaut = 0xF6, kLowerUUmlaut = 0xFC;

char UpperUmlaut(unsigned char c)
{
    switch (c) {
    case kLowerAUmlaut:
    case kLowerOUmlaut:
    case kLowerUUmlaut:
        return static_cast<char>(c - 0x20);
    default:
        return static_cast<char>(c);
    }
}

locale_t CLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return locale;
}

} // namespace

char FoldCase(char c)
{
    if (c >= 'a' && c <= 'z')
        return static_cast<char>(c - 'a' + 'A');
    return UpperUmlaut(static_cast<unsigned char>(c));
}

int CompareNoCase(std::string_view a, std::string_view b)
{
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; ++i) {
        const auto ca = static_cast<unsigned char>(FoldCase(a[i]));
        const auto cb = static_cast<unsigned char>(FoldCase(b[i]));
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    if (a.size() == b.size())
        return 0;
    return a.size() < b.size() ? -1 : 1;
}

bool EqualsNoCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && CompareNoCase(a, b) == 0;
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix)
{
    return text.size() >= prefix.size() && EqualsNoCase(text.substr(0, prefix.size()), prefix);
}

bool EndsWithNoCase(std::string_view text, std::string_view suffix)
{
    return text.size() >= suffix.size() && EqualsNoCase(text.substr(text.size() - suffix.size()), suffix);
}

std::string ToUpperLatin1(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        c = FoldCase(c);
    return result;
}

std::string ToLowerAscii(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return result;
}

std::string_view TrimSpaces(std::string_view text)
{
    const auto isSpace = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string FormatV(const char* format, va_list args)
{
    // uselocale is per thread, so switching it cannot disturb the host's own formatting.
    const locale_t previous = uselocale(CLocale());
    char small[256];
    va_list copy;
    va_copy(copy, args);
    const int length = std::vsnprintf(small, sizeof small, format, copy);
    va_end(copy);
    std::string result;
    if (length < 0) {
        result.clear();
    } else if (static_cast<size_t>(length) < sizeof small) {
        result.assign(small, static_cast<size_t>(length));
    } else {
        std::vector<char> large(static_cast<size_t>(length) + 1);
        std::vsnprintf(large.data(), large.size(), format, args);
        result.assign(large.data(), static_cast<size_t>(length));
    }
    uselocale(previous);
    return result;
}

std::string Format(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    std::string result = FormatV(format, args);
    va_end(args);
    return result;
}

uint64_t StableHash(std::string_view text)
{
    uint64_t hash = 14695981039346656037ull;
    for (const char c : text) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 1099511628211ull;
    }
    return hash;
}
