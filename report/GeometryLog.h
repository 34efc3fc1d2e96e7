#pragma once
// The log of the geometry algorithms: progress and statistics lines that are wanted only now and
// then (around triangle stripping). With no sink installed GeometryLog returns before formatting,
// so the lines cost nothing on the ordinary path.

#include "report/VLogSink.h"

// One sink, module-wide, replaced by whoever needs the lines; nullptr removes it.
void SetGeometryLogSink(VLogSink* sink);
VLogSink* GeometryLogSink();

// printf-style, formatted with the C locale.
void GeometryLog(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Installs a sink for a scope and puts the previous one back, also when the scope is left by an
// exception (the export's crash guard catches those).
class ScopedGeometryLogSink {
public:
    explicit ScopedGeometryLogSink(VLogSink* sink);
    ~ScopedGeometryLogSink();

    ScopedGeometryLogSink(const ScopedGeometryLogSink&) = delete;
    ScopedGeometryLogSink& operator=(const ScopedGeometryLogSink&) = delete;

private:
    VLogSink* m_previous;
};
