#pragma once
// The log window of the command line. Messages are split into lines (any "\r\n", "\n" or "\r" ends
// one; a message without a line end is a line of its own) and written with native line ends.
//
// On a terminal a progress counter redraws itself instead of scrolling: a line that has the same
// text as the line before it apart from its numbers ("Frame: 3 / 40" after "Frame: 2 / 40")
// overwrites that line. To allow this the last line is left open until the next one arrives, and
// ended by EndLine, by the viewer's quit message or when the sink is destroyed. Elsewhere (a pipe,
// a file) every line is written as it comes.

#include <cstdio>
#include <string>
#include <string_view>

#include "report/VLogSink.h"

class TerminalLogSink final : public VLogSink {
public:
    // Redraws progress lines when out is a terminal.
    explicit TerminalLogSink(std::FILE* out);
    TerminalLogSink(std::FILE* out, bool redrawProgress);
    ~TerminalLogSink() override;

    TerminalLogSink(const TerminalLogSink&) = delete;
    TerminalLogSink& operator=(const TerminalLogSink&) = delete;

    void Send(std::string_view message) override;
    // Ends an open line, so that other output to the terminal starts on a line of its own.
    void EndLine();

private:
    void WriteLine(std::string_view line);

    std::FILE* m_out;
    bool m_redrawProgress;
    bool m_lineOpen = false;
    std::string m_openLineShape;
};
