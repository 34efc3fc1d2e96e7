#include "report/DebugFile.h"

#include <cstdarg>
#include <cstdio>
#include <string>

#include "base/Path.h"
#include "base/TextUtil.h"

namespace {

struct DebugFileState {
    std::FILE* File = nullptr;
    uint32_t Flags = 0;
};

DebugFileState& State()
{
    static DebugFileState state;
    return state;
}

}

bool OpenDebugFile(std::string_view path, uint32_t flags)
{
    CloseDebugFile();
    const std::string nativePath = ToNativePath(path.empty() ? std::string_view("DebugFile.txt") : path);
    DebugFileState& state = State();
    state.File = std::fopen(nativePath.c_str(), "wb");
    state.Flags = flags;
    return state.File != nullptr;
}

void CloseDebugFile()
{
    DebugFileState& state = State();
    if (state.File)
        std::fclose(state.File);
    state.File = nullptr;
}

bool IsDebugFileOpen()
{
    return State().File != nullptr;
}

void DebugPrint(const char* format, ...)
{
    DebugFileState& state = State();
    if (!state.File)
        return;
    va_list args;
    va_start(args, format);
    const std::string text = FormatV(format, args);
    va_end(args);
    std::fwrite(text.data(), 1, text.size(), state.File);
    if (state.Flags & DebugFileFlushEachLine)
        std::fflush(state.File);
}
