#include "settings/IniSettingsText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

StoredValue Number(uint32_t number)
{
    return {StoredValueType::Number, number, {}};
}

StoredValue Binary(std::string bytes)
{
    return {StoredValueType::Binary, 0, std::move(bytes)};
}

StoredValue Text(std::string text)
{
    return {StoredValueType::String, 0, std::move(text)};
}

} // namespace

TEST(IniSettingsText, EachTypeIsWrittenInTheRegistryEditorsForm)
{
    StoredKeys keys;
    keys["HKEY_CURRENT_USER\\Software\\Orvalle\\ZephraSDK\\Kestrel"]["ShowLog"] = Number(1);
    keys["HKEY_CURRENT_USER\\Software\\Orvalle\\ZephraSDK\\Kestrel"]["MeshFactor"] = Binary(std::string("\x00\x00\x80\x3f", 4));
    keys["HKEY_CURRENT_USER\\Software\\Orvalle\\ZephraSDK\\Kestrel"]["ModelArgs"] = Text("\"$targetfile\"");
    keys["HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvalle\\ZephraSDK\\Modlook"][""] = Text("C:\\Tools\\Modlook.exe");

    EXPECT_EQ(FormatIniSettings(keys),
              "[HKEY_CURRENT_USER\\Software\\Orvalle\\ZephraSDK\\Kestrel]\n"
              "\"MeshFactor\"=hex:00,00,80,3f\n"
              "\"ModelArgs\"=\"\\\"$targetfile\\\"\"\n"
              "\"ShowLog\"=dword:00000001\n"
              "\n"
              "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvalle\\ZephraSDK\\Modlook]\n"
              "@=\"C:\\\\Tools\\\\Modlook.exe\"\n");
}

TEST(IniSettingsText, FormattedTextReadsBackToTheSameValues)
{
    StoredKeys keys;
    keys["A"]["Lines"] = Text("first\r\nsecond \\ \"quoted\"");
    keys["A"]["Empty"] = Binary("");
    keys["A"]["Max"] = Number(0xFFFFFFFFu);
    keys["B\\C"][""] = Text("");

    StoredKeys read;
    std::string error;
    ASSERT_TRUE(ParseIniSettings(FormatIniSettings(keys), read, error)) << error;
    EXPECT_EQ(read, keys);
}

TEST(IniSettingsText, CaseCommentsBlankLinesAndSpacesDoNotMatterAndTheLaterValueWins)
{
    StoredKeys keys;
    std::string error;
    ASSERT_TRUE(ParseIniSettings("; user settings\r\n\r\n  [Software\\Kestrel]  \r\n# note\r\n\"ToolTips\" = dword:2\r\n"
                                 "\"A\"=dword:1\n[software\\KESTREL]\n\"a\"=\"text\"\n",
                                 keys, error))
        << error;
    ASSERT_EQ(keys.size(), 1u);
    EXPECT_EQ(keys["SOFTWARE\\KESTREL"]["tooltips"], Number(2));
    EXPECT_EQ(keys["Software\\Kestrel"]["A"], Text("text"));
}

TEST(IniSettingsText, UnreadableLinesAreSkippedAndTheFirstIsNamed)
{
    StoredKeys keys;
    std::string error;
    EXPECT_FALSE(ParseIniSettings("\"Orphan\"=dword:1\n"
                                  "[K]\n"
                                  "\"Good\"=dword:7\n"
                                  "\"BadNumber\"=dword:123456789\n"
                                  "\"BadHex\"=hex:0,1\n"
                                  "\"Open\"=\"no end\n"
                                  "\"Trailing\"=\"x\" y\n"
                                  "NoQuotes=dword:1\n"
                                  "\"BadEscape\"=\"\\q\"\n",
                                  keys, error));
    EXPECT_EQ(error, "line 1: value outside of any key");
    ASSERT_EQ(keys["K"].size(), 1u);
    EXPECT_EQ(keys["K"]["Good"], Number(7));
}

