#pragma once
// The log window: status and log lines for the log viewer ("Reslook"). The window, once found, is
// held module-wide until LogQuit, so that every part of the exporter can log without being handed
// it. While none is held, log lines are dropped.

#include <cstddef>
#include <functional>
#include <string_view>

#include "report/VLogSink.h"

// The log protocol carries at most this many bytes per message, the terminating zero included.
constexpr size_t LogMessageCapacity = 32768;
constexpr int LogWindowNotFound = -2001;

constexpr std::string_view LogDisableQuitMessage = "VGL_LOG_DISABLEQUIT";
constexpr std::string_view LogEnableQuitMessage = "VGL_LOG_ENABLEQUIT";
constexpr std::string_view LogQuitMessage = "VGL_LOG_QUIT";

// How FindLogWindow looks for the viewer: brings its window to the top and answers its sink, or
// answers nullptr when it is not running. The sink must stay valid while it is held.
using VLogWindowLocator = std::function<VLogSink*()>;
void SetLogWindowLocator(VLogWindowLocator locator);

// Holds sink as the found log window (nullptr forgets it).
void SetLogSink(VLogSink* sink);

// 0 when a window is held or the locator finds one (it is then held), else LogWindowNotFound.
int FindLogWindow();

// printf-style; formats only while a window is held.
void LogPrint(const char* format, ...) __attribute__((format(printf, 1, 2)));
// Texts longer than the protocol carries are cut to LogMessageCapacity - 1 bytes.
void LogRaw(std::string_view text);
void LogControl(bool disableQuit);
// Passes the progress of the phase under way to the held window (VLogSink::ShowProgress).
void LogProgress(std::string_view phase, double fraction, double seconds);
// Tells the viewer to quit and forgets it.
void LogQuit();

// A sink that passes every message on to the log window, for steps that log through a sink of
// their own (GeometryLog).
class LogWindowForwarder final : public VLogSink {
public:
    void Send(std::string_view message) override { LogRaw(message); }
};
