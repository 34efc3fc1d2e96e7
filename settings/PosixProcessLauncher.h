#pragma once
// Starts programs on POSIX systems. The program runs detached in a session of its own, so it
// outlives the export and never becomes a zombie of the host process; the caller waits only
// until the program's executable has been loaded or has failed to load.

#include "settings/VProcessLauncher.h"

class PosixProcessLauncher final : public VProcessLauncher {
public:
    bool StartProcess(std::string_view commandLine, std::string* error = nullptr) override;
    // Programs are started directly; a document is not handed to another application.
    int ShellOpen(std::string_view file, std::string_view arguments, std::string_view workingFolder) override;
};
