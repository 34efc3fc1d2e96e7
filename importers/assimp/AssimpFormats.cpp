#include "importers/assimp/AssimpFormats.h"

#include "base/Path.h"
#include "base/TextUtil.h"

#include <algorithm>
#include <cstdint>

namespace {

std::string_view WithoutByteOrderMark(std::string_view text)
{
    if (text.size() >= 3 && text.substr(0, 3) == "\xEF\xBB\xBF")
        text.remove_prefix(3);
    return text;
}

std::string_view WithoutLeadingSpace(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t' || text.front() == '\r' || text.front() == '\n'))
        text.remove_prefix(1);
    return text;
}

bool IsText(std::string_view head)
{
    return std::find(head.begin(), head.end(), '\0') == head.end();
}

bool ContainsNoCase(std::string_view text, std::string_view word)
{
    if (word.size() > text.size())
        return false;
    for (size_t at = 0; at + word.size() <= text.size(); ++at)
        if (EqualsNoCase(text.substr(at, word.size()), word))
            return true;
    return false;
}

uint32_t LittleEndian32(std::string_view bytes, size_t at)
{
    return uint32_t(uint8_t(bytes[at])) | uint32_t(uint8_t(bytes[at + 1])) << 8 | uint32_t(uint8_t(bytes[at + 2])) << 16 |
           uint32_t(uint8_t(bytes[at + 3])) << 24;
}

} // namespace

bool CanReadFbx(std::string_view path, std::string_view head)
{
    if (!EqualsNoCase(ExtensionOf(path), ".fbx"))
        return false;
    if (head.substr(0, 18) == "Kaydara FBX Binary")
        return true;
    // ASCII FBX starts with comment lines ("; FBX 7.5.0 project file") before FBXHeaderExtension.
    return IsText(head) && (ContainsNoCase(head, "FBXHeaderExtension") || ContainsNoCase(head, "; FBX"));
}

bool CanReadGltf(std::string_view path, std::string_view head)
{
    const std::string extension = ExtensionOf(path);
    if (EqualsNoCase(extension, ".glb"))
        return head.substr(0, 4) == "glTF";
    if (!EqualsNoCase(extension, ".gltf"))
        return false;
    const std::string_view text = WithoutLeadingSpace(WithoutByteOrderMark(head));
    return !text.empty() && text.front() == '{';
}

bool CanReadCollada(std::string_view path, std::string_view head)
{
    if (!EqualsNoCase(ExtensionOf(path), ".dae"))
        return false;
    const std::string_view text = WithoutLeadingSpace(WithoutByteOrderMark(head));
    return !text.empty() && text.front() == '<' && ContainsNoCase(head, "<COLLADA");
}

// Assimp reads any file named .obj, also one with stray NUL bytes (some sculpting tools end the
// file with one) or none of OBJ's statements, so no signature is asked for: the reader judges.
bool CanReadObj(std::string_view path)
{
    return EqualsNoCase(ExtensionOf(path), ".obj");
}

bool GlbLengthsExceed(std::string_view head, unsigned long long fileSize)
{
    if (head.size() < 20 || head.substr(0, 4) != "glTF")
        return false;
    const unsigned long long total = LittleEndian32(head, 8);
    const unsigned long long firstChunk = LittleEndian32(head, 12);
    return total > fileSize || firstChunk + 20 > total;
}

AssimpFormat DetectAssimpFormat(std::string_view path, std::string_view head)
{
    if (CanReadFbx(path, head))
        return AssimpFormat::Fbx;
    if (CanReadGltf(path, head))
        return AssimpFormat::Gltf;
    if (CanReadCollada(path, head))
        return AssimpFormat::Collada;
    if (CanReadObj(path))
        return AssimpFormat::Obj;
    return AssimpFormat::None;
}
