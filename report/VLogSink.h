#pragma once
// Where log and status lines go: the log viewer's window in the plug-in, the terminal in the command
// line, a recorder in tests. Every message arrives as one text, as the log viewer receives it.

#include <string_view>

class VLogSink {
public:
    virtual ~VLogSink() = default;
    // Synchronous: the text may be gone once this returns.
    virtual void Send(std::string_view message) = 0;
};
