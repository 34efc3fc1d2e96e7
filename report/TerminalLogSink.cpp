#include "report/TerminalLogSink.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>

#include "base/TextUtil.h"
#include "report/LogWindow.h"

namespace {

constexpr int BarWidth = 30;
constexpr int PhaseWidth = 20;
constexpr const char* ClearToEnd = "\x1b[K";
constexpr const char* UpOneRow = "\x1b[1A";

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// The line with every run of digits replaced by one marker: progress lines of one counter share it.
std::string ShapeOf(std::string_view line)
{
    std::string shape;
    shape.reserve(line.size());
    for (size_t i = 0; i < line.size(); ++i) {
        if (!IsDigit(line[i])) {
            shape += line[i];
            continue;
        }
        shape += '\x01';
        while (i + 1 < line.size() && IsDigit(line[i + 1]))
            ++i;
    }
    return shape;
}

// "Welding              [#############.................]  43%  0:07"; a phase whose extent is
// unknown shows an empty bar and no percentage.
std::string BarText(std::string_view phase, double fraction, double seconds)
{
    std::string text(phase.substr(0, PhaseWidth));
    text.resize(PhaseWidth, ' ');
    const int filled = fraction < 0.0 ? 0 : static_cast<int>(std::lround(std::min(fraction, 1.0) * BarWidth));
    text += " [";
    text.append(static_cast<size_t>(filled), '#');
    text.append(static_cast<size_t>(BarWidth - filled), fraction < 0.0 ? ' ' : '.');
    text += "] ";
    text += fraction < 0.0 ? std::string("    ") : Format("%3d%%", static_cast<int>(std::min(fraction, 1.0) * 100.0));
    const int whole = static_cast<int>(seconds);
    text += Format("  %d:%02d", whole / 60, whole % 60);
    return text;
}

}

TerminalLogSink::TerminalLogSink(std::FILE* out)
    : TerminalLogSink(out, isatty(fileno(out)) != 0)
{
}

TerminalLogSink::TerminalLogSink(std::FILE* out, bool drawProgress)
    : m_out(out)
    , m_drawProgress(drawProgress)
{
}

TerminalLogSink::~TerminalLogSink()
{
    EndLine();
}

void TerminalLogSink::Send(std::string_view message)
{
    // The viewer's control texts steer a window; a terminal has nothing to show for them.
    if (message == LogQuitMessage) {
        EndLine();
        return;
    }
    if (message == LogDisableQuitMessage || message == LogEnableQuitMessage)
        return;

    size_t start = 0;
    while (start < message.size()) {
        const size_t end = message.find_first_of("\r\n", start);
        if (end == std::string_view::npos) {
            WriteLine(message.substr(start));
            break;
        }
        WriteLine(message.substr(start, end - start));
        start = end + 1;
        if (message[end] == '\r' && start < message.size() && message[start] == '\n')
            ++start;
    }
    std::fflush(m_out);
}

void TerminalLogSink::ShowProgress(std::string_view phase, double fraction, double seconds)
{
    if (!m_drawProgress)
        return;
    if (phase.empty()) {
        EraseBar();
    } else {
        std::string bar = BarText(phase, fraction, seconds);
        if (bar == m_bar)
            return;
        std::fputc('\r', m_out);
        std::fputs(bar.c_str(), m_out);
        std::fputs(ClearToEnd, m_out);
        m_bar = std::move(bar);
    }
    std::fflush(m_out);
}

void TerminalLogSink::EndLine()
{
    EraseBar();
    // Whatever is written next may come between the counter line and the next one.
    m_counterShape.clear();
    std::fflush(m_out);
}

void TerminalLogSink::EraseBar()
{
    if (m_bar.empty())
        return;
    std::fputc('\r', m_out);
    std::fputs(ClearToEnd, m_out);
    m_bar.clear();
}

void TerminalLogSink::WriteLine(std::string_view line)
{
    if (!m_drawProgress) {
        std::fwrite(line.data(), 1, line.size(), m_out);
        std::fputc('\n', m_out);
        return;
    }

    // The bar's row takes the line, and the bar moves one row down below it.
    const std::string bar = m_bar;
    EraseBar();
    std::string shape = ShapeOf(line);
    const bool isCounter = std::any_of(line.begin(), line.end(), IsDigit);
    const bool overwrite = isCounter && shape == m_counterShape;
    if (overwrite) {
        std::fputs(UpOneRow, m_out);
        std::fputc('\r', m_out);
    }
    std::fwrite(line.data(), 1, line.size(), m_out);
    // What the longer previous counter text leaves behind.
    if (overwrite)
        std::fputs(ClearToEnd, m_out);
    std::fputc('\n', m_out);
    m_counterShape = isCounter ? std::move(shape) : std::string();
    if (!bar.empty()) {
        std::fputs(bar.c_str(), m_out);
        m_bar = bar;
    }
}
