#pragma once
// Where the maker's programs are found: each registers its path as the default value of its own
// key when it is installed or first run. The exporter itself is registered as "Kestrel"; its key
// names the installation folder, which holds the plug-in's data files.

#include <optional>
#include <string>
#include <string_view>

class VSettingsStore;

inline constexpr std::string_view kInstallationKeyRoot = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvalle\\ZephraSDK\\";
// Longer paths do not fit the installation key's value and are not taken from it.
inline constexpr size_t kMaxRegisteredPathLength = 255;

std::string ProgramInstallationKey(std::string_view programName);

bool IsProgramRegistered(const VSettingsStore& store, std::string_view programName);

// The registered path as stored (possibly in double quotes); nothing when the program is not
// registered or its path is missing or too long.
std::optional<std::string> RegisteredProgramPath(const VSettingsStore& store, std::string_view programName);

// The path without a leading double quote and without any double quote among its last four
// characters, as installers write it either way.
std::string UnquotedProgramPath(std::string_view path);

// Registers (or moves) a program; false for an empty name, a name with a backslash or a line
// end, or a path longer than kMaxRegisteredPathLength. The store is flushed.
bool RegisterProgram(VSettingsStore& store, std::string_view programName, std::string_view path);

// The registered folder of "Kestrel" when that key exists, else the module's own folder;
// without a trailing backslash in either case.
std::string InstallationFolder(const VSettingsStore& store, std::string_view moduleFolder);
