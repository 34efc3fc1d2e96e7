#include "report/TerminalLogSink.h"

#include <unistd.h>

#include <algorithm>

#include "report/LogWindow.h"

namespace {

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

}

TerminalLogSink::TerminalLogSink(std::FILE* out)
    : TerminalLogSink(out, isatty(fileno(out)) != 0)
{
}

TerminalLogSink::TerminalLogSink(std::FILE* out, bool redrawProgress)
    : m_out(out)
    , m_redrawProgress(redrawProgress)
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

void TerminalLogSink::EndLine()
{
    if (!m_lineOpen)
        return;
    std::fputc('\n', m_out);
    std::fflush(m_out);
    m_lineOpen = false;
    m_openLineShape.clear();
}

void TerminalLogSink::WriteLine(std::string_view line)
{
    if (!m_redrawProgress) {
        std::fwrite(line.data(), 1, line.size(), m_out);
        std::fputc('\n', m_out);
        return;
    }

    std::string shape = ShapeOf(line);
    const bool isCounter = std::any_of(line.begin(), line.end(), IsDigit);
    if (m_lineOpen && isCounter && shape == m_openLineShape) {
        // Back to the start of the line, then clear what the longer previous text leaves behind.
        std::fputc('\r', m_out);
        std::fwrite(line.data(), 1, line.size(), m_out);
        std::fputs("\x1b[K", m_out);
        return;
    }
    if (m_lineOpen)
        std::fputc('\n', m_out);
    std::fwrite(line.data(), 1, line.size(), m_out);
    m_lineOpen = true;
    m_openLineShape = std::move(shape);
}
