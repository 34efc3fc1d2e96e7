#pragma once
// Where log and status lines go: the log viewer's window in the plug-in, the terminal in the command
// line, a recorder in tests. Every message arrives as one text, as the log viewer receives it.

#include <string_view>

class VLogSink {
public:
    virtual ~VLogSink() = default;
    // Synchronous: the text may be gone once this returns.
    virtual void Send(std::string_view message) = 0;
    // How far the phase under way has got: fraction from 0 to 1, negative while unknown, and the
    // seconds since it began; an empty phase means that none runs any more. The log viewer's
    // protocol carries texts only, so a window shows progress only where it can draw it.
    virtual void ShowProgress(std::string_view /*phase*/, double /*fraction*/, double /*seconds*/) {}
};
