#include "settings/ProgramRegistry.h"

#include "settings/VSettingsStore.h"

namespace {

std::string WithoutTrailingSeparator(std::string path)
{
    while (path.size() > 1 && (path.back() == '\\' || path.back() == '/'))
        path.pop_back();
    return path;
}

} // namespace

std::string ProgramInstallationKey(std::string_view programName)
{
    return std::string(kInstallationKeyRoot) + std::string(programName);
}

bool IsProgramRegistered(const VSettingsStore& store, std::string_view programName)
{
    return !programName.empty() && store.HasKey(ProgramInstallationKey(programName));
}

std::optional<std::string> RegisteredProgramPath(const VSettingsStore& store, std::string_view programName)
{
    if (programName.empty())
        return std::nullopt;
    std::optional<std::string> path = store.ReadString(ProgramInstallationKey(programName), "");
    if (!path || path->size() > kMaxRegisteredPathLength)
        return std::nullopt;
    return path;
}

std::string UnquotedProgramPath(std::string_view path)
{
    if (!path.empty() && path.front() == '"')
        path.remove_prefix(1);
    std::string unquoted(path);
    const size_t tailStart = unquoted.size() > 4 ? unquoted.size() - 4 : 0;
    std::string tail;
    for (size_t i = tailStart; i < unquoted.size(); ++i)
        if (unquoted[i] != '"')
            tail += unquoted[i];
    unquoted.resize(tailStart);
    return unquoted + tail;
}

bool RegisterProgram(VSettingsStore& store, std::string_view programName, std::string_view path)
{
    if (programName.empty() || programName.find_first_of("\\\r\n") != std::string_view::npos ||
        path.size() > kMaxRegisteredPathLength)
        return false;
    return store.WriteString(ProgramInstallationKey(programName), "", path) && store.Flush();
}

std::string InstallationFolder(const VSettingsStore& store, std::string_view moduleFolder)
{
    if (const std::optional<std::string> path = RegisteredProgramPath(store, "Kestrel"))
        return WithoutTrailingSeparator(UnquotedProgramPath(*path));
    return WithoutTrailingSeparator(std::string(moduleFolder));
}
