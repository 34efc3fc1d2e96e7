#pragma once
// The log window of the command line. Messages are split into lines (any "\r\n", "\n" or "\r" ends
// one; a message without a line end is a line of its own) and written with native line ends.
//
// On a terminal the output stays readable while an export runs for minutes: the phase under way is
// a progress bar on the last row (phase, bar, percentage, elapsed time), redrawn in place, with the
// log lines scrolling above it; and a counter line that has the same text as the line before it
// apart from its numbers ("Frame: 3 / 40" after "Frame: 2 / 40") overwrites that line. Elsewhere
// (a pipe, a file, or when asked for plain output) every line is written as it comes and progress
// is not drawn.

#include <cstdio>
#include <string>
#include <string_view>

#include "report/VLogSink.h"

class TerminalLogSink final : public VLogSink {
public:
    // Draws progress when out is a terminal.
    explicit TerminalLogSink(std::FILE* out);
    TerminalLogSink(std::FILE* out, bool drawProgress);
    ~TerminalLogSink() override;

    TerminalLogSink(const TerminalLogSink&) = delete;
    TerminalLogSink& operator=(const TerminalLogSink&) = delete;

    void Send(std::string_view message) override;
    void ShowProgress(std::string_view phase, double fraction, double seconds) override;
    // Takes the progress bar off the screen, so that other output starts on a row of its own.
    void EndLine();

private:
    void WriteLine(std::string_view line);
    void EraseBar();

    std::FILE* m_out;
    bool m_drawProgress;
    // The shape of the last line written when it was a counter, which the next one may overwrite.
    std::string m_counterShape;
    // The bar as drawn on the last row; empty when none is shown.
    std::string m_bar;
};
