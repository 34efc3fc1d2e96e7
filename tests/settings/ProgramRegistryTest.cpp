#include "settings/ProgramRegistry.h"

#include "settings/IniSettingsStore.h"

#include <gtest/gtest.h>

#include <string>

#include "ScratchFolder.h"

TEST(ProgramRegistry, ProgramsAreKeyedUnderTheMakersInstallationKey)
{
    EXPECT_EQ(ProgramInstallationKey("Modlook"), "HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvalle\\ZephraSDK\\Modlook");
}

TEST(ProgramRegistry, RegisteredProgramIsFoundByNameIgnoringCase)
{
    ScratchFolder folder;
    IniSettingsStore store(folder.SystemPath("settings.ini"));
    ASSERT_TRUE(RegisterProgram(store, "Modlook", "C:\\Zephra\\Modlook.exe"));

    IniSettingsStore next(folder.SystemPath("settings.ini"));
    ASSERT_TRUE(next.Load());
    EXPECT_TRUE(IsProgramRegistered(next, "MODLOOK"));
    EXPECT_EQ(RegisteredProgramPath(next, "modlook"), "C:\\Zephra\\Modlook.exe");
    EXPECT_FALSE(IsProgramRegistered(next, "Worldlook"));
    EXPECT_EQ(RegisteredProgramPath(next, "Worldlook"), std::nullopt);
}

TEST(ProgramRegistry, NamesThatCannotBeKeysAndOverlongPathsAreRefused)
{
    IniSettingsStore store("");
    EXPECT_FALSE(RegisterProgram(store, "", "C:\\a.exe"));
    EXPECT_FALSE(RegisterProgram(store, "Tools\\Modlook", "C:\\a.exe"));
    EXPECT_FALSE(RegisterProgram(store, "Modlook\n", "C:\\a.exe"));
    EXPECT_FALSE(RegisterProgram(store, "Modlook", std::string(256, 'a')));
}

TEST(ProgramRegistry, OverlongStoredPathIsNotTaken)
{
    IniSettingsStore store("");
    ASSERT_TRUE(store.WriteString(ProgramInstallationKey("Modlook"), "", std::string(256, 'a')));
    EXPECT_TRUE(IsProgramRegistered(store, "Modlook"));
    EXPECT_EQ(RegisteredProgramPath(store, "Modlook"), std::nullopt);
    ASSERT_TRUE(store.WriteString(ProgramInstallationKey("Modlook"), "", std::string(255, 'a')));
    EXPECT_EQ(RegisteredProgramPath(store, "Modlook"), std::string(255, 'a'));
}

TEST(ProgramRegistry, QuotesAreStrippedAtTheStartAndAmongTheLastFourCharacters)
{
    EXPECT_EQ(UnquotedProgramPath("\"C:\\Program Files\\Modlook.exe\""), "C:\\Program Files\\Modlook.exe");
    EXPECT_EQ(UnquotedProgramPath("C:\\Tools\\Modlook.exe"), "C:\\Tools\\Modlook.exe");
    EXPECT_EQ(UnquotedProgramPath("\"C:\\a\"b\\x\"\"\""), "C:\\a\"b\\x");
    EXPECT_EQ(UnquotedProgramPath("\"\""), "");
    EXPECT_EQ(UnquotedProgramPath(""), "");
}

TEST(ProgramRegistry, InstallationFolderIsTheRegisteredOneElseTheModulesFolderWithoutClosingBackslash)
{
    IniSettingsStore store("");
    EXPECT_EQ(InstallationFolder(store, "D:\\Maya\\plug-ins\\"), "D:\\Maya\\plug-ins");
    ASSERT_TRUE(store.WriteString(ProgramInstallationKey("Kestrel"), "", "\"C:\\Zephra\\Kestrel\\\""));
    EXPECT_EQ(InstallationFolder(store, "D:\\Maya\\plug-ins"), "C:\\Zephra\\Kestrel");
}
