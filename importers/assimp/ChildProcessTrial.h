#pragma once
// Assimp 5.2 dereferences null pointers and reads past its buffers on some malformed files, in
// more places than checks of the file could cover. Where the platform can fork, a file is
// therefore read once in a child process first: a crash there costs the child, not the user's
// session.

#include <functional>

// Runs the work in a child process; false when the child crashed or was stopped instead of
// finishing. Where processes cannot be forked the work is not run and the answer is true.
bool FinishesInChildProcess(const std::function<void()>& work);
