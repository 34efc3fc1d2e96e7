#include <gtest/gtest.h>

#include <unistd.h>

#include <clocale>
#include <filesystem>
#include <string>

#include "report/DebugFile.h"
#include "TempFolder.h"

namespace {

class DebugFileTest : public ::testing::Test {
protected:
    void TearDown() override { CloseDebugFile(); }

    TempFolder m_folder;
};

}

TEST_F(DebugFileTest, DebugPrintWritesFormattedLinesVerbatimEachOnDiskAtOnce)
{
    ASSERT_TRUE(OpenDebugFile(m_folder.SystemPath() + "debug.txt", DebugFileFlushEachLine));

    DebugPrint("Opening debug file for %s\r\n\r\n", "c:\\out\\a.qmesh");
    DebugPrint("Settings version: %i\r\n", 4);
    EXPECT_EQ(m_folder.Read("debug.txt"), "Opening debug file for c:\\out\\a.qmesh\r\n\r\nSettings version: 4\r\n");
    DebugPrint("OptimizeMesh() - move end\n");
    CloseDebugFile();

    EXPECT_EQ(m_folder.Read("debug.txt"),
              "Opening debug file for c:\\out\\a.qmesh\r\n\r\n"
              "Settings version: 4\r\n"
              "OptimizeMesh() - move end\n");
}

TEST_F(DebugFileTest, NumbersCarryADecimalPointWhateverTheLocale)
{
    const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8") && !std::setlocale(LC_NUMERIC, "de_DE"))
        GTEST_SKIP() << "no German locale installed";
    ASSERT_TRUE(OpenDebugFile(m_folder.SystemPath() + "debug.txt", DebugFileFlushEachLine));
    DebugPrint("%f\r\n", 1.5);
    std::setlocale(LC_NUMERIC, previous.c_str());

    EXPECT_EQ(m_folder.Read("debug.txt"), "1.500000\r\n");
}

TEST_F(DebugFileTest, ReopeningTruncatesThePreviousTraceAndNothingIsWrittenWhileClosed)
{
    DebugPrint("lost %s\r\n", "line");
    EXPECT_FALSE(IsDebugFileOpen());
    ASSERT_TRUE(OpenDebugFile(m_folder.SystemPath() + "debug.txt", DebugFileFlushEachLine));
    DebugPrint("first export, a long line of trace\r\n");
    CloseDebugFile();

    ASSERT_TRUE(OpenDebugFile(m_folder.SystemPath() + "debug.txt", DebugFileFlushEachLine));
    DebugPrint("second\r\n");
    CloseDebugFile();
    DebugPrint("after close\r\n");

    EXPECT_EQ(m_folder.Read("debug.txt"), "second\r\n");
}

TEST_F(DebugFileTest, FileThatCannotBeCreatedLeavesNoFileOpen)
{
    ASSERT_TRUE(OpenDebugFile(m_folder.SystemPath() + "debug.txt", DebugFileFlushEachLine));

    EXPECT_FALSE(OpenDebugFile(m_folder.SystemPath() + "missing\\debug.txt", DebugFileFlushEachLine));

    EXPECT_FALSE(IsDebugFileOpen());
    DebugPrint("dropped\r\n");
    EXPECT_EQ(m_folder.Read("debug.txt"), "");
}

TEST_F(DebugFileTest, OpeningAnotherFileClosesTheFirst)
{
    ASSERT_TRUE(OpenDebugFile(m_folder.SystemPath() + "one.txt", 0));
    DebugPrint("one\r\n");
    ASSERT_TRUE(OpenDebugFile(m_folder.SystemPath() + "two.txt", DebugFileFlushEachLine));
    DebugPrint("two\r\n");

    EXPECT_EQ(m_folder.Read("one.txt"), "one\r\n");
    EXPECT_EQ(m_folder.Read("two.txt"), "two\r\n");
}

TEST_F(DebugFileTest, EmptyPathOpensDebugFileTxtInTheCurrentFolder)
{
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(m_folder.Native(""));
    const bool opened = OpenDebugFile("", DebugFileFlushEachLine);
    DebugPrint("here\r\n");
    CloseDebugFile();
    std::filesystem::current_path(previous);

    ASSERT_TRUE(opened);
    EXPECT_EQ(m_folder.Read("DebugFile.txt"), "here\r\n");
}
