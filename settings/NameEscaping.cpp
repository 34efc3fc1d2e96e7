#include "settings/NameEscaping.h"

namespace {

constexpr std::string_view kEscapedBlank = "%20";
constexpr std::string_view kEscapedEquals = "%3D";

} // namespace

std::string EscapeName(std::string_view name)
{
    std::string escaped;
    escaped.reserve(name.size());
    for (const char c : name) {
        if (c == ' ' || c == '\t')
            escaped += kEscapedBlank;
        else if (c == '=')
            escaped += kEscapedEquals;
        else
            escaped += c;
    }
    return escaped;
}

std::string UnescapeName(std::string_view text)
{
    std::string name;
    name.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const std::string_view rest = text.substr(i);
        if (rest.starts_with(kEscapedBlank)) {
            name += ' ';
            i += kEscapedBlank.size() - 1;
        } else if (rest.starts_with(kEscapedEquals)) {
            name += '=';
            i += kEscapedEquals.size() - 1;
        } else if (text[i] != '\r' && text[i] != '\n') {
            name += text[i];
        }
    }
    return name;
}
