#pragma once
// Collects what the code under test writes to the debug file while the capture lives.

#include "base/FileSystem.h"
#include "base/Path.h"
#include "report/DebugFile.h"
#include "tests/UniqueTempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

class DebugCapture {
public:
    DebugCapture()
    {
        EXPECT_TRUE(OpenDebugFile(FromNativePath(m_path.string()), DebugFileFlushEachLine));
    }
    ~DebugCapture() { CloseDebugFile(); }
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
    UniqueTempFolder m_folder{"kestrel_settings_debug"};
    std::filesystem::path m_path = m_folder.Native("debug.txt");
};
