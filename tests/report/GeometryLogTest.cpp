#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "report/GeometryLog.h"
#include "RecordingLogSink.h"

namespace {

class GeometryLogTest : public ::testing::Test {
protected:
    void SetUp() override { SetGeometryLogSink(nullptr); }
    void TearDown() override { SetGeometryLogSink(nullptr); }
};

}

TEST_F(GeometryLogTest, InstalledSinkReceivesTheFormattedLinesUntilRemoved)
{
    RecordingLogSink sink;
    SetGeometryLogSink(&sink);

    GeometryLog("AdjustTri: Merging Vertices (%d / %d)\r\n", 4096, 10000);
    GeometryLog("%i stray vertices removed\r\n", 7);
    SetGeometryLogSink(nullptr);
    GeometryLog("two\r\n");

    EXPECT_EQ(sink.Messages,
              (std::vector<std::string> { "AdjustTri: Merging Vertices (4096 / 10000)\r\n", "7 stray vertices removed\r\n" }));
    EXPECT_EQ(GeometryLogSink(), nullptr);
}

TEST_F(GeometryLogTest, DoesNotFormatWithoutASink)
{
    // Formatting "%s" would read the argument, and that page may not be read: the child dies.
    const long pageSize = sysconf(_SC_PAGESIZE);
    void* unreadable = mmap(nullptr, static_cast<size_t>(pageSize), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(unreadable, MAP_FAILED);

    EXPECT_EXIT(
        {
            GeometryLog("%s", static_cast<const char*>(unreadable));
            std::_Exit(0);
        },
        ::testing::ExitedWithCode(0), "");

    munmap(unreadable, static_cast<size_t>(pageSize));
}

TEST_F(GeometryLogTest, ScopedSinkPutsThePreviousSinkBackEvenWhenAnExceptionLeavesTheScope)
{
    RecordingLogSink outer;
    RecordingLogSink inner;
    SetGeometryLogSink(&outer);
    {
        ScopedGeometryLogSink scope(&inner);
        GeometryLog("inside\r\n");
    }
    GeometryLog("outside\r\n");
    try {
        ScopedGeometryLogSink scope(&inner);
        throw std::runtime_error("stripping failed");
    } catch (const std::runtime_error&) {
    }

    EXPECT_EQ(inner.Messages, (std::vector<std::string> { "inside\r\n" }));
    EXPECT_EQ(outer.Messages, (std::vector<std::string> { "outside\r\n" }));
    EXPECT_EQ(GeometryLogSink(), &outer);
}
