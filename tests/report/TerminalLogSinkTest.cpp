#include <gtest/gtest.h>

#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>

#include "report/TerminalLogSink.h"

namespace {

class CapturedFile {
public:
    CapturedFile()
        : m_file(std::tmpfile())
    {
    }
    ~CapturedFile()
    {
        if (m_file)
            std::fclose(m_file);
    }
    CapturedFile(const CapturedFile&) = delete;
    CapturedFile& operator=(const CapturedFile&) = delete;

    std::FILE* File() const { return m_file; }
    std::string Text() const
    {
        std::fflush(m_file);
        std::string text;
        std::rewind(m_file);
        for (int c = std::fgetc(m_file); c != EOF; c = std::fgetc(m_file))
            text += static_cast<char>(c);
        return text;
    }

private:
    std::FILE* m_file;
};

}

TEST(TerminalLogSink, WritesPlainLinesWithNativeLineEndsWhenNotATerminal)
{
    CapturedFile out;
    ASSERT_NE(out.File(), nullptr);
    {
        TerminalLogSink sink(out.File(), false);
        sink.Send("Opening debug file for a.qmesh\r\n\r\n");
        sink.Send("Frame: 1 / 3\r\n");
        sink.Send("Frame: 2 / 3\r\n");
        sink.Send("Tessellating (1024 / 4000)");
        sink.Send("a\nb\rc");
    }

    EXPECT_EQ(out.Text(), "Opening debug file for a.qmesh\n"
                          "\n"
                          "Frame: 1 / 3\n"
                          "Frame: 2 / 3\n"
                          "Tessellating (1024 / 4000)\n"
                          "a\nb\nc\n");
}

namespace {

// What the sink writes to a stream of the kind given, found out by itself: a pipe or a pseudo-terminal.
std::string WrittenTo(bool pseudoTerminal)
{
    int reading = -1;
    int writing = -1;
    if (pseudoTerminal) {
        if (openpty(&reading, &writing, nullptr, nullptr, nullptr) != 0)
            return "no pseudo-terminal";
        // Bytes as written: no echo, no line end translation.
        termios mode {};
        tcgetattr(writing, &mode);
        cfmakeraw(&mode);
        tcsetattr(writing, TCSANOW, &mode);
    } else {
        int ends[2];
        if (pipe(ends) != 0)
            return "no pipe";
        reading = ends[0];
        writing = ends[1];
    }
    std::FILE* out = fdopen(writing, "w");
    {
        TerminalLogSink sink(out);
        sink.ShowProgress("Welding", 0.5, 3.0);
        sink.Send("Frame: 1 / 3\r\n");
        sink.Send("Frame: 2 / 3\r\n");
        sink.ShowProgress("", -1.0, 0.0);
    }
    std::fclose(out);
    std::string text;
    char buffer[512];
    for (ssize_t got; (got = read(reading, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<size_t>(got));
    close(reading);
    return text;
}

}

TEST(TerminalLogSink, DrawsProgressOnAPseudoTerminalAndNoneInAPipe)
{
    EXPECT_EQ(WrittenTo(false), "Frame: 1 / 3\nFrame: 2 / 3\n");
    const std::string bar = "Welding              [###############...............]  50%  0:03";
    EXPECT_EQ(WrittenTo(true), "\r" + bar + "\x1b[K\r\x1b[KFrame: 1 / 3\n" + bar +
                                   "\r\x1b[K\x1b[1A\rFrame: 2 / 3\x1b[K\n" + bar + "\r\x1b[K");
}

TEST(TerminalLogSink, CounterLineOverwritesTheOneBeforeItOnATerminal)
{
    CapturedFile out;
    {
        TerminalLogSink sink(out.File(), true);
        sink.Send("Exporting bone animation: walk\r\n");
        sink.Send("Frame: 9 / 10\r\n");
        sink.Send("Frame: 10 / 10\r\n");
        // Without numbers, or with other text around them, a line never overwrites.
        sink.Send("Bone animation...\r\n");
        sink.Send("Bone animation...\r\n");
        sink.Send("AdjustTri: Merging Vertices (0 / 9000)\r\n");
        sink.Send("AdjustTri: Removing Degenerate Triangles (0 / 9000)\r\n");
    }

    EXPECT_EQ(out.Text(), "Exporting bone animation: walk\n"
                          "Frame: 9 / 10\n"
                          "\x1b[1A\rFrame: 10 / 10\x1b[K\n"
                          "Bone animation...\n"
                          "Bone animation...\n"
                          "AdjustTri: Merging Vertices (0 / 9000)\n"
                          "AdjustTri: Removing Degenerate Triangles (0 / 9000)\n");
}

TEST(TerminalLogSink, ProgressBarStaysOnTheLastRowBelowTheLogLines)
{
    CapturedFile out;
    {
        TerminalLogSink sink(out.File(), true);
        sink.ShowProgress("Importing", -1.0, 0.0);
        sink.ShowProgress("Welding", 0.5, 67.0);
        sink.ShowProgress("Welding", 0.5, 67.0);
        sink.Send("Generating triangle strips...\r\n");
        sink.ShowProgress("", -1.0, 0.0);
        sink.Send("Finished!\r\n");
    }

    const std::string importing = "Importing            [                              ]       0:00";
    const std::string welding = "Welding              [###############...............]  50%  1:07";
    EXPECT_EQ(out.Text(), "\r" + importing + "\x1b[K" +
                              "\r" + welding + "\x1b[K" +
                              "\r\x1b[K" + "Generating triangle strips...\n" + welding +
                              "\r\x1b[K" + "Finished!\n");
}

TEST(TerminalLogSink, ControlTextsShowNothingAndQuitTakesTheBarAway)
{
    CapturedFile out;
    TerminalLogSink sink(out.File(), true);
    sink.Send("VGL_LOG_DISABLEQUIT");
    sink.Send("Frame: 1 / 2\r\n");
    sink.Send("VGL_LOG_ENABLEQUIT");
    sink.ShowProgress("Saving", 1.0, 0.0);
    sink.Send("VGL_LOG_QUIT");
    // Other output came between: the next counter starts a line of its own.
    sink.Send("Frame: 2 / 2\r\n");

    EXPECT_EQ(out.Text(), "Frame: 1 / 2\n\rSaving               [##############################] 100%  0:00\x1b[K\r\x1b[K"
                          "Frame: 2 / 2\n");
}
