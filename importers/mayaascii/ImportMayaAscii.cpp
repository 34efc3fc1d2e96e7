#include "importers/mayaascii/ImportMayaAscii.h"

#include "importers/mayaascii/BuildMayaAsciiScene.h"
#include "importers/mayaascii/ParseMayaAscii.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"

namespace {

// Maya Binary files are IFF files whose first group is "FOR4" or "FOR8".
bool IsMayaBinary(std::string_view head) { return head.starts_with("FOR4") || head.starts_with("FOR8"); }

std::string WithBackslashes(std::string text)
{
    for (char& c : text)
        if (c == '/')
            c = '\\';
    return text;
}

// Files a scene names are often absolute paths of the machine that saved it, or relative to its Maya project; the
// copies beside the scene (or in its project, when the scene sits in the project's "scenes" folder) are taken
// when the named file is not there.
std::string Locate(const std::string& scenePath, const std::string& written)
{
    const std::string path = WithBackslashes(written);
    if (IsAbsolutePath(path) && FileExists(path))
        return path;
    if (scenePath.empty())
        return std::string();
    const std::string folder = DirectoryOf(scenePath);
    std::vector<std::string> candidates;
    if (!IsAbsolutePath(path)) {
        candidates.push_back(JoinPath(folder, path));
        if (EqualsNoCase(FileNameOf(folder), "scenes"))
            candidates.push_back(JoinPath(DirectoryOf(folder), path));
    }
    candidates.push_back(JoinPath(folder, FileNameOf(path)));
    for (const std::string& candidate : candidates)
        if (FileExists(candidate))
            return candidate;
    return std::string();
}

bool Import(std::string_view text, const std::string& scenePath, ImportResult& result)
{
    if (IsMayaBinary(text)) {
        result.Error = "this is a Maya Binary file; kestrel reads Maya ASCII: save the scene as Maya ASCII (.ma)";
        return false;
    }
    MaRecord record;
    if (!ParseMayaAscii(text, record, result))
        return false;
    MaFileAccess files;
    files.Locate = [scenePath](const std::string& written) { return Locate(scenePath, written); };
    files.Read = [](const std::string& path, MaRecord& referenced, ImportResult& read) {
        std::string contents;
        if (!ReadWholeFile(path, contents, &read.Error))
            return false;
        if (IsMayaBinary(contents)) {
            read.Error = "it is a Maya Binary file";
            return false;
        }
        return ParseMayaAscii(contents, referenced, read);
    };
    BuildMayaAsciiScene(record, files, result);
    return true;
}

} // namespace

bool CanReadMayaAscii(std::string_view path, std::string_view head)
{
    const std::string extension = ExtensionOf(path);
    return EqualsNoCase(extension, ".ma") || EqualsNoCase(extension, ".mb") || head.starts_with("//Maya ASCII");
}

bool ImportMayaAscii(const std::string& path, ImportResult& result)
{
    std::string text;
    if (!FileExists(path)) {
        result.Error = "no such file";
        return false;
    }
    if (!ReadWholeFile(path, text, &result.Error))
        return false;
    return Import(text, path, result);
}

bool ImportMayaAsciiText(std::string_view text, const std::string& scenePath, ImportResult& result)
{
    return Import(text, scenePath, result);
}
