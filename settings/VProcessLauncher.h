#pragma once
// Starting external programs. Both operations return as soon as the program has started or
// failed to start: an export never waits for a viewer.

#include <string>
#include <string_view>

// ShellOpen's answers follow the Windows shell: above this the program started; otherwise the
// answer is the shell's error code (2 file not found, 3 path not found, 5 access denied,
// 8 out of memory, 11 not a program).
inline constexpr int kShellOpenFailureLimit = 32;

class VProcessLauncher {
public:
    virtual ~VProcessLauncher() = default;

    // commandLine is the program in double quotes, a blank and its arguments, quoted as on the
    // Windows command line. false, with the reason in error, when it did not start.
    virtual bool StartProcess(std::string_view commandLine, std::string* error = nullptr) = 0;

    // Opens file as the shell's "open" verb does, with arguments (quoted as above) and
    // workingFolder as the program's current folder.
    virtual int ShellOpen(std::string_view file, std::string_view arguments, std::string_view workingFolder) = 0;
};
