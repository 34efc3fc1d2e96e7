#include <gtest/gtest.h>

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

TEST(TerminalLogSink, FileStreamIsNotTakenForATerminal)
{
    CapturedFile out;
    {
        TerminalLogSink sink(out.File());
        sink.Send("Frame: 1 / 3\r\n");
        sink.Send("Frame: 2 / 3\r\n");
    }

    EXPECT_EQ(out.Text(), "Frame: 1 / 3\nFrame: 2 / 3\n");
}

TEST(TerminalLogSink, ProgressCounterRedrawsItsLineOnATerminal)
{
    CapturedFile out;
    {
        TerminalLogSink sink(out.File(), true);
        sink.Send("Exporting bone animation: walk\r\n");
        sink.Send("Frame: 9 / 10\r\n");
        sink.Send("Frame: 10 / 10\r\n");
        sink.Send("Finished!\r\n");
    }

    EXPECT_EQ(out.Text(), "Exporting bone animation: walk"
                          "\nFrame: 9 / 10"
                          "\rFrame: 10 / 10\x1b[K"
                          "\nFinished!"
                          "\n");
}

TEST(TerminalLogSink, LinesWithoutNumbersNeverOverwriteEachOther)
{
    CapturedFile out;
    {
        TerminalLogSink sink(out.File(), true);
        sink.Send("Bone animation...\r\n");
        sink.Send("Bone animation...\r\n");
    }

    EXPECT_EQ(out.Text(), "Bone animation...\nBone animation...\n");
}

TEST(TerminalLogSink, DifferentTextAroundTheNumbersStartsANewLine)
{
    CapturedFile out;
    {
        TerminalLogSink sink(out.File(), true);
        sink.Send("AdjustTri: Merging Vertices (0 / 9000)\r\n");
        sink.Send("AdjustTri: Removing Degenerate Triangles (0 / 9000)\r\n");
    }

    EXPECT_EQ(out.Text(), "AdjustTri: Merging Vertices (0 / 9000)\n"
                          "AdjustTri: Removing Degenerate Triangles (0 / 9000)\n");
}

TEST(TerminalLogSink, ControlTextsShowNothingAndQuitEndsTheOpenLine)
{
    CapturedFile out;
    TerminalLogSink sink(out.File(), true);
    sink.Send("VGL_LOG_DISABLEQUIT");
    sink.Send("Frame: 1 / 2\r\n");
    sink.Send("VGL_LOG_ENABLEQUIT");
    sink.Send("VGL_LOG_QUIT");
    sink.Send("Frame: 2 / 2\r\n");
    sink.EndLine();

    EXPECT_EQ(out.Text(), "Frame: 1 / 2\nFrame: 2 / 2\n");
}

TEST(TerminalLogSink, EndLineLetsOtherOutputStartOnItsOwnLine)
{
    CapturedFile out;
    TerminalLogSink sink(out.File(), true);
    sink.Send("Frame: 1 / 2\r\n");
    sink.EndLine();
    sink.EndLine();
    std::fputs("other\n", out.File());

    EXPECT_EQ(out.Text(), "Frame: 1 / 2\nother\n");
}
