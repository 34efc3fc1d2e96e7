#include "settings/SettingsFile.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "tests/UniqueTempFolder.h"

#include "DebugCapture.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class SettingsFileTest : public ::testing::Test {
protected:
    void WriteDataFolderFile(std::string_view text)
    {
        ASSERT_TRUE(CreateDirectories(m_target + "_data"));
        ASSERT_TRUE(WriteFileAtomically(m_target + "_data\\_config.Xportel", text));
    }

    UniqueTempFolder m_folder{"kestrel_settings"};
    std::string m_target = JoinPath(m_folder.SystemPath(), "hero.model");
};

} // namespace

TEST_F(SettingsFileTest, SettingsLiveInTheTargetsDataFolder)
{
    EXPECT_EQ(SettingsFilePath("C:\\game\\hero.model"), "C:\\game\\hero.model_data\\_config.Xportel");
    EXPECT_EQ(LegacySettingsFilePath("C:\\game\\hero.model"), "C:\\game\\hero.model.export.xml");
}

TEST_F(SettingsFileTest, DataFolderFileIsPreferredOverTheLegacyFileWhichIsReadOnlyWhereAllowed)
{
    ASSERT_TRUE(WriteFileAtomically(m_target + ".export.xml", "<OPTIONS>\r\n// MaxNumBones : 2\r\n"));
    EXPECT_EQ(ReadSettingsFile(m_target, true), "<OPTIONS>\r\n// MaxNumBones : 2\r\n");
    EXPECT_EQ(ReadSettingsFile(m_target, false), std::nullopt);
    WriteDataFolderFile("// MaxNumBones : 3\r\n");
    EXPECT_EQ(ReadSettingsFile(m_target, true), "// MaxNumBones : 3\r\n");
}

TEST_F(SettingsFileTest, LoadingAppliesTheStoredBlockAndTraces)
{
    WriteDataFolderFile("// MaxNumBones : 3\r\n// NumAnimations: 1\r\n// Animation: idle\r\n");
    VExportOptions options;
    VAnimationTable animations;
    DebugCapture debug;
    EXPECT_TRUE(LoadSettingsFromFile(m_target, false, options, animations));
    EXPECT_EQ(options.MaxNumBones, 3);
    ASSERT_EQ(animations.Count(), 1);
    EXPECT_EQ(animations[0].Name, "idle");
    EXPECT_TRUE(debug.Text().starts_with("LoadSettingsFromFile()\r\nLoadSettingsFromString()\r\n"));
}

TEST_F(SettingsFileTest, MissingOrEmptyFileLeavesTheDefaultsInForce)
{
    VExportOptions options;
    VAnimationTable animations;
    EXPECT_FALSE(LoadSettingsFromFile(m_target, true, options, animations));
    EXPECT_EQ(options, VExportOptions {});
    WriteDataFolderFile("");
    EXPECT_TRUE(LoadSettingsFromFile(m_target, true, options, animations));
    EXPECT_EQ(options, VExportOptions {});
}
