#include "report/LogWindow.h"

#include <cstdarg>
#include <string>
#include <utility>

#include "base/TextUtil.h"
#include "report/VLogSink.h"

namespace {

struct LogWindowState {
    VLogSink* Window = nullptr;
    VLogWindowLocator Locator;
};

LogWindowState& State()
{
    static LogWindowState state;
    return state;
}

}

void SetLogWindowLocator(VLogWindowLocator locator)
{
    State().Locator = std::move(locator);
}

void SetLogSink(VLogSink* sink)
{
    State().Window = sink;
}

int FindLogWindow()
{
    LogWindowState& state = State();
    if (!state.Window && state.Locator)
        state.Window = state.Locator();
    return state.Window ? 0 : LogWindowNotFound;
}

void LogPrint(const char* format, ...)
{
    if (!State().Window)
        return;
    va_list args;
    va_start(args, format);
    const std::string text = FormatV(format, args);
    va_end(args);
    LogRaw(text);
}

void LogRaw(std::string_view text)
{
    VLogSink* window = State().Window;
    if (!window)
        return;
    window->Send(text.substr(0, LogMessageCapacity - 1));
}

void LogProgress(std::string_view phase, double fraction, double seconds)
{
    if (VLogSink* window = State().Window)
        window->ShowProgress(phase, fraction, seconds);
}

void LogControl(bool disableQuit)
{
    LogRaw(disableQuit ? LogDisableQuitMessage : LogEnableQuitMessage);
}

void LogQuit()
{
    LogRaw(LogQuitMessage);
    SetLogSink(nullptr);
}
