#include "importers/assimp/FbxContentCheck.h"

namespace {

bool IsBase64(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/' ||
           c == '=';
}

bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Checks the quoted strings that follow "Content:" up to the first token that is neither a string nor a comma.
bool ContentValueIsWhole(std::string_view text, size_t at)
{
    while (at < text.size()) {
        const char c = text[at];
        if (IsSpace(c) || c == ',') {
            ++at;
            continue;
        }
        if (c != '"')
            return true;
        const size_t end = text.find('"', at + 1);
        if (end == std::string_view::npos)
            return false;
        const std::string_view value = text.substr(at + 1, end - at - 1);
        if (value.size() % 4 != 0)
            return false;
        for (char v : value)
            if (!IsBase64(v))
                return false;
        at = end + 1;
    }
    return true;
}

} // namespace

bool FbxContentIsWholeBase64(std::string_view text)
{
    if (text.substr(0, 18) == "Kaydara FBX Binary")
        return true;
    constexpr std::string_view key = "Content:";
    for (size_t at = text.find(key); at != std::string_view::npos; at = text.find(key, at + key.size()))
        if (!ContentValueIsWhole(text, at + key.size()))
            return false;
    return true;
}
