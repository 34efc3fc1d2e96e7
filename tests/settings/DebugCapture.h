#pragma once
// Collects what the code under test writes to the debug file while the capture lives.

#include "base/FileSystem.h"
#include "base/Path.h"
#include "report/DebugFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

class DebugCapture {
public:
    DebugCapture()
        : m_path(std::filesystem::temp_directory_path() /
                 ("kestrel_settings_debug_" +
                  std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + ".txt"))
    {
        EXPECT_TRUE(OpenDebugFile(FromNativePath(m_path.string()), DebugFileFlushEachLine));
    }
    ~DebugCapture()
    {
        CloseDebugFile();
        std::filesystem::remove(m_path);
    }
    DebugCapture(const DebugCapture&) = delete;
    DebugCapture& operator=(const DebugCapture&) = delete;

    // Closes the file; later lines are no longer captured.
    std::string Text()
    {
        CloseDebugFile();
        std::string text;
        EXPECT_TRUE(ReadWholeFile(FromNativePath(m_path.string()), text));
        return text;
    }

private:
    std::filesystem::path m_path;
};
