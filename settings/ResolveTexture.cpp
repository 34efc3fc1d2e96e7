#include "settings/ResolveTexture.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "report/LogWindow.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"
#include "settings/RelativePath.h"
#include "settings/TextureNameTable.h"

namespace {

constexpr int32_t kCopyTextures = 0;
constexpr int32_t kLocateTextures = 1;
// Texture folders are shallow; the bound keeps a folder link that points back up from walking
// for ever.
constexpr int kMaxLocateDepth = 32;

std::string CopyTexture(const std::string& source, const TextureResolveContext& context, VReport& report)
{
    const std::string target = JoinPath(context.TextureDirectory, FileNameOf(source));
    if (!EqualsNoCase(target, source)) {
        LogPrint("Copying file '%s' to '%s'\r\n", ShownPath(source).c_str(), ShownPath(target).c_str());
        if (CopyFileTo(source, target, true))
            MakeWritable(target);
        else
            report.AddIssue(IssueFileNotCopied,
                            Format("'%s' to '%s'\r\n", ShownPath(source).c_str(), ShownPath(target).c_str()));
    }
    return TextureOutputName(target, context);
}

// Depth first in listing order: a sub-folder listed before a matching file is searched first.
std::optional<std::string> FindInFolderTree(const std::string& folder, std::string_view fileName, int depth)
{
    for (const DirectoryEntry& entry : ListDirectory(folder)) {
        if (!entry.IsDirectory) {
            if (EqualsNoCase(entry.Name, fileName))
                return JoinPath(folder, entry.Name);
        } else if (depth < kMaxLocateDepth) {
            if (std::optional<std::string> found = FindInFolderTree(JoinPath(folder, entry.Name), fileName, depth + 1))
                return found;
        }
    }
    return std::nullopt;
}

std::string LocateTexture(const std::string& source, const TextureResolveContext& context, VReport& report)
{
    const std::string fileName = FileNameOf(source);
    std::optional<std::string> found = FindInFolderTree(context.TextureDirectory, fileName, 0);
    if (!found) {
        found = JoinPath(context.TextureDirectory, fileName);
        report.AddIssue(IssueTextureNotFound, ShownPath(*found));
    }
    return TextureOutputName(*found, context);
}

} // namespace

std::string TextureOutputName(std::string_view path, const TextureResolveContext& context)
{
    if (context.ProjRelativeFilenames && !context.ProjectDirectory.empty())
        return "\\" + RelativePath(path, context.ProjectDirectory);
    return RelativePath(path, context.BaseDirectory);
}

std::optional<std::string> ResolveTexture(std::string_view source, const TextureResolveContext& context,
                                          TextureNameTable& names, VReport& report)
{
    if (source.empty())
        return std::nullopt;
    // Maya writes texture paths with forward slashes.
    std::string sourcePath = FromNativePath(source);
    if (EqualsNoCase(sourcePath, kColorAtlasTexture))
        return std::string(source);
    if (FileExists(sourcePath + ".texanim"))
        sourcePath += ".texanim";
    if (std::optional<std::string> known = names.Find(sourcePath))
        return known;

    std::string name;
    if (context.TextureBehaviour == kCopyTextures)
        name = CopyTexture(sourcePath, context, report);
    else if (context.TextureBehaviour == kLocateTextures)
        name = LocateTexture(sourcePath, context, report);
    if (name.empty())
        name = kTextureProcessingError;
    names.Add(sourcePath, name);
    return name;
}
