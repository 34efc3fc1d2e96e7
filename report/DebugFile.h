#pragma once
// The debug file: the trace of an export, written only while debug printing is on. One file is open
// at a time, module-wide, so that every part of the exporter can trace without being handed it.

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
