#pragma once
// The message sink of the visibility builder and the lightmap UV generator: their lines go to
// the log window.

class VExportLogger {
public:
    // printf-style.
    void Print(const char* format, ...) __attribute__((format(printf, 2, 3)));
    // Sent as "Warning:" followed by the formatted text.
    void Warning(const char* format, ...) __attribute__((format(printf, 2, 3)));
};
