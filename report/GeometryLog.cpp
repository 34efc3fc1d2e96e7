#include "report/GeometryLog.h"

#include <cstdarg>
#include <string>

#include "base/TextUtil.h"

namespace {

VLogSink*& Sink()
{
    static VLogSink* sink = nullptr;
    return sink;
}

}

void SetGeometryLogSink(VLogSink* sink)
{
    Sink() = sink;
}

VLogSink* GeometryLogSink()
{
    return Sink();
}

void GeometryLog(const char* format, ...)
{
    VLogSink* sink = Sink();
    if (!sink)
        return;
    va_list args;
    va_start(args, format);
    const std::string text = FormatV(format, args);
    va_end(args);
    sink->Send(text);
}

ScopedGeometryLogSink::ScopedGeometryLogSink(VLogSink* sink)
    : m_previous(GeometryLogSink())
{
    SetGeometryLogSink(sink);
}

ScopedGeometryLogSink::~ScopedGeometryLogSink()
{
    SetGeometryLogSink(m_previous);
}
