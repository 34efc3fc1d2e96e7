#include "settings/IniSettingsStore.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "ScratchFolder.h"

namespace {

constexpr const char* kKey = "HKEY_CURRENT_USER\\Software\\Orvalle\\ZephraSDK\\Kestrel";

class EnvironmentOverride {
public:
    EnvironmentOverride(const char* name, const char* value)
        : m_name(name)
    {
        if (const char* old = std::getenv(name))
            m_old = old;
        if (value)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }
    ~EnvironmentOverride()
    {
        if (m_old)
            setenv(m_name, m_old->c_str(), 1);
        else
            unsetenv(m_name);
    }

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

} // namespace

TEST(IniSettingsStore, MissingFileIsAnEmptyStoreAndNoPathCannotBeFlushed)
{
    ScratchFolder folder;
    IniSettingsStore store(folder.SystemPath("kestrel\\settings.ini"));
    EXPECT_TRUE(store.Load());
    EXPECT_FALSE(store.HasKey(kKey));
    EXPECT_EQ(store.ReadNumber(kKey, "ShowLog"), std::nullopt);
    IniSettingsStore pathless("");
    ASSERT_TRUE(pathless.WriteNumber(kKey, "ToolTips", 1));
    EXPECT_FALSE(pathless.Flush()) << "a store without a path cannot flush";
    EXPECT_FALSE(pathless.LastError().empty());
}

TEST(IniSettingsStore, FlushedValuesAreReadByTheNextSession)
{
    ScratchFolder folder;
    const std::string path = folder.SystemPath("kestrel\\settings.ini");
    {
        IniSettingsStore store(path);
        ASSERT_TRUE(store.Load());
        ASSERT_TRUE(store.WriteNumber(kKey, "ToolTips", 3));
        ASSERT_TRUE(store.WriteBinary(kKey, "MeshFactor", std::string("\x00\x00\x00\x40", 4)));
        ASSERT_TRUE(store.WriteString(kKey, "ModelViewer", "Modlook"));
        ASSERT_TRUE(store.Flush()) << store.LastError();
    }
    IniSettingsStore next(path);
    ASSERT_TRUE(next.Load());
    EXPECT_TRUE(next.HasKey(kKey));
    EXPECT_EQ(next.ReadNumber(kKey, "ToolTips"), 3u);
    EXPECT_EQ(next.ReadBinary(kKey, "MeshFactor"), std::string("\x00\x00\x00\x40", 4));
    EXPECT_EQ(next.ReadString(kKey, "ModelViewer"), "Modlook");
}

TEST(IniSettingsStore, WritesAreReadBeforeFlushButNotAsAnotherTypeAndReachTheFileOnlyWithFlush)
{
    ScratchFolder folder;
    IniSettingsStore store(folder.SystemPath("settings.ini"));
    ASSERT_TRUE(store.WriteNumber(kKey, "ToolTips", 1));
    ASSERT_TRUE(store.WriteString(kKey, "Shown", "1"));
    EXPECT_EQ(store.ReadNumber(kKey, "ToolTips"), 1u);
    EXPECT_EQ(store.ReadNumber(kKey, "Shown"), std::nullopt);
    EXPECT_EQ(store.ReadBinary(kKey, "Shown"), std::nullopt);
    EXPECT_FALSE(folder.Has("settings.ini"));
}

TEST(IniSettingsStore, FlushKeepsValuesAnotherSessionWroteMeanwhile)
{
    ScratchFolder folder;
    const std::string path = folder.SystemPath("settings.ini");
    IniSettingsStore first(path);
    IniSettingsStore second(path);
    ASSERT_TRUE(first.Load());
    ASSERT_TRUE(second.Load());

    ASSERT_TRUE(second.WriteString("HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvalle\\ZephraSDK\\Modlook", "", "/opt/modlook"));
    ASSERT_TRUE(second.Flush());
    ASSERT_TRUE(first.WriteNumber(kKey, "DebugPrint", 1));
    ASSERT_TRUE(first.Flush());

    IniSettingsStore reader(path);
    ASSERT_TRUE(reader.Load());
    EXPECT_EQ(reader.ReadString("HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvalle\\ZephraSDK\\Modlook", ""), "/opt/modlook");
    EXPECT_EQ(reader.ReadNumber(kKey, "DebugPrint"), 1u);
}

TEST(IniSettingsStore, UnreadableLinesAreReportedTheRestKeptAndTheOriginalPutAsideOnRewriting)
{
    ScratchFolder folder;
    const std::string original = "[K]\n\"A\"=dword:5\n\"B\"=garbage\n";
    folder.Write("settings.ini", original);
    IniSettingsStore store(folder.SystemPath("settings.ini"));
    std::string error;
    EXPECT_FALSE(store.Load(&error));
    EXPECT_NE(error.find("line 3: unreadable value"), std::string::npos) << error;
    EXPECT_EQ(store.ReadNumber("K", "A"), 5u);
    ASSERT_TRUE(store.WriteNumber("K", "A", 1));
    ASSERT_TRUE(store.Flush()) << store.LastError();
    EXPECT_EQ(folder.Read("settings.ini.bak"), original);
    EXPECT_EQ(folder.Read("settings.ini"), "[K]\n\"A\"=dword:00000001\n");
}

TEST(IniSettingsStore, OversizedFileIsNotRead)
{
    ScratchFolder folder;
    folder.Write("settings.ini", "[K]\n\"A\"=dword:1\n" + std::string(2u << 20, ';'));
    IniSettingsStore store(folder.SystemPath("settings.ini"));
    std::string error;
    EXPECT_FALSE(store.Load(&error));
    EXPECT_NE(error.find("too large"), std::string::npos) << error;
    EXPECT_FALSE(store.HasKey("K"));
}

TEST(IniSettingsStore, KeyNameWithALineEndIsRefused)
{
    ScratchFolder folder;
    IniSettingsStore store(folder.SystemPath("settings.ini"));
    EXPECT_FALSE(store.WriteNumber("K\n[Other]", "A", 1));
    EXPECT_FALSE(store.WriteNumber("", "A", 1));
    EXPECT_TRUE(store.Flush());
    EXPECT_FALSE(folder.Has("settings.ini"));
}

TEST(IniSettingsStore, UserFileLivesUnderTheXdgConfigFolderOrDotConfigInHome)
{
    {
        EnvironmentOverride config("XDG_CONFIG_HOME", "/cfg/user");
        EXPECT_EQ(DefaultUserSettingsFilePath(), "\\cfg\\user\\kestrel\\settings.ini");
    }
    EnvironmentOverride config("XDG_CONFIG_HOME", "relative/ignored");
    {
        EnvironmentOverride home("HOME", "/home/artist");
        EXPECT_EQ(DefaultUserSettingsFilePath(), "\\home\\artist\\.config\\kestrel\\settings.ini");
    }
    EnvironmentOverride home("HOME", nullptr);
    EXPECT_EQ(DefaultUserSettingsFilePath(), "") << "unknown without a home";
}
