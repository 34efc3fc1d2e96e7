#include "settings/ApplicationSettings.h"

#include "settings/IniSettingsStore.h"

#include <gtest/gtest.h>

#include <string>

#include "ScratchFolder.h"

namespace {

class ApplicationSettingsTest : public ::testing::Test {
protected:
    std::string Path() const { return m_folder.SystemPath("settings.ini"); }

    ScratchFolder m_folder;
};

} // namespace

TEST_F(ApplicationSettingsTest, SavedSettingsLoadBackInANewSession)
{
    ApplicationSettings saved;
    saved.ShowLog = false;
    saved.ToolTips = 1;
    saved.DebugPrint = 1;
    saved.ModelViewer = "C:\\Tools\\Modlook.exe";
    saved.ModelArgs = "-model \"$targetfile\" -dir $targetdir";
    saved.MeshViewer = "Meshlook";
    saved.MeshArgs = "$projectdir";
    saved.EmbedSettingsInScene = true;
    saved.WarnPolyCount = true;
    saved.MeshFactor = 2.5f;
    saved.LightmapUVs = 1;
    {
        IniSettingsStore store(Path());
        ASSERT_TRUE(SaveApplicationSettings(store, saved));
    }
    IniSettingsStore store(Path());
    ASSERT_TRUE(store.Load());
    ApplicationSettings loaded;
    LoadApplicationSettings(store, loaded);
    EXPECT_EQ(loaded, saved);
}

// The defaults, saved: every value's registry name, type and default.
TEST_F(ApplicationSettingsTest, ValuesAreStoredWithTheirRegistryNamesAndTypes)
{
    ApplicationSettings settings;
    settings.MeshFactor = 0.5f;
    IniSettingsStore store(Path());
    ASSERT_TRUE(SaveApplicationSettings(store, settings));

    EXPECT_EQ(m_folder.Read("settings.ini"),
              "[HKEY_CURRENT_USER\\Software\\Orvalle\\ZephraSDK\\Kestrel]\n"
              "\"DebugPrint\"=dword:00000000\n"
              "\"EmbedSettingsInScene\"=dword:00000000\n"
              "\"LightmapUVs\"=dword:00000002\n"
              "\"MeshArgs\"=\"-mesh \\\"$targetfile\\\"\"\n"
              // 0.5f: sign 0, exponent 126, mantissa 0 -> 0x3f000000, little-endian.
              "\"MeshFactor\"=hex:00,00,00,3f\n"
              "\"MeshViewer\"=\"Worldlook\"\n"
              "\"ModelArgs\"=\"\\\"$targetfile\\\"\"\n"
              "\"ModelViewer\"=\"Modlook\"\n"
              "\"ShowLog\"=dword:00000001\n"
              "\"ToolTips\"=dword:00000000\n"
              "\"WarnPolyCount\"=dword:00000000\n");
}

TEST_F(ApplicationSettingsTest, UnreadableValuesKeepTheirDefaultsAndShowLogIsOnOnlyAboveZero)
{
    m_folder.Write("settings.ini", "[HKEY_CURRENT_USER\\Software\\Orvalle\\ZephraSDK\\Kestrel]\n"
                                   "\"ShowLog\"=dword:ffffffff\n"
                                   "\"WarnPolyCount\"=dword:00000005\n"
                                   "\"MeshFactor\"=hex:00,00,80\n"
                                   "\"LightmapUVs\"=\"1\"\n"
                                   "\"ModelViewer\"=dword:00000001\n"
                                   "\"ToolTips\"=dword:00000001\n");
    IniSettingsStore store(Path());
    ASSERT_TRUE(store.Load());
    ApplicationSettings settings;
    LoadApplicationSettings(store, settings);
    EXPECT_EQ(settings.MeshFactor, 1.0f);
    ASSERT_TRUE(store.WriteBinary(kApplicationSettingsKey, "MeshFactor", std::string("\x00\x00\xc0\x7f", 4)));
    LoadApplicationSettings(store, settings);
    EXPECT_EQ(settings.MeshFactor, 1.0f);
    EXPECT_EQ(settings.LightmapUVs, 2);
    EXPECT_EQ(settings.ModelViewer, "Modlook");
    EXPECT_EQ(settings.ToolTips, 1);
    EXPECT_FALSE(settings.ShowLog);
    EXPECT_TRUE(settings.WarnPolyCount);
}

TEST_F(ApplicationSettingsTest, FailedFlushIsReported)
{
    m_folder.Write("blocker", "a file where the folder should be");
    IniSettingsStore store(m_folder.SystemPath("blocker\\settings.ini"));
    EXPECT_FALSE(SaveApplicationSettings(store, ApplicationSettings()));
}
