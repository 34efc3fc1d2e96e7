#include "settings/ExportOptionKeys.h"

#include <gtest/gtest.h>

// The order, names and value types of the keys are pinned by the saved default block
// (SettingsBlockSaveTest); what is left is the lookup.
TEST(ExportOptionKeys, AreFoundIgnoringCaseAndOnlyAmongTheSavedOnes)
{
    const VOptionKey* key = FindExportOptionKey("maxnumbones");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->Name, "MaxNumBones");
    EXPECT_EQ(FindExportOptionKey("MinStripLength"), nullptr);
    EXPECT_EQ(FindExportOptionKey("NumAnimations"), nullptr);
    EXPECT_EQ(FindExportOptionKey(""), nullptr);
}
