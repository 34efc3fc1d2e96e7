#pragma once
// The message sink of the visibility builder and the lightmap UV generator: their lines go to
// the log window.

#include "report/VGLogger.h"

class VExportLogger : public VGLogger {
public:
    void Print(const char* format, ...) override __attribute__((format(printf, 2, 3)));
    // Sent as "Warning:" followed by the formatted text.
    void Warning(const char* format, ...) override __attribute__((format(printf, 2, 3)));
};
