#pragma once
// The message sink that the long geometry passes (the visibility builder, the lightmap UV
// generator) write their progress and statistics lines to. The pipeline hands one in for the
// length of a pass; a pass without one writes nothing.

class VGLogger {
public:
    virtual ~VGLogger() = default;
    // printf-style.
    virtual void Print(const char* format, ...) __attribute__((format(printf, 2, 3))) = 0;
    // As Print, marked as a warning by the sink.
    virtual void Warning(const char* format, ...) __attribute__((format(printf, 2, 3))) = 0;
};
