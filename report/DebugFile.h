#pragma once
// The debug file: the trace of an export, written only while debug printing is on. One file is open
// at a time, module-wide, so that every part of the exporter can trace without being handed it.

#include "report/VLogSink.h"

#include <cstdint>
#include <string_view>

enum VDebugFileFlags : uint32_t {
    DebugFileFlushEachLine = 1,
};

// Creates (truncates) the file, or "DebugFile.txt" in the current folder when path is empty, and
// closes a file still open. Answers false, with no file open, when it cannot be created.
bool OpenDebugFile(std::string_view path, uint32_t flags);
void CloseDebugFile();
bool IsDebugFileOpen();

// printf-style; written as bytes without line-end conversion. Does nothing, not even format,
// while no file is open.
void DebugPrint(const char* format, ...) __attribute__((format(printf, 1, 2)));

// A sink that passes every message on to the debug file, for steps that log through a sink of
// their own (GeometryLog).
class DebugFileForwarder final : public VLogSink {
public:
    void Send(std::string_view message) override
    {
        DebugPrint("%.*s", static_cast<int>(message.size()), message.data());
    }
};

