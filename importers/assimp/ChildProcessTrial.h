#pragma once
// Assimp 5.2 dereferences null pointers and reads past its buffers on some malformed files, in
// more places than checks of the file could cover. Where the platform can fork, a file is
// therefore read in a child process, which hands back what it read as bytes: a crash there costs
// the child, not the user's session, and the file is still read only once.

#include <functional>
#include <optional>
#include <string>

// Runs the work in a child process and answers the bytes it returned; nothing when the child
// crashed or was stopped instead of finishing. Where processes cannot be forked the work runs here.
std::optional<std::string> RunInChildProcess(const std::function<std::string()>& work);
