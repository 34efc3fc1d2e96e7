#include "importers/assimp/ColladaIndexCheck.h"

#include <algorithm>
#include <string>

namespace {

constexpr std::string_view kIndexLists[] = {"p", "vcount", "v", "h"};

bool EndsName(char c)
{
    return c == '>' || c == '/' || c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool IsIndexCharacter(char c)
{
    return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

} // namespace

bool ColladaIndexListsAreNumeric(std::string_view text)
{
    for (size_t open = text.find('<'); open != std::string_view::npos; open = text.find('<', open + 1)) {
        size_t nameEnd = open + 1;
        while (nameEnd < text.size() && !EndsName(text[nameEnd]))
            ++nameEnd;
        const std::string_view name = text.substr(open + 1, nameEnd - open - 1);
        if (std::find(std::begin(kIndexLists), std::end(kIndexLists), name) == std::end(kIndexLists))
            continue;
        const size_t contentStart = text.find('>', nameEnd);
        if (contentStart == std::string_view::npos)
            return true;
        if (text[contentStart - 1] == '/')
            continue;
        const size_t contentEnd = text.find('<', contentStart + 1);
        const std::string_view content =
            text.substr(contentStart + 1, contentEnd == std::string_view::npos ? std::string_view::npos
                                                                                : contentEnd - contentStart - 1);
        if (!std::all_of(content.begin(), content.end(), IsIndexCharacter))
            return false;
    }
    return true;
}
